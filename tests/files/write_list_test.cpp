#include "files/write_list.h"

#include "base/cp949.h"
#include "support/failure_of.h"
#include "support/files.h"
#include "support/ordinary_user.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QXmlStreamReader>

#include <sys/resource.h>

#include <csignal>

using namespace orvo;

namespace {

text_table table_of(std::vector<text_table::column> columns, const QList<QStringList>& rows)
{
    return {std::move(columns), rows.size(), [rows](qint64 at) { return rows[at]; }};
}

text_table long_table(qint64 rows)
{
    return {{{"성명"}}, rows, [](qint64 at) { return QStringList{QStringLiteral("김영희%1").arg(at)}; }};
}

/// The one sheet of a workbook, unpacked by others' means.
QByteArray sheet_of(const QString& path)
{
    const QTemporaryDir unpacked;
    QProcess unpack;
    unpack.setWorkingDirectory(unpacked.path());
    unpack.start(ORVO_CMAKE, {"-E", "tar", "xf", path});
    unpack.waitForFinished();
    return content_of(unpacked.filePath("xl/worksheets/sheet1.xml"));
}

/// The texts of a workbook by their places, and the widths of its columns.
QMap<QString, QString> cells_of(const QString& path)
{
    QXmlStreamReader sheet{sheet_of(path)};
    QMap<QString, QString> cells;
    QString place;
    while (sheet.readNext() != QXmlStreamReader::Invalid && !sheet.atEnd()) {
        const QXmlStreamAttributes has = sheet.attributes();
        if (sheet.isStartElement() && sheet.name() == u"c")
            place = has.value("r").toString();
        else if (sheet.isStartElement() && sheet.name() == u"t")
            cells[place] = sheet.readElementText();
        else if (sheet.isStartElement() && sheet.name() == u"col")
            cells["width " + has.value("min").toString()] = has.value("width").toString().section('.', 0, 0);
    }
    return cells;
}

void limit_files(rlim_t bytes)
{
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, RLIM_INFINITY};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

} // namespace

class write_list_test : public QObject {
    Q_OBJECT

    QTemporaryDir home_;
    QString path_ = home_.filePath("명단");

private Q_SLOTS:
    void a_csv_byte_for_byte()
    {
        write_csv(path_, table_of({{"성명"}, {"주소"}},
                                  {{"김'영희", "서울, 중구"}, {"한\r\n줄\n씩", ""}, {"é😀", "가\"0\""}}));
        QCOMPARE(content_of(path_), QByteArray{"\xEF\xBB\xBFno,성명,주소\r\n1,김'영희,서울， 중구\r\n"
                                               "2,한 줄 씩,\r\n3,é😀,가\"0\"\r\n"});
        write_csv(path_, table_of({{"성명"}}, {{"가"}}), nullptr, {});
        QCOMPARE(content_of(path_), QByteArray{"\xEF\xBB\xBF성명\r\n가\r\n"});
        QByteArray ordered{"\xEF\xBB\xBFno,성명\r\n"};
        for (int at = 0; at < 50'001; ++at)
            ordered += QStringLiteral("%1,김영희%2\r\n").arg(at + 1).arg(at).toUtf8();
        write_csv(path_, long_table(50'001));
        QVERIFY(content_of(path_) == ordered);
    }

    void a_cell_neither_runs_nor_shifts_its_neighbours()
    {
        // A cell, and what is written of it: beside a text, and in a column of numbers where that differs.
        const QStringList cases[] = {
            {"=1+1", "'=1+1"},
            {"=cmd|'/c calc'!A1", "'=cmd|'/c calc'!A1"},
            {"@SUM(1)", "'@SUM(1)"},
            {"+82-10-1234", "'+82-10-1234"},
            {"-2+3", "'-2+3"},
            {"+", "'+"},
            {" =1", "' =1"},
            {"\t=1", "' =1"},
            {"\r\n-A1", "' -A1"},
            {QString{QChar{0}} + "=1", "'=1"},
            {QString{QChar{0xA0}} + "=1", "'" + QString{QChar{0xA0}} + "=1"},
            {QString{QChar{0x200B}} + "=1", "'" + QString{QChar{0x200B}} + "=1"},
            {"＝1", "'＝1"},
            {"\"=1\"", "'\"=1\""},
            {"\"서울", "'\"서울"},
            {"--", "--"},
            {"-", "-"},
            {"-- ", "-- "},
            {"-5", "-5"},
            {"+821012345678", "+821012345678"},
            {"-12.50", "-12.50"},
            {"-1,000", "-1，000", "-1000"},
            {"1,234,567", "1，234，567", "1234567"},
            {"12,34", "12，34"},
            {"1234,567", "1234，567"},
            {",서울,,", "，서울，，"},
            {"abcdefg,hij", "abcdefg，hij"},
            {"a\tb", "a b"},
            {"2026-11-22", "2026-11-22"},
            {"kim@orvo.kr", "kim@orvo.kr"},
            {"'=1", "'=1"},
        };
        for (const QStringList& each : cases) {
            write_csv(path_, table_of({{"=글"}, {"수", true}}, {{each[0], each[0]}}), nullptr, {});
            QCOMPARE(QString::fromUtf8(content_of(path_)),
                     QString{"'=글,수\r\n%1,%2\r\n"}.arg(each[1], each.last()));
        }
    }

    void older_readers_get_cp949()
    {
        const auto list = table_of({{"성명"}}, {{"똠방, 각하♡"}, {"é😀–?"}, {QString{QChar{0xE000}}}, {"김"}});
        QCOMPARE(write_csv(path_, list, nullptr, "no", csv_encoding::cp949), 4);
        const QByteArray content = content_of(path_);
        QVERIFY(content.startsWith("no,\xBC\xBA\xB8\xED\r\n"));
        QCOMPARE(*from_cp949(content), "no,성명\r\n1,똠방， 각하♡\r\n2,????\r\n3,?\r\n4,김\r\n");
        QCOMPARE(write_csv(path_, long_table(200'000), nullptr, "no", csv_encoding::cp949), 0);
        QVERIFY(from_cp949(content_of(path_))->endsWith("\n200000,김영희199999\r\n"));
    }

    void a_workbook_read_back()
    {
        const QString endless(40'000, u'가');
        write_workbook(path_, {"작성일자", "20261122"},
                       table_of({{"전화"}, {"회비", true}, {"비고"}},
                                {{"0101234", "1,000", "<김'& \"영희\">\n둘째"}, {"=1+1", "", endless}}));
        const QMap<QString, QString> expected{
            {"A1", "작성일자"}, {"B1", "20261122"}, {"A2", "전화"},
            {"B2", "회비"},     {"C2", "비고"},     {"A3", "0101234"},
            {"B3", "1,000"},    {"A4", "=1+1"},     {"C3", "<김'& \"영희\">\n둘째"},
            {"width 1", "10"},  {"width 2", "10"},  {"C4", endless.left(32'767)},
            {"width 3", "85"}};
        QCOMPARE(cells_of(path_), expected);
    }

    void a_failure_leaves_the_former_file()
    {
        struct impatient : progress {
            bool go_on(qint64) override { return false; }
        } no;
        const QString place = home_.filePath("목록");
        const QString target = place + "/명단";
        QString where; // the last failure was
        const auto fails = [&](bool as_csv, qint64 rows, const QString& to, progress* follow = nullptr) {
            const db_failure failure = caught([&] {
                as_csv ? void(write_csv(to, long_table(rows), follow))
                       : write_workbook(to, {}, long_table(rows), follow);
            });
            where = failure.place();
            return failure.kind();
        };
        write_workbook(path_, {}, long_table(50'000));
        const auto whole_sheet = static_cast<rlim_t>(sheet_of(path_).size());
        write_file(target, "former");
        for (const bool as_csv : {true, false}) {
            // The disk is full at once; amid the rows; when the sheet is made of them, and its end is lost.
            for (const rlim_t room : {rlim_t{0}, rlim_t{5'000}, as_csv ? 5'000 : whole_sheet - 200}) {
                limit_files(room);
                const failure_kind how = fails(as_csv, 50'000, target);
                limit_files(RLIM_INFINITY);
                QCOMPARE(how, failure_kind::disk_full);
                QCOMPARE(where == target, as_csv); // a workbook is made in the folder for temporary files
                QVERIFY(where.startsWith(as_csv ? target : QDir::tempPath()));
            }
            QCOMPARE(fails(as_csv, 1'000'000, target, &no), failure_kind::cancelled);
            int slow_rows = 0; // of a list that waits for each of them
            const text_table slow{{{"성명"}}, 100, [&slow_rows](qint64) {
                                      QThread::msleep(40);
                                      return QStringList{QString::number(++slow_rows)};
                                  }};
            const auto write_slowly = [&] {
                as_csv ? void(write_csv(target, slow, &no)) : write_workbook(target, {}, slow, &no);
            };
            QCOMPARE(caught(write_slowly).kind(), failure_kind::cancelled);
            QVERIFY(slow_rows < 3);
            QCOMPARE(fails(as_csv, 1, place), failure_kind::other); // a folder's name
            write_file(place + "/.~lock.명단#", "");
            QCOMPARE(fails(as_csv, 1, target), failure_kind::other); // open in an office program
            QFile::remove(place + "/.~lock.명단#");
            QFile::setPermissions(place, read_only);
            {
                const ordinary_user weak;
                QCOMPARE(fails(as_csv, 1, target), failure_kind::other);
            }
            QFile::setPermissions(place, read_only | QFile::WriteOwner);
        }
        QCOMPARE(fails(false, 1'048'575, target), failure_kind::other); // beyond the format
        QCOMPARE(content_of(target), QByteArray{"former"});
        QCOMPARE(QDir{place}.entryList(QDir::Files | QDir::Hidden), QStringList{"명단"});
    }
};

QTEST_GUILESS_MAIN(write_list_test)
#include "write_list_test.moc"

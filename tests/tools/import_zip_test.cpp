#include "db/open.h"
#include "setup/missing_tables.h"
#include "setup/postal_codes.h"
#include "setup/refusal.h"
#include "support/files.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace orvo;

class import_zip_test : public QObject {
    Q_OBJECT

    QTemporaryDir folder_;
    const QString path_ = folder_.filePath("zip.txt");
    std::optional<connection> local_;
    QString reasons_; ///< of the last import

    QString import(const QByteArray& content, setup::text_encoding encoding = {})
    {
        write_file(path_, content);
        reasons_.clear();
        const auto tell = [&](auto n, auto& why) { reasons_ += QString{"%1: %2"}.arg(n).arg(why.c_str()); };
        const auto count = setup::import_postal_codes(*local_, path_, encoding, tell);
        return QStringLiteral("%1, %2").arg(count.imported).arg(count.rejected);
    }
    QString stored()
    {
        QString all;
        for (const auto& row : local_->read("select * from zip"))
            for (const char* name : {"post", "do", "gu", "dong", "li", "island", "fir", "sec"})
                all += row.text(name) + u'|';
        return all;
    }

private Q_SLOTS:
    void initTestCase()
    {
        server_address server;
        server.folder = folder_.path();
        local_.emplace(make_connection(server, database::local, file_use::create));
        local_->open();
        setup::make_missing_tables(*local_, database::local);
    }

    void files_of_all_forms()
    {
        const std::tuple<QByteArray, const char*> cases[] = {
            {"135081,,,a,,,,\n\n135-080,b,c,d,e,f,1,20", "135081|||a|||||135080|b|c|d|e|f|1|20|"},
            {"\xEF\xBB\xBFpost\tdong\r\n135080\t가,나\r\n", "135080|||가,나|||||"},
            {"135080;\xB0\xA1;\xB0\xA1;\x8C\x63\xB5\xBF;;;;\n", "135080|가|가|똠동|||||"},
            {"\"135080\"|\"a|b\"|\"a \"\"b\"\"\"|a\"b|'; --| c ||\n", "135080|a|b|a \"b\"|a\"b|'; --|c|||"},
            {"끝번지,우편번호,번호,읍/면/동,시작주번지\n9,135-080,7,동,3", "135080|||동|||3|9|"},
        };
        for (const auto& [content, row] : cases) {
            QVERIFY2(import(content).endsWith(", 0"), content);
            QCOMPARE(stored(), QString{row}); // and nothing of the file before
        }
    }

    void rows_that_are_rejected()
    {
        const std::tuple<QByteArray, const char*> cases[] = {
            {"135080,도,구,동,리,섬,1", "3: has 7 fields and not 8"},
            {"1350-80,,,동,,,,", "3: post \"1350-80\" is not six digits"},
            {"135080,도,구,  ,,,,", "3: dong is empty"},
            {"135080," + QByteArray{"가"}.repeated(41) + ",,동,,,,", "is longer than 40 characters"},
            {"135080,도,구,동\xB0,,,,", "3: holds bytes that are no text in UTF-8"},
            {QByteArray{"135080,,,a\0,,,,", 15}, "no text in UTF-8"},
            {"135080,도,구,\"동,,,,", "3: a quote is not closed"},
            {QByteArray{200'000, ','}, "3: the line is too long"},
        };
        const QByteArray good = "135080," + QByteArray{"가"}.repeated(40) + ",강남구,역삼동,,,,\n";
        for (const auto& [row, reason] : cases) {
            QCOMPARE(import(good + good + row + "\n" + good), "3, 1");
            QVERIFY2(reasons_.contains(reason), qPrintable(reasons_));
        }
        const QByteArray old = "135080;\xB0\xA1;;\xB0\xA1;;;;\n";
        QCOMPARE(import(old + old + old + "135080;;;\xB0\n135080;;;\xC9\xA1;;;;\n135080;;;\x80;;;;"), "3, 3");
        QCOMPARE(reasons_.count("no text in cp949"), 3);
        QCOMPARE(import(old, setup::text_encoding::utf8), "0, 1");
    }

    void what_cannot_be_imported_changes_nothing()
    {
        QCOMPARE(import("135080,,,동,,,,\n"), "1, 0");
        QCOMPARE(import("13508,,,동,,,,\n") + import("post,do,dong\n"), "0, 10, 0");
        for (const char* first : {"우편번호 목록\n", "post,gu\n", "dong,gu\n"})
            QVERIFY_EXCEPTION_THROWN(import(first), setup::refusal);
        write_file(path_, "135081,,,동,,,,\n1,,,동,,,,\n");
        const auto stop = [](qint64, auto&) { throw 1; };
        QVERIFY_EXCEPTION_THROWN(setup::import_postal_codes(*local_, path_, {}, stop), int);
        QCOMPARE(stored(), "135080|||동|||||");
    }

    void the_program_counts_and_tells()
    {
        write_file(path_, "135080,,,a,,,,\n" + QByteArray{"1,,,a,,,,\n"}.repeated(25));
        QProcess tool;
        tool.start(ORVO_DB_PROGRAM, {"--home", folder_.path(), "import-zip", path_});
        tool.waitForFinished();
        QCOMPARE(tool.readAllStandardOutput(), "1 rows imported, 25 rejected\n");
        QCOMPARE(tool.readAllStandardError().count('\n'), 21); // 20 rejected rows, and how many more
    }
};

QTEST_GUILESS_MAIN(import_zip_test)
#include "import_zip_test.moc"

#include "demo/demo.h"
#include "setup/missing_tables.h"
#include "setup/postal_codes.h"
#include "setup/refusal.h"
#include "support/engines.h"
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

    connection made(database which)
    {
        server_address server;
        server.folder = folder_.path();
        connection on = make_connection(server, which, file_use::create);
        on.open();
        setup::make_missing_tables(on, which);
        return on;
    }
    /// "imported, rejected"
    QString import(const QByteArray& content, setup::text_encoding encoding = {})
    {
        write_file(path_, content);
        reasons_.clear();
        const auto tell = [&](qint64 line, const std::string& reason) {
            reasons_ += QString::number(line) + ": " + QString::fromStdString(reason);
        };
        const auto count = setup::import_postal_codes(*local_, path_, encoding, tell);
        return QString::number(count.imported) + ", " + QString::number(count.rejected);
    }
    QString stored()
    {
        return local_->read("select post||'|'||do||'|'||gu||'|'||dong||'|'||li||'|'||island||'|'||fir||'|'||sec as "
                            "row from zip where rowid=(select max(rowid) from zip)").front().text("row");
    }

private Q_SLOTS:
    void initTestCase() { local_.emplace(made(database::local)); }

    void files_of_all_forms()
    {
        const std::tuple<QByteArray, setup::text_encoding, const char*> cases[] = {
            {"135081,,,동2,,,,\n\n135-080,도,구,동,리,섬,1,20", {}, "135080|도|구|동|리|섬|1|20"},
            {"\xEF\xBB\xBFpost\tdong\r\n135080\t가,나\r\n", {}, "135080|||가,나||||"},
            // A syllable that only the extension of the old code page has.
            {"135080;\xB0\xA1;\xB0\xA1;\x8C\x63\xB5\xBF;;;;\n", {}, "135080|가|가|똠동||||"},
            {"135080;\xC2\xB0;;\xC2\xB0;;;;\n", setup::text_encoding::cp949, "135080|째||째||||"},
            {"135080;\xC2\xB0;;\xC2\xB0;;;;\n", setup::text_encoding::utf8, "135080|°||°||||"},
            {"\"135080\"|\"a|b\"|\"a \"\"b\"\"\"|a\"b|'; --| c ||\n", {}, "135080|a|b|a \"b\"|a\"b|'; --|c||"},
            {"끝주번지,우편번호,일련번호,읍/면/동,시 도,시작주번지\n9,135-080,7,동,도,3", {}, "135080|도||동|||3|9"},
            {"LI,Dong,SEC,POST,island,FIR,gu,do\n리,동,9,135080,섬,3,구,도\n", {}, "135080|도|구|동|리|섬|3|9"},
        };
        for (const auto& [content, encoding, row] : cases) {
            QVERIFY2(import(content, encoding).endsWith(", 0"), content);
            QCOMPARE(stored(), QString{row});
        }
        QCOMPARE(local_->number("select count(*) as cnt from zip"), 1); // a file replaces what was before
    }

    void rows_that_are_rejected()
    {
        const std::tuple<QByteArray, const char*> cases[] = {
            {"135080,도,구,동,리,섬,1", "3: has 7 fields and not 8"},
            {"135080,도,구,동,리,섬,1,2,3", "3: has 9 fields and not 8"},
            {"1350-80,,,동,,,,", "3: post \"1350-80\" is not six digits"},
            {"１３５０８０,,,동,,,,", "is not six digits"},
            {"135080,도,구,  ,,,,", "3: dong is empty"},
            {"135080," + QByteArray{"가"}.repeated(41) + ",,동,,,,", "is longer than 40 characters"},
            {"135080,도,구,동\xB0,,,,", "3: holds bytes that are no text in UTF-8"},
            {QByteArray{"135080,,,a\0,,,,", 15}, "no text in UTF-8"},
            {"135080,도,구,\"동,,,,", "3: a quote is not closed"},
            {QByteArray{","}.repeated(200'000), "3: the line is too long"},
        };
        const QByteArray good = "135080," + QByteArray{"가"}.repeated(40) + ",강남구,역삼동,,,,\n";
        for (const auto& [row, reason] : cases) {
            QCOMPARE(import(good + good + row + "\n" + good), "3, 1");
            QVERIFY2(reasons_.contains(reason), qPrintable(reasons_));
        }
        const QByteArray old = "135080;\xB0\xA1;;\xB0\xA1;;;;\n"; // and a half, a private, a mistaken character
        QCOMPARE(import(old + old + old + "135080;;;\xB0\n135080;;;\xC9\xA1;;;;\n135080;;;\x80;;;;"), "3, 3");
        QCOMPARE(reasons_.count("no text in cp949"), 3);
    }

    void what_cannot_be_imported_changes_nothing()
    {
        QCOMPARE(import("135080,,,동,,,,\n"), "1, 0");
        QCOMPARE(import("13508,,,동,,,,\n"), "0, 1");
        QCOMPARE(import("post,do,dong\n"), "0, 0");
        for (const char* first : {"우편번호 목록\n", "post,gu\n", "dong,gu\n"})
            QVERIFY_EXCEPTION_THROWN(import(first), setup::refusal);
        const auto stop = [](qint64, const std::string&) { throw std::runtime_error{"stop"}; };
        write_file(path_, "135081,,,동,,,,\n1,,,동,,,,\n");
        QVERIFY_EXCEPTION_THROWN(setup::import_postal_codes(*local_, path_, {}, stop), std::runtime_error);
        QCOMPARE(stored(), "135080|||동||||");
    }

    void the_program_counts_and_tells()
    {
        const auto run = [&](const QStringList& rest) {
            QProcess tool;
            tool.start(ORVO_DB_PROGRAM, QStringList{"--home", folder_.path(), "import-zip"} + rest);
            return tool.waitForFinished()
                       ? QByteArray::number(tool.exitCode()) + tool.readAll() + tool.readAllStandardError()
                       : QByteArray{};
        };
        write_file(path_, "135080,,,a,,,,\n" + QByteArray{"1,,,a,,,,\n"}.repeated(25));
        const QByteArray told = run({path_});
        QVERIFY2(told.startsWith("01 rows imported, 25 rejected\n"), told);
        QVERIFY2(told.contains("line 21: ") && !told.contains("line 22: ") && told.contains("5 more"), told);
        QVERIFY(run({}).startsWith('2') && run({path_, "--encoding", "latin1"}).startsWith('2'));
        QVERIFY(run({path_ + "x"}).startsWith('1'));
    }

    void the_demo_finds_its_members_homes()
    {
        connection server = made(database::server);
        const demo::plan what{.members = 50, .seed = 5, .today = QDate{2024, 6, 15}};
        demo::fill(server, what);
        local_->write("delete from zip");
        for (int run = 0; run < 2; ++run) // the second leaves what is there
            demo::fill_postal_codes(server, *local_, what);
        QCOMPARE(local_->number("select count(*) as cnt from zip"), 600);
        std::map<QString, QString> codes;
        for (const auto& each : local_->read("select * from zip")) {
            const QString place = each.text("do") + u' ' + each.text("gu") + u' ' + each.text("dong");
            QCOMPARE(codes.try_emplace(place, each.text("post")).first->second, each.text("post"));
        }
        for (const auto& each : server.read("select code_post,pers_add from person_m_tbl"))
            QCOMPARE(codes[each.text("pers_add").section(u' ', 0, 2)], each.text("code_post"));
    }
};

QTEST_GUILESS_MAIN(import_zip_test)
#include "import_zip_test.moc"

#include "client/client.h"
#include "client/code_mirror.h"
#include "client/local_file.h"
#include "client/workstation.h"
#include "db/schema/schema.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/failure_of.h"
#include "support/files.h"
#include "support/ordinary_user.h"
#include "support/other_types.h"
#include "support/test_register.h"

#include <QTest>

#include <algorithm>

using namespace orvo;

class local_file_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void files_are_their_owners_alone_and_never_made_by_opening()
    {
        const QTemporaryDir folder;
        server_address server;
        server.folder = folder.path();
        for (const database each : {database::server, database::mail, database::local}) {
            connection missing = make_connection(server, each);
            const db_failure why = caught([&] { missing.open(); });
            QCOMPARE(why.kind(), failure_kind::line_lost);
            QCOMPARE(why.place(), file_of(server, each));
            QVERIFY(why.text().endsWith(": " + file_of(server, each)));
            // An empty one in its place would look like a register.
            QVERIFY(!QFile::exists(file_of(server, each)));
            QVERIFY(!is_local_file_sound(missing));
            // Nor is one made behind a name that somebody else has put there.
            QVERIFY(QFile::link(folder.filePath("elsewhere"), file_of(server, each)));
            connection db = make_connection(server, each, file_use::create);
            QCOMPARE(failure_of([&] { db.open(); }), failure_kind::line_lost);
            QVERIFY(!QFile::exists(folder.filePath("elsewhere")) && QFile::remove(file_of(server, each)));
            db.open();
            db.direct("create table t(a integer)");
            for (const char* companion : {"", "-wal", "-shm"})
                QCOMPARE(mode_of(file_of(server, each) + QLatin1String{companion}), 0600);
        }
    }

    void a_register_in_a_folder_that_is_read_only_can_be_read()
    {
        const test_register its_register{engine::embedded};
        a_member{"9001011234568"}.store_in(*std::make_unique<connection>(its_register.connect()));
        const QString folder = its_register.address().folder;
        QVERIFY(QFile::setPermissions(file_of(its_register.address(), database::server), read_only));
        QVERIFY(QFile::setPermissions(folder, read_only));
        {
            const ordinary_user somebody;
            connection db = its_register.connect();
            QVERIFY_EXCEPTION_THROWN(db.write("delete from person_m_tbl"), db_failure);
            QCOMPARE(db.number("select count(*) as n from person_m_tbl"), 1);
        }
        QVERIFY(QFile::setPermissions(folder, read_only | QFile::WriteOwner));
    }

    void the_local_file_is_judged_data()
    {
        QTest::addColumn<QByteArray>("statement");
        QTest::addColumn<std::pair<double, double>>("garbage"); // from where to where, of its whole size
        QTest::addColumn<bool>("is_sound_at_a_glance");
        QTest::addColumn<bool>("is_sound");
        const std::pair none{1.0, 1.0};
        const QByteArray nothing;
        QTest::newRow("complete") << nothing << none << true << true;
        QTest::newRow("no table") << QByteArray{"drop table zip"} << none << false << false;
        QTest::newRow("no column") << QByteArray{"alter table zip drop column \"do\""} << none << false
                                   << false;
        QTest::newRow("cut short") << nothing << std::pair{0.5, 0.0} << false << false;
        QTest::newRow("empty") << nothing << std::pair{0.0, 0.0} << false << false;
        QTest::newRow("garbage") << nothing << std::pair{0.0, 1.0} << false << false;
        QTest::newRow("garbage at its end") << nothing << std::pair{0.95, 1.0} << true << false;
    }
    void the_local_file_is_judged()
    {
        QFETCH(QByteArray, statement);
        using range = std::pair<double, double>;
        QFETCH(range, garbage);
        const test_register its_register{engine::embedded};
        const QString path = file_of(its_register.address(), database::local);
        {
            connection local = its_register.connect(database::local);
            int row = 0;
            local.load("zip", {"post", "dong"}, [&](std::vector<cell>& fields) {
                fields.assign(2, cell::of(std::string_view{"135-010"}));
                return ++row < 3000;
            });
            local.direct(statement.toStdString());
        }
        QByteArray content = content_of(path);
        const auto from = static_cast<qsizetype>(double(content.size()) * garbage.first);
        content.replace(from, content.size() - from,
                        QByteArray{garbage.second > 0 ? content.size() - from : 0, '\x37'});
        write_file(path, content);
        connection local = make_connection(its_register.address(), database::local);
        try {
            local.open();
        } catch (const db_failure& failure) {
            QCOMPARE(failure.kind(), failure_kind::damaged);
        }
        QTEST(is_local_file_sound(local), "is_sound_at_a_glance");
        QTEST(is_local_file_sound(local, inspection::thorough), "is_sound");
    }

    void what_a_newer_version_keeps_is_added_in_place()
    {
        running_client running{engine::embedded};
        connection& local = running.c.local_conn;
        a_row{"drafts", database::local}.with("form", "insert_frm").with("fields", "{}").store_in(local);
        a_row{"branch_code", database::local}.with("code_bran", 10).store_in(local);
        for (const char* before :
             {"drop table zip", "drop table religion", "alter table school drop column school_name",
              "alter table drafts drop column kept_at", "alter table print_tbl add column later text",
              "create table old(code_bran integer not null default 0) strict", "drop table branch_code",
              "alter table old rename to branch_code", "insert into branch_code values (10),(10)"})
            local.direct(before);
        QVERIFY(!is_local_file_sound(local));
        std::vector<std::string_view> in_want = complete_local_file(local);
        std::ranges::sort(in_want);
        QCOMPARE(in_want, (std::vector<std::string_view>{"branch_code", "religion", "school"}));
        QVERIFY(is_local_file_sound(local, inspection::thorough));
        const rows kept = local.read("select * from drafts");
        QCOMPARE(kept.front().text("form") + kept.front().text("kept_at"), QStringLiteral("insert_frm"));
        QCOMPARE(local.number("select count(*) as n from branch_code"),
                 2);                                 // until the next look at the server
        local.direct("select later from print_tbl"); // of a version newer still
        QVERIFY(complete_local_file(local).empty());

        const QTemporaryDir elsewhere;
        server_address empty = running.c.server;
        empty.folder = elsewhere.path();
        connection none_of_ours = make_connection(empty, database::local, file_use::create);
        none_of_ours.open();
        QVERIFY(complete_local_file(none_of_ours).empty() && !is_local_file_sound(none_of_ours));
    }

    void a_remade_local_file_has_what_could_be_read_data()
    {
        QTest::addColumn<QByteArrayList>("damaged"); // pages in which these words stand
        QTest::addColumn<QByteArray>("in_place");    // of the whole file
        QTest::addColumn<qint64>("least_codes");
        QTest::addColumn<qint64>("drafts");
        const QByteArrayList none;
        QTest::newRow("a missing column") << none << QByteArray{} << qint64{3000} << qint64{60};
        QTest::newRow("holes") << QByteArrayList{"<700>", "<900>", "<2000>", "<2999>"} << QByteArray{}
                               << qint64{2400} << qint64{60};
        QTest::newRow("half a table by key")
            << QByteArrayList{"[30]"} << QByteArray{} << qint64{3000} << qint64{40};
        QTest::newRow("no table any more")
            << QByteArrayList{"CREATE TABLE"} << QByteArray{} << qint64{0} << qint64{0};
        QTest::newRow("garbage") << none << QByteArray{"\x13\x37"}.repeated(4000) << qint64{0} << qint64{0};
    }
    void a_remade_local_file_has_what_could_be_read()
    {
        QFETCH(QByteArrayList, damaged);
        QFETCH(QByteArray, in_place);
        QFETCH(qint64, least_codes);
        QFETCH(qint64, drafts);
        running_client running{engine::embedded};
        client& c = running.c;
        a_row{"branch_code"}.with("code_bran", 10).store_in(c.db_conn);
        int row = 0;
        std::string name;
        c.local_conn.load("zip", {"dong", "do"}, [&](std::vector<cell>& fields) {
            name = '<' + std::to_string(++row) + '>';
            fields = {cell::of(std::string_view{name}), cell::of(std::string_view{"서울's"})};
            return row <= 3000;
        });
        for (int at = 10; at < 70; ++at)
            a_row{"drafts", database::local}
                .with("admin_id", QString::number(at))
                .with("fields", QStringLiteral("[%1]").arg(at) + QString{300, u'x'})
                .store_in(c.local_conn);
        a_member{"9001011234568"}.store_in(c.local_conn);
        if (damaged.isEmpty())
            c.local_conn.direct("alter table zip drop column li");
        const QString path = file_of(c.server, database::local);
        c.local_conn.close();
        QByteArray content = in_place.isEmpty() ? content_of(path) : in_place;
        for (const QByteArray& each : damaged) {
            QVERIFY2(content.contains(each), each);
            const qsizetype page = content.indexOf(each) / 4096 * 4096;
            content.replace(page + 100, 3996, QByteArray{3996, '\x37'}); // the file's own head stays
            if (page > 0)
                content.replace(page, 100, QByteArray{100, '\x37'});
        }
        write_file(path, content);
        write_file(path + ".damaged", "of an earlier accident");

        const std::vector<carried_table> carried = remake_local_file(c);

        QVERIFY(is_local_file_sound(c.local_conn, inspection::thorough));
        QCOMPARE(c.local_conn.number("select code_bran from branch_code"), 10);
        const rows codes = c.local_conn.read("select * from zip");
        QVERIFY2(qint64(codes.size()) >= least_codes &&
                     (codes.size() == 3000 || !damaged.isEmpty() || !least_codes),
                 qPrintable(QString::number(codes.size())));
        for (qint64 before = 0; const auto each : codes) {
            const qint64 number = each.text("dong").remove(u'<').remove(u'>').toLongLong();
            QVERIFY(number > before && each.text("do") == "서울's");
            before = number;
        }
        QVERIFY(c.local_conn.number("select count(*) as n from drafts") >= drafts);
        QCOMPARE(c.local_conn.number("select count(*) as n from person_m_tbl"), least_codes > 0 ? 1 : 0);
        for (const carried_table& each : carried) {
            QCOMPARE(c.local_conn.number("select count(*) as n from " + std::string{each.name}), each.rows);
            QVERIFY(each.is_whole || each.name == (drafts == 60 ? "zip" : "drafts"));
        }
        QCOMPARE(c.local_conn.write("insert into print_tbl(pers_no) values ('1')"), 1);
        QCOMPARE(mode_of(path), 0600);
        QVERIFY(content_of(path + ".damaged") != "of an earlier accident");

        c.db_conn.direct("drop table money_member");
        QVERIFY_EXCEPTION_THROWN(remake_local_file(c), db_failure);
        QCOMPARE(c.local_conn.number("select code_bran from branch_code"), 10); // as before
        QCOMPARE(QDir{c.folder.path}.entryList({".orvo*"}, QDir::AllEntries | QDir::Hidden), QStringList{});
    }

    void another_operator_finds_an_emptied_workstation()
    {
        running_client on{engine::embedded};
        // Who logs in one after the other, and whether he finds what was there before.
        for (const auto& [id, branch, finds_it] : {std::tuple{"kim", "0", false},
                                                   {"kim", "0", true},
                                                   {"o'kim", "0", false},
                                                   {"o'kim", "7 A", false},
                                                   {"o'kim", "7 A", true},
                                                   {"kim", "0", false}}) {
            connection& local = on.c.local_conn;
            for (const char* table : {"person_m_tbl", "print_tbl", "print_made", "drafts", "recent_members"})
                local.direct(std::string{"insert or replace into "} + table + " default values");
            on.c.session_id = id;
            on.c.session_branch = branch;
            take_over_workstation(on.c);
            for (const char* table : {"person_m_tbl", "print_tbl", "print_made"})
                QCOMPARE(local.number(std::string{"select count(*) as n from "} + table) > 0, finds_it);
            for (const char* table : {"drafts", "recent_members"}) // each operator has his own
                QCOMPARE(local.number(std::string{"select count(*) as n from "} + table), 1);
        }
    }

    void codes_are_mirrored_all_or_none_data() { engines_under_test(); }
    void codes_are_mirrored_all_or_none()
    {
        FETCH_ENGINE(kind);
        running_client running{kind};
        client& c = running.c;
        const auto is_number = [](const column& each) { return each.type != column_type::text; };
        for (const std::string_view name : mirrored_tables()) {
            a_row of_the_server{name};
            a_row outdated{name};
            for (const column& each : find_table(database::server, name)->columns) {
                of_the_server.with(each.name, is_number(each) ? "7" : "서울's");
                outdated.with(each.name, is_number(each) ? "8" : "경기");
            }
            of_the_server.store_in(c.db_conn);
            outdated.store_in(c.local_conn);
        }
        sync_codes(c.db_conn, c.local_conn);
        for (const std::string_view name : mirrored_tables()) {
            const rows mirror = c.local_conn.read("select * from " + std::string{name});
            QCOMPARE(mirror.size(), std::size_t{1});
            for (const column& each : find_table(database::local, name)->columns)
                QCOMPARE(mirror.front().text(each.name), QString{is_number(each) ? "7" : "서울's"});
        }
        const auto written = [&c] { return c.local_conn.number("select total_changes() as n"); };
        const qint64 before = written();
        sync_codes(c.db_conn, c.local_conn);
        QVERIFY(!sync_code_table(c.db_conn, c.local_conn, "money_member"));
        QCOMPARE(written(), before); // what is alike costs no disk
        c.db_conn.write("update money_member set mem_dues=9");
        QVERIFY(sync_code_table(c.db_conn, c.local_conn, "money_member"));
        QCOMPARE(c.local_conn.number("select mem_dues from money_member"), 9);
        c.db_conn.write("delete from branch_code");
        c.db_conn.direct("drop table money_member"); // the last that is read
        QVERIFY_EXCEPTION_THROWN(sync_codes(c.db_conn, c.local_conn), db_failure);
        QCOMPARE(c.local_conn.write("delete from branch_code"), 1);
    }

    void codes_that_stand_twice_keep_nobody_out_data() { engines_under_test(); }
    void codes_that_stand_twice_keep_nobody_out()
    {
        FETCH_ENGINE(kind);
        running_client running{kind};
        client& c = running.c;
        a_row{"branch_code"}.with("code_bran", 10).with("branch_name", "서울").store_in(c.db_conn);
        give_other_types(running.its_register, "branch_code");
        connection db = beneath(running.its_register);
        for (const char* row : {"10,'부산'", "20,'경기'", "null,'없음'", "null,'없음'", "10,'부산'"})
            db.direct("insert into branch_code(code_bran,branch_name) values (" + std::string{row} + ")");
        const auto mirror = [&] {
            sync_codes(c.db_conn, c.local_conn);
            QStringList names;
            for (const auto each : c.local_conn.read("select * from branch_code"))
                names.append(each.text("code_bran") + each.text("branch_name"));
            return names.join(u' ');
        };
        QCOMPARE(mirror(), "10서울 20경기");
        c.local_conn.direct("drop table branch_code"); // as earlier clients made it
        c.local_conn.direct(
            "create table branch_code(code_bran integer not null default 0,branch_name text not null "
            "default '',primary key(code_bran)) strict, without rowid");
        QCOMPARE(mirror(), "10서울 20경기");
    }
};

QTEST_GUILESS_MAIN(local_file_test)
#include "local_file_test.moc"

#include "client/client.h"
#include "client/code_mirror.h"
#include "db/schema/schema.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/files.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

class local_file_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void the_local_file_is_judged_data();
    void the_local_file_is_judged();
    void a_missing_local_file_is_not_sound();
    void a_remade_local_file_holds_the_codes_alone_data();
    void a_remade_local_file_holds_the_codes_alone();
    void a_local_file_without_codes_is_not_left_behind();
    void codes_are_mirrored_data() { engines_under_test(); }
    void codes_are_mirrored();
    void a_mirror_that_fails_stays_as_it_was_data() { engines_under_test(); }
    void a_mirror_that_fails_stays_as_it_was();
};

void local_file_test::the_local_file_is_judged_data()
{
    QTest::addColumn<QByteArray>("statement");
    QTest::addColumn<std::function<void(QByteArray&)>>("damage");
    QTest::addColumn<bool>("is_sound_at_a_glance");
    QTest::addColumn<bool>("is_sound");
    using change = std::function<void(QByteArray&)>;
    const auto row = [](const char* name, const char* statement, change damage, bool at_a_glance,
                        bool is_sound) {
        QTest::newRow(name) << QByteArray{statement} << std::move(damage) << at_a_glance << is_sound;
    };
    row("complete", "delete from zip", {}, true, true);
    row("without a table", "drop table zip", {}, false, false);
    row("without a column", "alter table zip drop column dong", {}, false, false);
    row("without a column that is a key word", "alter table zip drop column \"do\"", {}, false, false);
    row(
        "empty", "", [](QByteArray& all) { all.clear(); }, false, false);
    row(
        "truncated", "", [](QByteArray& all) { all.truncate(all.size() / 2); }, false, false);
    row(
        "garbage", "", [](QByteArray& all) { all.fill('\x37'); }, false, false);
    row(
        "garbage behind its head", "",
        [](QByteArray& all) {
            all.replace(100, all.size(), QByteArray{all.size(), '\x37'});
        },
        false, false);
    row(
        "garbage at its end", "",
        [](QByteArray& all) {
            all.replace(all.size() - 8192, 8192, QByteArray{8192, '\x37'});
        },
        true, false);
}

void local_file_test::the_local_file_is_judged()
{
    QFETCH(QByteArray, statement);
    QFETCH(std::function<void(QByteArray&)>, damage);
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
    if (damage) {
        QByteArray content = content_of(path);
        damage(content);
        write_file(path, content);
    }
    connection local = make_connection(its_register.address(), database::local);
    try {
        local.open();
    } catch (const db_failure&) {
        // A file that cannot be opened is judged as well.
    }
    QTEST(is_local_file_sound(local), "is_sound_at_a_glance");
    QTEST(is_local_file_sound(local, inspection::thorough), "is_sound");
}

void local_file_test::a_missing_local_file_is_not_sound()
{
    const test_register its_register{engine::embedded};
    QVERIFY(QFile::remove(file_of(its_register.address(), database::local)));
    connection local = make_connection(its_register.address(), database::local);
    QVERIFY_EXCEPTION_THROWN(local.open(), db_failure);
    QVERIFY(!is_local_file_sound(local));
}

void local_file_test::a_remade_local_file_holds_the_codes_alone_data()
{
    QTest::addColumn<QByteArray>("before"); // null: nothing
    QTest::newRow("missing") << QByteArray{};
    QTest::newRow("garbage") << QByteArray{"\x13\x37"}.repeated(4000);
}

void local_file_test::a_remade_local_file_holds_the_codes_alone()
{
    QFETCH(QByteArray, before);
    running_client running{engine::embedded};
    client& c = running.c;
    a_row{"branch_code"}
        .with("code_bran", 10)
        .with("branch_name", QStringLiteral("서울"))
        .store_in(c.db_conn);
    a_row{"print_tbl", database::local}.with("pers_no", "9001011234568").store_in(c.local_conn);
    const QString path = file_of(c.server, database::local);
    c.local_conn.close();
    QVERIFY(QFile::remove(path));
    if (!before.isNull())
        write_file(path, before);
    write_file(path + "-wal", "of the old file");
    write_file(path + ".damaged", "of an earlier accident");

    remake_local_file(c);

    QVERIFY(c.local_conn.is_up());
    QVERIFY(is_local_file_sound(c.local_conn, inspection::thorough));
    QCOMPARE(c.local_conn.read("select * from branch_code").front().text("branch_name"),
             QStringLiteral("서울"));
    QCOMPARE(c.local_conn.number("select count(*) as n from print_tbl"), 0);
    QCOMPARE(c.local_conn.write("insert into print_tbl(pers_no) values ('9001011234568')"), 1);
    QCOMPARE(mode_of(path), 0600);
    QCOMPARE(content_of(path + ".damaged"), before.isNull() ? QByteArray{"of an earlier accident"} : before);
}

void local_file_test::a_local_file_without_codes_is_not_left_behind()
{
    running_client running{engine::embedded};
    client& c = running.c;
    c.db_conn.direct("drop table money_member");
    QVERIFY_EXCEPTION_THROWN(remake_local_file(c), db_failure);
    QVERIFY(!QFile::exists(file_of(c.server, database::local)));
}

void local_file_test::codes_are_mirrored()
{
    FETCH_ENGINE(kind);
    running_client running{kind};
    client& c = running.c;
    for (const std::string_view name : mirrored_tables()) {
        a_row of_the_server{name};
        a_row outdated{name};
        for (const column& each : find_table(database::server, name)->columns) {
            const bool number = each.type != column_type::text;
            of_the_server.with(each.name, number ? QStringLiteral("7") : QStringLiteral("서울's"));
            outdated.with(each.name, number ? QStringLiteral("8") : QStringLiteral("경기"));
        }
        of_the_server.store_in(c.db_conn);
        outdated.store_in(c.local_conn);
    }
    sync_codes(c.db_conn, c.local_conn);
    for (const std::string_view name : mirrored_tables()) {
        const rows mirror = c.local_conn.read("select * from " + std::string{name});
        QCOMPARE(mirror.size(), std::size_t{1});
        for (const column& each : find_table(database::local, name)->columns)
            QCOMPARE(mirror.front().text(each.name),
                     each.type != column_type::text ? QStringLiteral("7") : QStringLiteral("서울's"));
    }
}

void local_file_test::a_mirror_that_fails_stays_as_it_was()
{
    FETCH_ENGINE(kind);
    running_client running{kind};
    client& c = running.c;
    a_row{"branch_code"}
        .with("code_bran", 10)
        .with("branch_name", QStringLiteral("서울"))
        .store_in(c.local_conn);
    a_row{"branch_code"}
        .with("code_bran", 20)
        .with("branch_name", QStringLiteral("부산"))
        .store_in(c.db_conn);
    c.db_conn.direct("drop table money_member");
    QVERIFY_EXCEPTION_THROWN(sync_codes(c.db_conn, c.local_conn), db_failure);
    const rows mirror = c.local_conn.read("select * from branch_code");
    QCOMPARE(mirror.size(), std::size_t{1});
    QCOMPARE(mirror.front().text("branch_name"), QStringLiteral("서울"));
    QCOMPARE(c.local_conn.write("delete from branch_code"), 1);
}

QTEST_GUILESS_MAIN(local_file_test)
#include "local_file_test.moc"

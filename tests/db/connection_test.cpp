#include "support/builders.h"
#include "support/engines.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

namespace {

/// Texts of one column, joined by blanks.
QString joined(const rows& found, std::string_view column)
{
    QStringList all;
    for (const auto row : found)
        all.append(row.text(column));
    return all.join(u' ');
}

} // namespace

class connection_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void writes_tell_how_many_rows_data() { engines_under_test(); }
    void writes_tell_how_many_rows();
    void failures_bear_their_numbers_data();
    void failures_bear_their_numbers();
    void a_transaction_is_undone_by_an_exception_data() { engines_under_test(); }
    void a_transaction_is_undone_by_an_exception();
    void a_failure_ends_a_transaction_whole_data() { engines_under_test(); }
    void a_failure_ends_a_transaction_whole();
    void an_unknown_table_is_named_data() { engines_under_test(); }
    void an_unknown_table_is_named();
    void many_rows_are_loaded_data() { engines_under_test(); }
    void many_rows_are_loaded();
    void a_failed_load_leaves_nothing_data();
    void a_failed_load_leaves_nothing();
    void a_repeated_write_takes_fields_as_they_come_data() { engines_under_test(); }
    void a_repeated_write_takes_fields_as_they_come();
    void a_refused_login_is_told_from_a_lost_line_data();
    void a_refused_login_is_told_from_a_lost_line();
};

void connection_test::writes_tell_how_many_rows()
{
    FETCH_ENGINE(kind);
    const test_register empty{kind};
    connection db = empty.connect();
    for (const char* year : {"2024", "2025", "2026"})
        a_dues_year{"9001011234568", year}.store_in(db);
    QCOMPARE(db.write("update dues_h_tbl set incom_flag='1' where val_year<>'2025'"), 2);
    QCOMPARE(db.write("delete dues_h_tbl where val_year='1999'"), 0);
    QCOMPARE(db.write("delete dues_h_tbl where pers_no='{p}'", {{"p", "9001011234568"}}), 3);
    QVERIFY(db.read("select * from dues_h_tbl").empty());
}

void connection_test::failures_bear_their_numbers_data()
{
    QTest::addColumn<engine>("kind");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<failure_kind>("failure");
    QTest::addColumn<std::uint32_t>("number");
    const std::tuple<const char*, const char*, failure_kind, std::uint32_t> cases[] = {
        {"a key that exists", "insert into branch_code (code_bran) values (10)", failure_kind::duplicate,
         0x80040E2F},
        {"a name for a number", "update branch_code set code_bran='{text}'", failure_kind::conversion,
         0x80040E07},
        {"a name for a constant number", "update branch_code set code_bran='서울'", failure_kind::conversion,
         0x80040E07},
        {"a number beyond its column", "insert into branch_code (code_bran) values (3000000000)",
         failure_kind::overflow, 0x80040E57},
        {"a given number beyond its column", "update branch_code set code_bran='{large}'",
         failure_kind::overflow, 0x80040E57},
        {"a text beyond its column", "insert into branch_code (code_bran,branch_name) values (20,'{long}')",
         failure_kind::overflow, 0x80040E57},
        {"a syntax that none knows", "update branch_code branch_name=1", failure_kind::other, 0x80040E14},
    };
    for (const engine kind : engines)
        for (const auto& [name, text, failure, number] : cases)
            QTest::addRow("%s: %s", name_of(kind), name) << kind << QByteArray{text} << failure << number;
}

void connection_test::failures_bear_their_numbers()
{
    FETCH_ENGINE(kind);
    QFETCH(QByteArray, text);
    QFETCH(failure_kind, failure);
    QFETCH(std::uint32_t, number);
    const test_register empty{kind};
    connection db = empty.connect();
    load_branches(db, 10);
    try {
        db.write(text.toStdString(), {{"text", QStringLiteral("서울")},
                                      {"large", qint64{3'000'000'000}},
                                      {"long", QString{61, QChar{u'가'}}}});
        QFAIL("the statement went through");
    } catch (const db_failure& failed) {
        QCOMPARE(failed.kind(), failure);
        QCOMPARE(static_cast<std::uint32_t>(failed.number()), number);
        QCOMPARE(failed.statement(), QString::fromUtf8(text));
        QVERIFY(!failed.text().isEmpty());
    }
    QVERIFY(db.is_up());
    QCOMPARE(db.number("select count(*) as n from branch_code"), 10);
}

void connection_test::a_transaction_is_undone_by_an_exception()
{
    FETCH_ENGINE(kind);
    const test_register empty{kind};
    connection db = empty.connect();
    load_branches(db, 3);
    const auto save = [&](bool fails) {
        transaction all_or_nothing{db};
        db.write("delete from branch_code");
        if (fails)
            throw std::runtime_error{"in the midst of it"};
        all_or_nothing.commit();
    };
    QVERIFY_EXCEPTION_THROWN(save(true), std::runtime_error);
    QCOMPARE(db.number("select count(*) as n from branch_code"), 3);
    save(false);
    QCOMPARE(db.number("select count(*) as n from branch_code"), 0);
    connection other = empty.connect();
    QCOMPARE(other.number("select count(*) as n from branch_code"), 0);
}

void connection_test::a_failure_ends_a_transaction_whole()
{
    FETCH_ENGINE(kind);
    const test_register empty{kind};
    connection db = empty.connect();
    load_branches(db, 3);
    const auto save = [&] {
        const transaction all_or_nothing{db};
        db.write("update branch_code set branch_name='x' where code_bran='1'");
        db.write("insert into branch_code (code_bran) values (2)");
    };
    QVERIFY_EXCEPTION_THROWN(save(), db_failure);
    QCOMPARE(joined(db.read("select branch_name from branch_code"), "branch_name"),
             QStringLiteral("서울 서울 서울"));
    QCOMPARE(db.write("delete from branch_code"), 3);
}

void connection_test::an_unknown_table_is_named()
{
    FETCH_ENGINE(kind);
    const test_register empty{kind};
    connection db = empty.connect();
    for (int time = 0; time < 2; ++time) { // the second time the text is known already
        try {
            db.read("select * from nowhere");
            QFAIL("the table is there");
        } catch (const db_failure& failure) {
            QCOMPARE(failure.kind(), failure_kind::other);
            QVERIFY(failure.text().contains(QLatin1String{"nowhere"}));
        }
    }
    QVERIFY(db.read("select * from branch_code").empty());
}

void connection_test::many_rows_are_loaded()
{
    FETCH_ENGINE(kind);
    const test_register empty{kind};
    connection db = empty.connect();
    const std::vector<std::string> names{"가\t나", "다\n라", "마\\바", "\\N", "it's", "\r", ""};
    std::size_t next = 0;
    db.load("branch_code", {"branch_name", "code_bran"}, [&](std::vector<cell>& fields) {
        if (next == 3000)
            return false;
        fields.push_back(cell::of(std::string_view{names[next % names.size()]}));
        fields.push_back(cell::of(static_cast<std::int64_t>(++next)));
        return true;
    });
    const rows found = db.read("select * from branch_code");
    QCOMPARE(found.size(), std::size_t{3000});
    for (std::size_t i = 0; i < found.size(); ++i) {
        QCOMPARE(found[i].number("code_bran"), static_cast<qint64>(i + 1));
        QCOMPARE(found[i].text("branch_name").toStdString(), names[i % names.size()]);
    }
}

void connection_test::a_failed_load_leaves_nothing_data()
{
    QTest::addColumn<engine>("kind");
    QTest::addColumn<bool>("source_fails");
    for (const engine kind : engines)
        for (const bool source : {true, false})
            QTest::addRow("%s: %s", name_of(kind), source ? "the source fails" : "the table refuses a row")
                << kind << source;
}

void connection_test::a_failed_load_leaves_nothing()
{
    FETCH_ENGINE(kind);
    QFETCH(bool, source_fails);
    const test_register empty{kind};
    connection db = empty.connect();
    const auto load = [&] {
        int next = 0;
        db.load("branch_code", {"code_bran"}, [&](std::vector<cell>& fields) {
            if (next == 3 && source_fails)
                throw std::runtime_error{"no more"};
            fields.push_back(cell::of(std::int64_t{next < 3 ? next : 0}));
            return next++ < 4;
        });
    };
    if (source_fails)
        QVERIFY_EXCEPTION_THROWN(load(), std::runtime_error);
    else
        QVERIFY_EXCEPTION_THROWN(load(), db_failure);
    QCOMPARE(db.number("select count(*) as n from branch_code"), 0);
    load_branches(db, 2);
    QCOMPARE(db.number("select count(*) as n from branch_code"), 2);
}

void connection_test::a_repeated_write_takes_fields_as_they_come()
{
    FETCH_ENGINE(kind);
    const test_register empty{kind};
    connection db = empty.connect();
    repeated_write insert =
        db.repeat("insert into branch_code (code_bran,branch_name) values ('{code}','{name}')");
    const cell number = cell::of(std::int64_t{7});
    const cell digits = cell::of(std::string_view{"8"});
    const cell name = cell::of(std::string_view{"서울's"});
    for (const std::array<cell, 2>& row :
         {std::array{number, name}, std::array{digits, cell{}}, std::array{cell{}, name}})
        insert(row);
    const rows found = db.read("select * from branch_code");
    QCOMPARE(joined(found, "code_bran"), QStringLiteral("0 7 8"));
    QCOMPARE(found[1].text("branch_name"), QStringLiteral("서울's"));
    QVERIFY(!found[2].is_null("branch_name"));
    QCOMPARE(found[2].text("branch_name"), QString{});
    try {
        insert(std::array{number, name});
        QFAIL("the code was taken twice");
    } catch (const db_failure& failure) {
        QCOMPARE(failure.kind(), failure_kind::duplicate);
    }
}

void connection_test::a_refused_login_is_told_from_a_lost_line_data()
{
    QTest::addColumn<engine>("kind");
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("name");
    QTest::newRow("no such user") << engine::postgresql << "nobody"
                                  << "postgres";
    QTest::newRow("no such database") << engine::postgresql << "postgres"
                                      << "nowhere";
}

void connection_test::a_refused_login_is_told_from_a_lost_line()
{
    FETCH_ENGINE(kind);
    server_address server = *postgresql_server();
    QFETCH(QString, user);
    QFETCH(QString, name);
    server.user = user;
    server.name = name;
    connection db = make_connection(server, database::server);
    try {
        db.open();
        QFAIL("the server let anybody in");
    } catch (const db_failure& failure) {
        QCOMPARE(failure.kind(), failure_kind::login_refused);
        QCOMPARE(failure.number(), error_number::login_refused);
    }
    QVERIFY(!db.is_up());
}

QTEST_GUILESS_MAIN(connection_test)
#include "connection_test.moc"

#include "db/schema/schema.h"

#include "support/engines.h"
#include "support/test_register.h"

#include <QtTest>

#include <map>

using namespace orvo;

namespace {

constexpr std::array all_databases{database::server, database::mail, database::local};

QByteArray text_of(std::string_view name)
{
    return {name.data(), static_cast<qsizetype>(name.size())};
}

} // namespace

class schema_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_name_has_one_type_everywhere();
    void number_columns_are_known_without_case();
    void keys_and_indexes_name_columns();
    void texts_are_bounded();
    void mirrors_have_the_columns_of_their_tables();
    void every_database_is_made_data();
    void every_database_is_made();
    void bounds_hold_data();
    void bounds_hold();
    void the_scratch_copy_keeps_the_order_of_its_rows();
};

void schema_test::a_name_has_one_type_everywhere()
{
    const auto stored_as = [](column_type type) {
        return type == column_type::identity ? column_type::number : type;
    };
    std::map<std::string_view, column_type> known;
    for (const database each : all_databases)
        for (const table& one : tables_of(each))
            for (const column& field : one.columns) {
                const auto [at, is_new] = known.emplace(field.name, stored_as(field.type));
                QVERIFY2(is_new || at->second == stored_as(field.type),
                         text_of(one.name) + "." + text_of(field.name) + " has another type elsewhere");
            }
}

void schema_test::number_columns_are_known_without_case()
{
    for (const char* name : {"code_bran", "CODE_BRAN", "std_id", "iss_no", "test_avg", "Mem_Dues", "b_no"})
        QVERIFY2(is_number(name), name);
    for (const char* name :
         {"code_post", "pers_no", "val_year", "edu_avg", "company_meal", "m_code", "", "code_bra"})
        QVERIFY2(!is_number(name), name);
    QVERIFY(find_table(database::server, "STD_H_TBL") != nullptr);
    QVERIFY(find_table(database::server, "zip") == nullptr);
    QCOMPARE(width_of("Person_M_Tbl", "PERS_NO"), 13);
}

void schema_test::keys_and_indexes_name_columns()
{
    for (const database each : all_databases)
        for (const table& one : tables_of(each)) {
            auto sets = one.indexes;
            sets.push_back(one.key);
            for (const auto& names : sets)
                for (const std::string_view name : names)
                    QVERIFY2(one.find(name) != nullptr, text_of(one.name) + "." + text_of(name));
        }
}

void schema_test::texts_are_bounded()
{
    for (const database each : all_databases)
        for (const table& one : tables_of(each))
            for (const column& field : one.columns)
                if (field.type == column_type::text && field.name != "message")
                    QVERIFY2(field.width > 0, text_of(one.name) + "." + text_of(field.name));
}

void schema_test::mirrors_have_the_columns_of_their_tables()
{
    QCOMPARE(mirrored_tables().size(), std::size_t{19});
    auto names = mirrored_tables();
    names.push_back("person_m_tbl"); // the scratch copy is filled from the register's rows
    for (const std::string_view name : names) {
        const table* here = find_table(database::local, name);
        const table* there = find_table(database::server, name);
        QVERIFY2(here && there, text_of(name));
        QVERIFY2(std::ranges::equal(here->columns, there->columns, {}, &column::name, &column::name),
                 text_of(name));
    }
}

void schema_test::every_database_is_made_data()
{
    QTest::addColumn<engine>("kind");
    QTest::addColumn<database>("where");
    QTest::newRow("embedded register") << engine::embedded << database::server;
    QTest::newRow("embedded mail") << engine::embedded << database::mail;
    QTest::newRow("workstation") << engine::embedded << database::local;
    QTest::newRow("postgresql register") << engine::postgresql << database::server;
    QTest::newRow("postgresql mail") << engine::postgresql << database::mail;
}

void schema_test::every_database_is_made()
{
    FETCH_ENGINE(kind);
    QFETCH(database, where);
    const test_register fresh{kind};
    connection on = fresh.connect(where);
    for (const table& one : tables_of(where)) {
        const std::string name{one.name};
        // A row of nothing but defaults: no column may be null, none without a default.
        on.direct("insert into " + name + " default values");
        const rows found = on.read("select * from " + name);
        QCOMPARE(found.size(), std::size_t{1});
        QCOMPARE(found.columns().size(), one.columns.size());
        for (std::size_t i = 0; i < one.columns.size(); ++i) {
            const column& field = one.columns[i];
            QCOMPARE(found.columns()[i], std::string{field.name});
            const QString wanted = field.type == column_type::text       ? QString{}
                                   : field.type == column_type::identity ? QStringLiteral("1")
                                                                         : QStringLiteral("0");
            QVERIFY(!found.front().is_null(field.name));
            QCOMPARE(found.front().text(field.name), wanted);
        }
    }
}

void schema_test::bounds_hold_data()
{
    QTest::addColumn<engine>("kind");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("is_taken");
    QTest::addColumn<failure_kind>("why");

    const QString name_of_40 = QString{40, QChar{u'가'}};
    const auto member = [](const QString& name) {
        return QStringLiteral("insert into person_m_tbl(pers_no,pers_name) values ('1','%1')").arg(name);
    };
    const auto set = [](const char* what) {
        return QStringLiteral("insert into dues_b_tbl(%1) values (%2)")
            .arg(QString::fromLatin1(what).section(u'=', 0, 0), QString::fromLatin1(what).section(u'=', 1));
    };
    for (const engine kind : engines) {
        const auto row = [kind](const char* what, const QString& text, bool is_taken, failure_kind why) {
            QTest::addRow("%s: %s", name_of(kind), what) << kind << text << is_taken << why;
        };
        constexpr auto fine = failure_kind::other;
        row("a name as wide as its column", member(name_of_40), true, fine);
        row("a wider name", member(name_of_40 + u'나'), false, failure_kind::overflow);
        row("a long text in a letter",
            QStringLiteral("insert into have_lic_tbl(etc) values ('%1')").arg(QString{200, u'x'}), true,
            fine);
        row("the largest number", set("code_member=2147483647"), true, fine);
        row("a larger number", set("code_member=2147483648"), false, failure_kind::overflow);
        row("a smaller number", set("code_member=-2147483649"), false, failure_kind::overflow);
        row("money of 64 bits", set("pres_money=9000000000000"), true, fine);
        row("a word as a number", set("code_member='abc'"), false, failure_kind::conversion);
        row("digits as a number", set("code_member='012'"), true, fine);
        row("the key once more",
            QStringLiteral("insert into dues_h_tbl(pers_no,val_year) values ('1','2024'),('1','2024')"),
            false, failure_kind::duplicate);
        row("two pledges of a day",
            QStringLiteral("insert into contract(pers_no,con_day) values ('1','20240101'),('1','20240101')"),
            true, fine);
    }
}

void schema_test::bounds_hold()
{
    FETCH_ENGINE(kind);
    QFETCH(QString, text);
    QFETCH(bool, is_taken);
    QFETCH(failure_kind, why);
    const test_register fresh{kind};
    connection on = fresh.connect();
    try {
        on.direct(text.toStdString());
        QVERIFY(is_taken);
    } catch (const db_failure& failure) {
        QVERIFY2(!is_taken, failure.what());
        QCOMPARE(failure.kind(), why);
    }
}

void schema_test::the_scratch_copy_keeps_the_order_of_its_rows()
{
    const test_register fresh{engine::embedded};
    connection local = fresh.connect(database::local);
    const QStringList order{QStringLiteral("9"), QStringLiteral("1"), QStringLiteral("5"),
                            QStringLiteral("1")};
    for (const QString& each : order)
        local.write("insert into person_m_tbl(pers_no,pers_name) values ('{pers_no}','{name}')",
                    {{"pers_no", each}, {"name", QStringLiteral("가")}});
    QStringList found;
    for (const auto& each : local.read("select pers_no,pers_name from person_m_tbl"))
        found += each.text("pers_no");
    QCOMPARE(found, order);
}

QTEST_GUILESS_MAIN(schema_test)
#include "schema_test.moc"

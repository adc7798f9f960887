#include "db/schema/schema.h"

#include "support/engines.h"
#include "support/test_register.h"

#include <QTest>

#include <set>

using namespace orvo;

namespace {

constexpr std::array all_databases{database::server, database::mail, database::local};

} // namespace

class schema_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void all_but_two_names_have_one_type_everywhere()
    {
        std::set<std::string_view> of_two;
        for (const database each : all_databases)
            for (const table& one : tables_of(each))
                for (const column& field : one.columns)
                    if (!use_of(field.name)->common)
                        of_two.insert(field.name);
        QCOMPARE(of_two, (std::set<std::string_view>{"iss_no", "test_avg"}));
    }

    void mirrors_have_the_columns_of_their_tables()
    {
        auto names = mirrored_tables();
        names.push_back("person_m_tbl"); // the scratch copy is filled from the register's rows
        for (const std::string_view name : names) {
            const table* here = find_table(database::local, name);
            const table* there = find_table(database::server, name);
            QVERIFY2(here && there, std::string{name}.c_str());
            QVERIFY(std::ranges::equal(here->columns, there->columns, {}, &column::name, &column::name));
            QVERIFY(std::ranges::equal(here->columns, there->columns, {}, &column::type, &column::type));
        }
    }

    void no_column_is_ever_null_data() { engines_under_test(); }
    void no_column_is_ever_null()
    {
        FETCH_ENGINE(kind);
        const test_register fresh{kind};
        for (const database each : all_databases) {
            connection db = fresh.connect(each);
            for (const table& one : tables_of(each)) {
                db.direct("insert into " + std::string{one.name} + " default values");
                const rows found = db.read("select * from " + std::string{one.name});
                QCOMPARE(found.size(), std::size_t{1});
                QCOMPARE(found.columns().size(), one.columns.size());
                for (const column& field : one.columns) {
                    QVERIFY(!found.front().is_null(field.name));
                    QCOMPARE(found.front().text(field.name),
                             QLatin1String{field.type == column_type::text       ? ""
                                           : field.type == column_type::identity ? "1"
                                                                                 : "0"});
                }
            }
        }
    }

    void the_scratch_copy_keeps_the_order_of_its_rows()
    {
        const test_register fresh{engine::embedded};
        connection local = fresh.connect(database::local);
        QString found;
        for (const char* each : {"9", "1", "5", "1"})
            local.write("insert into person_m_tbl(pers_no,pers_name) values ('{p}','가')", {{"p", each}});
        for (const auto& each : local.read("select pers_no,pers_name from person_m_tbl"))
            found += each.text("pers_no");
        QCOMPARE(found, QStringLiteral("9151"));
    }
};

QTEST_GUILESS_MAIN(schema_test)
#include "schema_test.moc"

#include "dues/rules/payments.h"
#include "dues/rules/yearly_dues.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/other_types.h"
#include "support/test_register.h"
using namespace orvo;

const QString kim = QStringLiteral("9001011234568");
const QString today = QStringLiteral("20261122");
const dues_year of_2026{kim, QStringLiteral("2026")};

void store(connection& db, planned_save what)
{
    save{std::move(what), db, db}.carry_out();
}

/// "dues 30000" is the header of the year; "line" and "other" are payments that no rule has settled, the
/// latter of other years and members; "alter" and "drop" name the line.
void take_step(connection& db, const QString& step)
{
    const QString verb = step.section(u' ', 0, 0);
    const QString amount = step.section(u' ', -1);
    if (verb == "dues")
        store(db, add_year(of_2026, "20", amount, today));
    else if (verb == "pay")
        store(db, add_payment(of_2026, "20", {"20261121", {}, amount, "1"}, today, {}));
    else if (verb == "alter")
        store(db,
              change_payment(of_2026, step.section(u' ', 1, 1), {{}, "20261121", amount, "2"}, today, {}));
    else if (verb == "drop")
        store(db, delete_payment(of_2026, amount));
    else if (verb == "change")
        store(db, change_year(of_2026, "30", amount, today, {}));
    else if (verb == "line")
        a_payment{kim, "2026", amount.toLongLong()}.store_in(db);
    else
        for (const auto& [pers_no, year] :
             {std::pair{kim, "평생회원"}, {kim, "2025"}, {kim, ""}, {"8512122234567", "2026"}})
            a_payment{pers_no, year, amount.toLongLong()}.store_in(db);
}

class dues_test : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void the_balance_follows_the_lines_data() { engines_under_test(); }
    void the_balance_follows_the_lines() // steps; yet_money and incom_flag then
    {
        FETCH_ENGINE(kind);
        for (const QString row :
             {"dues 30000;30000 0", "dues 30000|pay 10000|pay 20000;0 1",
              "dues 30000|pay 10000|pay 20000|drop 1;10000 0", "dues 30000|pay 29999;1 0",
              "dues 30000|pay 35000;-5000 1", "dues 30000|pay 35000|alter 1 30000;0 1",
              "dues 30000|pay 30000|drop 1;30000 0", "dues 30000|line 25000|pay 5000;0 1",
              "dues 30000|other 30000|pay 1000;29000 0", "dues 0|pay 0;0 1",
              "dues 30000|pay 30000|change 50000;20000 1",
              "dues 30000|pay 30000|change 50000|pay 5000;15000 0", "dues 50000|pay 30000|change 30000;0 0",
              "dues 1|pay 2147483647|pay 2147483647;-4294967293 1",
              "other types|dues 30000|pay 35000|alter 1 30000|line 5;0 1",
              "other types|dues 30000|pay 30000|change 50000|pay 5000;15000 0"}) {
            running_client on{kind};
            for (const QString& step : row.section(u';', 0, 0).split(u'|'))
                if (step == "other types") // as "30000.00" and the like
                    for (const char* table : {"dues_h_tbl", "dues_b_tbl"})
                        give_other_types(on.its_register, table);
                else
                    take_step(on.c.db_conn, step);
            const rows years = on.c.db_conn.read("select * from dues_h_tbl");
            QCOMPARE(row, row.section(u';', 0, 0) + u';' + years[0].text("yet_money") + u' ' +
                              years[0].text("incom_flag"));
        }
    }
    void years_and_members_are_told_apart_data() { engines_under_test(); }
    void years_and_members_are_told_apart()
    {
        FETCH_ENGINE(kind);
        running_client on{kind};
        connection& db = on.c.db_conn;
        a_dues_year{"8512122234567", "2026"}.store_in(db);
        for (const char* step : {"dues 30000", "pay 2147483647", "pay 2147483647", "other 700"})
            take_step(db, step);
        QCOMPARE(ask(db, payments_in(of_2026)).sum, 4'294'967'294);
        store(db, add_payment({kim, {}}, {}, {{}, "20'6", "50000", "1"}, today,
                              {})); // no year: nothing is settled
        store(db, delete_year(of_2026));
        QCOMPARE(db.number("select sum(pres_money) as rest from dues_b_tbl"), 4 * 700 + 50000);
        QCOMPARE(db.read("select * from dues_h_tbl").size(), 1);
    }
};

QTEST_GUILESS_MAIN(dues_test)
#include "dues_test.moc"

#include "db/schema/schema.h"
#include "dues/rules/payments.h"
#include "dues/rules/pledges.h"
#include "dues/rules/yearly_dues.h"
#include "members/rules/member_update.h"
#include "members/rules/workplaces.h"
#include "support/a_new_member.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/pausable_proxy.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

namespace {

const QString today = QStringLiteral("20261122");
const dues_year of_2026{QStringLiteral("9001011234568"), QStringLiteral("2026")};

/// The member of that year, who owes 50,000 and has paid 20,000 by line 1; nothing of it settled.
void store_a_year(connection& db)
{
    a_member{of_2026.pers_no}.store_in(db);
    a_dues_year{of_2026.pers_no, of_2026.val_year}.store_in(db);
    for (const qint64 paid : {20'000, 1'000})
        a_payment{of_2026.pers_no, of_2026.val_year, paid}.store_in(db);
}

/// A pledge and one instalment of it by number 1, not summed up.
void store_an_instalment(connection& db)
{
    a_pledge{of_2026.pers_no, "20200101"}.store_in(db);
    a_row{"contract_list"}
        .with("con_date", "20260315")
        .with("pers_no", of_2026.pers_no)
        .with("con_money", 30'000)
        .store_in(db);
}

/// As the dialog does: the first entry is the pledge.
void enter_amount(connection& db, save_steps& steps)
{
    if (const auto pledge = ask(db, pledge_of(of_2026.pers_no)))
        add_instalment(steps, of_2026.pers_no, pledge->con_day, {today, "5000"});
    else
        add_pledge(steps, of_2026.pers_no, "5000", today);
}

const chosen_instalment first_instalment{of_2026.pers_no, "20260315", "1"};

/// Rows in all tables that a change or a deletion of the member goes through.
void store_everything(connection& db)
{
    store_a_year(db);
    store_an_instalment(db);
    a_workplace{of_2026.pers_no}.store_in(db);
    for (const char* table : {"id_tbl", "supplement", "std_h_tbl", "std_b_tbl", "have_lic_tbl"})
        a_row{table}.with("pers_no", of_2026.pers_no).store_in(db);
}

/// Another number and branch, so that every statement leaves a trace.
void change_everything(connection&, save_steps& steps)
{
    test_register workstation{engine::embedded};
    connection local = workstation.connect(database::local);
    member_data typed = a_new_member().member;
    typed.pers_no1 = QStringLiteral("900102");
    typed.code_bran = QStringLiteral("30");
    update_member(steps, local, of_2026.pers_no, edited_columns(typed, today), "kim", "secret");
}

void move_to_the_second_workplace(connection&, save_steps& steps)
{
    change_workplace(steps, of_2026.pers_no, "2",
                     workplace_columns(of_2026.pers_no, a_new_member().workplace, today));
}

/// A save of the association: what the register holds before, and its statements, the writes of which run
/// under `steps`.
struct save_under_test {
    const char* name;
    std::function<void(connection&)> prepare;
    std::function<void(connection&, save_steps& steps)> run;
    qsizetype on_workstation = 0; ///< steps behind the first that go to the workstation's own file
};

const std::vector<save_under_test>& saves()
{
    static const std::vector<save_under_test> all{
        {"registration",
         [](connection& db) {
             a_dues_year{"7001011234567", "2026"}.store_in(db);
         },
         [](connection& db, save_steps& steps) {
             const new_member typed = a_new_member();
             is_registered(db, typed.member.pers_no());
             store_member(steps, typed, today);
             store_pledge(steps, typed, today);
             store_workplace(steps, typed, today);
         }},
        {"a year is added", [](connection& db) { a_member{of_2026.pers_no}.store_in(db); },
         [](connection&, save_steps& steps) { add_year(steps, of_2026, "30", "50000", today); }},
        {"a year is changed", store_a_year,
         [](connection&, save_steps& steps) { change_year(steps, of_2026, "30", "80000", today); }},
        {"a year is deleted", store_a_year,
         [](connection&, save_steps& steps) { delete_year(steps, of_2026); }},
        {"a payment is added", store_a_year,
         [](connection&, save_steps& steps) {
             add_payment(steps, of_2026, "20", {"20261121", "", "10000", "1"}, today);
         }},
        {"a payment is changed", store_a_year,
         [](connection&, save_steps& steps) {
             change_payment(steps, of_2026, "1", {"20261121", "", "10000", "2"}, today);
         }},
        {"a payment is deleted", store_a_year,
         [](connection&, save_steps& steps) { delete_payment(steps, of_2026, "1"); }},
        {"a pledge is made", [](connection&) {}, enter_amount},
        {"an instalment is added", store_an_instalment, enter_amount},
        {"an instalment is changed", store_an_instalment,
         [](connection&, save_steps& steps) {
             change_instalment(steps, first_instalment, {"20260315", "7000"}, "1");
         }},
        {"an instalment is deleted",
         [](connection& db) {
             store_an_instalment(db);
             db.direct("update contract set con_money=30000");
         },
         [](connection&, save_steps& steps) { delete_instalment(steps, first_instalment); }},
        {"a member is changed", store_everything, change_everything, 1},
        {"a member is deleted", store_everything,
         [](connection&, save_steps& steps) { delete_member(steps, of_2026.pers_no); }},
        {"a workplace is added", store_everything,
         [](connection&, save_steps& steps) {
             add_workplace(steps, of_2026.pers_no, a_new_member().workplace, today);
         }},
        {"a workplace is changed",
         [](connection& db) {
             store_everything(db);
             a_workplace{of_2026.pers_no}.former().store_in(db);
         },
         move_to_the_second_workplace},
        {"a workplace is deleted", store_everything,
         [](connection&, save_steps& steps) { delete_workplace(steps, of_2026.pers_no, "1"); }},
    };
    return all;
}

/// Does something behind the answer of a statement, and answers the question of a lost line.
class cutting_watch : public line_watch {
public:
    bool try_again(const db_failure&) override
    {
        ++asked;
        return goes_on;
    }
    bool keep_waiting(std::chrono::milliseconds, bool) override { return true; }
    void done_waiting() override
    {
        if (behind)
            behind(++statements);
    }

    std::function<void(int)> behind;
    bool goes_on = true;
    int asked = 0;
    int statements = 0;
};

/// All rows of the register but the numbers that the server assigns.
QStringList content(connection& db)
{
    QStringList all;
    for (const table& each : tables_of(database::server)) {
        const rows found = db.read("select * from " + std::string{each.name});
        for (const auto row : found) {
            QString line = QString::fromUtf8(each.name.data(), static_cast<qsizetype>(each.name.size()));
            for (const column& field : each.columns)
                if (field.type != column_type::identity)
                    line += u'|' + row.text(field.name);
            all.append(line);
        }
    }
    return all;
}

/// One run of a save on a register of its own, behind a line that can break.
struct save_run {
    explicit save_run(const save_under_test& what)
        : save{what}, proxy{its_register.address()}, direct{its_register.connect()},
          db{make_connection(proxy.address(), database::server)}, steps{db}
    {
        save.prepare(direct);
        db.open();
        db.set_watch(&watch);
    }

    const save_under_test& save;
    test_register its_register{engine::postgresql};
    pausable_proxy proxy;
    connection direct;
    cutting_watch watch;
    connection db;
    save_steps steps;
};

} // namespace

/// Each save, cut behind each of its statements.
class broken_saves_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cut_behind_every_statement_data()
    {
        QTest::addColumn<std::size_t>("which");
        for (std::size_t i = 0; i < saves().size(); ++i)
            QTest::newRow(saves()[i].name) << i;
    }
    void cut_behind_every_statement()
    {
        if (!is_at_hand(engine::postgresql))
            QSKIP("ORVO_TEST_POSTGRESQL names no server; scripts/with_postgresql.sh starts one");
        QFETCH(std::size_t, which);
        const save_under_test& save = saves()[which];

        QList<QStringList> behind; // the register behind each statement of an undisturbed run
        QList<qsizetype> stored;
        {
            save_run undisturbed{save};
            behind.append(content(undisturbed.direct));
            stored.append(0);
            undisturbed.watch.behind = [&](int) {
                behind.append(content(undisturbed.direct));
                stored.append(stored.last() + (behind.last() != behind[behind.size() - 2]));
            };
            save.run(undisturbed.db, undisturbed.steps);
            // No step without a trace.
            QCOMPARE(undisturbed.steps.stored().size(), stored.last() + save.on_workstation);
        }
        const auto statements = static_cast<int>(behind.size()) - 1;
        QVERIFY(statements > 0);
        for (int k = 0; k < statements; ++k) {
            for (const bool goes_on : {true, false}) {
                save_run run{save};
                const auto cut = [&run] { run.proxy.cut_lines(); };
                run.watch.goes_on = goes_on;
                run.watch.behind = [&](int statement) {
                    if (statement == k)
                        cut();
                };
                if (k == 0)
                    cut();
                try {
                    save.run(run.db, run.steps);
                    QVERIFY(goes_on);
                    QCOMPARE(content(run.direct), behind.last());
                } catch (const db_failure& failure) {
                    QVERIFY2(!goes_on, failure.what());
                    QCOMPARE(failure.kind(), failure_kind::line_lost);
                    QCOMPARE(content(run.direct), behind[k]);
                    QCOMPARE(failure.stored().size(), stored[k] + (k > 0 ? save.on_workstation : 0));
                    // The same press, later: it goes on behind what is stored.
                    run.watch.goes_on = true;
                    run.watch.behind = {};
                    save.run(run.db, run.steps);
                    QCOMPARE(content(run.direct), behind.last());
                }
                QVERIFY(run.watch.asked >= 1);
            }
        }
    }
};

QTEST_GUILESS_MAIN(broken_saves_test)
#include "broken_saves_test.moc"

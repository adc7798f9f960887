#include "dues/rules/payments.h"
#include "dues/rules/pledges.h"
#include "dues/rules/yearly_dues.h"
#include "members/rules/member_update.h"
#include "members/rules/workplaces.h"
#include "members/screens/insert_frm.h"
#include "members/screens/manager_main_frm.h"
#include "shell/openers.h"
#include "support/a_new_member.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/fake_desk.h"
#include "support/pausable_proxy.h"
#include "support/screens.h"
#include "support/test_register.h"

#include "hands/hands.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QListWidget>
#include <QTest>
#include <QTimer>

#include <cstdio>

using namespace orvo;

namespace {

const QString number = QStringLiteral("9001011234568");
const dues_year of_2026{number, QStringLiteral("2026")};

/// A client at the far end of a line, with a member who has one of everything.
struct far_away {
    far_away()
    {
        for (connection* each : {&c.local_conn, &c.db_conn})
            each->open();
        connection direct = its_register.connect();
        a_member{number}.store_in(direct);
        a_member{number}.store_in(c.local_conn);
        a_row{"id_tbl"}.with("pers_no", number).store_in(direct);
        a_row{"money_member"}.with("code_member", 20).with("mem_kind", "정회원").store_in(direct);
        a_dues_year{number, "2026"}.store_in(direct);
        a_payment{number, "2026"}.store_in(direct);
        a_workplace{number}.store_in(direct);
        a_pledge{number, "20261122"}.store_in(direct);
        a_row{"contract_list"}.with("pers_no", number).with("con_date", "20261122").store_in(direct);
        c.selected_pers_no = number;
        c.cur_val_year = QStringLiteral("2026");
        c.cur_dues_id = c.cur_company_id = c.cur_con_id = QStringLiteral("1");
        c.cur_con_date = QStringLiteral("20261122");
        c.comp_ud_caller = QStringLiteral("1");
        proxy.delay_answers(std::chrono::milliseconds{qEnvironmentVariableIntValue("ORVO_LINE_DELAY")});
    }

    void open_dialog(const char* name)
    {
        QTimer::singleShot(0, qApp,
                           [] { static_cast<QDialog*>(QApplication::activeModalWidget())->reject(); });
        all_openers().dialogs.at(QString::fromLatin1(name))(c, desk, nullptr);
    }

    test_register its_register{engine::postgresql};
    pausable_proxy proxy{its_register.address()};
    scripted_prompts say;
    client c{its_register.folder(), proxy.address(), say, &test_clock};
    fake_desk desk;
    std::unique_ptr<QWidget> screen;
};

struct act {
    const char* name;
    std::function<void(far_away&)> run;
    int statements; ///< that the association's rules have
    int waits;
};

void open_console(far_away& at)
{
    at.screen = std::make_unique<manager_main_frm>(at.c, at.desk, nullptr);
    bring_up(*at.screen, 1366, 650);
}

const std::vector<act>& acts()
{
    const auto dialog = [](const char* name) { return [name](far_away& at) { at.open_dialog(name); }; };
    const auto saving = [](const std::function<void(save_steps&)>& steps) {
        return [steps](far_away& at) {
            save_steps begun{at.c.db_conn};
            steps(begun);
        };
    };
    static const std::vector<act> all{
        {"the registration form",
         [](far_away& at) {
             insert_frm{at.c, at.desk, nullptr};
         },
         0, 0},
        {"the console", open_console, 0, 0},
        {"a click on a member",
         [](far_away& at) {
             open_console(at);
             click_row(&control<QListWidget>(*at.screen, "custom_lst"), 0);
         },
         5, 2},
        {"a click on a member who gets a web login",
         [](far_away& at) {
             at.its_register.connect().direct("delete from id_tbl");
             open_console(at);
             click_row(&control<QListWidget>(*at.screen, "custom_lst"), 0);
         },
         6, 2},
        {"bran_dlg", dialog("bran_dlg"), 0, 0},
        {"zip_dlg", dialog("zip_dlg"), 0, 0},
        {"search_dlg", dialog("search_dlg"), 0, 0},
        {"dues_search_dlg", dialog("dues_search_dlg"), 0, 0},
        {"dues_receipt_dlg", dialog("dues_receipt_dlg"), 0, 0},
        {"pers_receipt_dlg", dialog("pers_receipt_dlg"), 1, 1},
        {"mem_in_dlg", dialog("mem_in_dlg"), 1, 1},
        {"mem_ud_dlg", dialog("mem_ud_dlg"), 3, 2}, // the fee is that of the kind that the year has
        {"mem_del_dlg", dialog("mem_del_dlg"), 2, 1},
        {"dues_in_dlg", dialog("dues_in_dlg"), 2, 1},
        {"dues_ud_dlg", dialog("dues_ud_dlg"), 2, 1},
        {"dues_del_dlg", dialog("dues_del_dlg"), 1, 1},
        {"con_in_dlg", dialog("con_in_dlg"), 1, 1},
        {"con_ud_dlg", dialog("con_ud_dlg"), 2, 1},
        {"con_del_dlg", dialog("con_del_dlg"), 1, 1},
        {"comp_in_dlg", dialog("comp_in_dlg"), 0, 0},
        {"comp_ud_dlg", dialog("comp_ud_dlg"), 1, 1},
        {"comp_del_dlg", dialog("comp_del_dlg"), 1, 1},
        {"a registration",
         [](far_away& at) {
             new_member typed = a_new_member();
             typed.member.pers_no1 = QStringLiteral("900102");
             is_registered(at.c.db_conn, typed.member.pers_no());
             save_steps save{at.c.db_conn};
             store_member(save, typed, at.c.today());
             store_pledge(save, typed, at.c.today());
             store_workplace(save, typed, at.c.today());
         },
         7, 7},
        {"a change",
         [](far_away& at) {
             save_steps save{at.c.db_conn};
             update_member(save, at.c.local_conn, number, edited_columns(a_new_member().member, at.c.today()),
                           {}, {});
         },
         8, 8},
        {"a payment",
         [](far_away& at) {
             save_steps save{at.c.db_conn};
             add_payment(save, {number, "2026"}, "20", {"20261121", "", "10000", "1"}, at.c.today());
         },
         4, 3},
        {"a payment changed",
         saving([](save_steps& steps) { change_payment(steps, of_2026, "1", {}, "20261122"); }), 4, 3},
        {"a payment deleted", saving([](save_steps& steps) { delete_payment(steps, of_2026, "1"); }), 4, 3},
        {"a year added", saving([](save_steps& steps) {
             add_year(steps, {number, "2027"}, "20", "1", "20261122");
         }),
         2, 2},
        {"a year changed",
         saving([](save_steps& steps) { change_year(steps, of_2026, "20", "1", "20261122"); }), 4, 4},
        {"a year deleted", saving([](save_steps& steps) { delete_year(steps, of_2026); }), 2, 2},
        {"a pledge made", saving([](save_steps& steps) { add_pledge(steps, number, "1", "20261122"); }), 1,
         1},
        {"an instalment added", saving([](save_steps& steps) {
             add_instalment(steps, number, "20261122", {"20261122", "1"});
         }),
         3, 3},
        {"an instalment changed", saving([](save_steps& steps) {
             change_instalment(steps, {number, "20261122", "1"}, {"20261122", "1"}, "0");
         }),
         3, 3},
        {"an instalment deleted", saving([](save_steps& steps) {
             delete_instalment(steps, {number, "20261122", "1"});
         }),
         3, 3},
        {"a workplace added", saving([](save_steps& steps) {
             add_workplace(steps, number, a_new_member().workplace, "20261122");
         }),
         2, 2},
        {"a workplace changed", saving([](save_steps& steps) {
             change_workplace(steps, number, "1",
                              workplace_columns(number, a_new_member().workplace, "20261122"));
         }),
         2, 2},
        {"a workplace deleted", saving([](save_steps& steps) { delete_workplace(steps, number, "1"); }), 1,
         1},
        {"a member deleted", saving([](save_steps& steps) { delete_member(steps, number); }), 9, 9},
    };
    return all;
}

} // namespace

/// What an operator's act costs on a slow line.
class waits_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void an_act_sends_no_more_than_its_statements_data()
    {
        QTest::addColumn<std::size_t>("which");
        for (std::size_t i = 0; i < acts().size(); ++i)
            QTest::newRow(acts()[i].name) << i;
    }
    void an_act_sends_no_more_than_its_statements()
    {
        if (!is_at_hand(engine::postgresql))
            QSKIP("ORVO_TEST_POSTGRESQL names no server; scripts/with_postgresql.sh starts one");
        QFETCH(std::size_t, which);
        far_away at;
        QElapsedTimer clock;
        clock.start();
        acts()[which].run(at);
        if (qEnvironmentVariableIsSet("ORVO_LINE_DELAY"))
            std::printf("| %s | %d | %lld ms |\n", acts()[which].name, acts()[which].waits, clock.elapsed());
        QCOMPARE(at.proxy.statements(), acts()[which].statements);
        QCOMPARE(at.proxy.waits(), acts()[which].waits);
    }
};

ORVO_SCREEN_TESTS(waits_test)
#include "waits_test.moc"

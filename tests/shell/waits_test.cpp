#include "members/screens/insert_frm.h"
#include "members/screens/manager_main_frm.h"
#include "shell/openers.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/fake_desk.h"
#include "support/pausable_proxy.h"
#include "support/screens.h"
#include "support/tds_batch.h"
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

/// A client at the far end of a line, with a member who has one of everything. A proxy counts what goes over
/// it, or the tests' SQL Server.
struct far_away {
    explicit far_away(engine kind) : its_register{kind}
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
        if (proxy)
            proxy->delay_answers(std::chrono::milliseconds{qEnvironmentVariableIntValue("ORVO_LINE_DELAY")});
        else
            its_register.sql_server().take_batches();
    }

    /// Statements and waits since the beginning.
    std::pair<int, int> counted() const
    {
        if (proxy)
            return {proxy->statements(), proxy->waits()};
        QStringList batches = its_register.sql_server().take_batches();
        batches.removeAll(QStringLiteral("select 1")); // of a line that lay idle in a slow run
        int statements = 0;
        for (const QString& each : batches)
            statements += static_cast<int>(statements_of(each).size());
        return {statements, static_cast<int>(batches.size())};
    }

    void open_dialog(const char* name)
    {
        QTimer::singleShot(0, qApp,
                           [] { static_cast<QDialog*>(QApplication::activeModalWidget())->reject(); });
        all_openers().dialogs.at(QString::fromLatin1(name))(c, desk, nullptr);
    }

    static std::unique_ptr<pausable_proxy> proxy_of(const test_register& of)
    {
        const bool needs_one = of.address().kind == engine::postgresql;
        return needs_one ? std::make_unique<pausable_proxy>(of.address()) : nullptr;
    }

    test_register its_register;
    std::unique_ptr<pausable_proxy> proxy = proxy_of(its_register);
    scripted_prompts say;
    client c{its_register.folder(), proxy ? proxy->address() : its_register.address(), say, &test_clock};
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
             if (!at.proxy)
                 at.its_register.sql_server().take_batches(); // which that was one of
             open_console(at);
             click_row(&control<QListWidget>(*at.screen, "custom_lst"), 0);
         },
         6, 3},
        {"bran_dlg", dialog("bran_dlg"), 0, 0},
        {"zip_dlg", dialog("zip_dlg"), 0, 0},
        {"search_dlg", dialog("search_dlg"), 0, 0},
        {"dues_search_dlg", dialog("dues_search_dlg"), 0, 0},
        {"dues_receipt_dlg", dialog("dues_receipt_dlg"), 0, 0},
        {"pers_receipt_dlg", dialog("pers_receipt_dlg"), 1, 1},
        {"mem_in_dlg", dialog("mem_in_dlg"), 1, 1},
        {"mem_ud_dlg", dialog("mem_ud_dlg"), 3, 2}, // the fee is that of the kind that the year has
        {"mem_del_dlg", dialog("mem_del_dlg"), 2, 1},
        {"dues_in_dlg", dialog("dues_in_dlg"), 3, 1},
        {"dues_ud_dlg", dialog("dues_ud_dlg"), 2, 1},
        {"dues_del_dlg", dialog("dues_del_dlg"), 1, 1},
        {"con_in_dlg", dialog("con_in_dlg"), 1, 1},
        {"con_ud_dlg", dialog("con_ud_dlg"), 2, 1},
        {"con_del_dlg", dialog("con_del_dlg"), 1, 1},
        {"comp_in_dlg", dialog("comp_in_dlg"), 1, 1},
        {"comp_ud_dlg", dialog("comp_ud_dlg"), 1, 1},
        {"comp_del_dlg", dialog("comp_del_dlg"), 1, 1},
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
        for (const engine kind : {engine::postgresql, engine::sqlserver}) {
            far_away at{kind};
            QElapsedTimer clock;
            clock.start();
            acts()[which].run(at);
            if (qEnvironmentVariableIsSet("ORVO_LINE_DELAY") && at.proxy)
                std::printf("| %s | %d | %lld ms |\n", acts()[which].name, acts()[which].waits,
                            clock.elapsed());
            QCOMPARE(at.counted(), std::pair(acts()[which].statements, acts()[which].waits));
        }
    }
};

ORVO_SCREEN_TESTS(waits_test)
#include "waits_test.moc"

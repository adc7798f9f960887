#include "shell/code_refresh.h"
#include "shell/commands.h"
#include "shell/main_frm.h"
#include "shell/openers.h"
#include "support/builders.h"
#include "support/fake_desk.h"
#include "support/screens.h"
#include "support/test_register.h"
#include "ui/work_screen.h"

#include <QAction>
#include <QDialog>
#include <QMenu>
#include <QTest>

using namespace orvo;

namespace {

const std::map<QString, qint16> codes{
    {"insert_frm", screen_code::insert_frm}, {"manager_main_frm", screen_code::manager_main_frm},
    {"edu_frm", screen_code::edu_frm},       {"data_m_frm", screen_code::data_m_frm},
    {"frmSMSSend", screen_code::frmSMSSend}, {"sup_all_ud_dlg", screen_code::sup_all_ud_dlg}};

struct rights {
    qint16 administration = 1;
    qint16 education = 1;
    const char* branch = "0";
};

/// The main window whose targets are stubs. What they do is kept in `log`: "+name" opens, "-name" closes.
struct at_window {
    explicit at_window(const rights& of = {})
    {
        openers what = all_stubs();
        what.dialogs["login_dlg"] = [this, of](client& c, desk&, QWidget*) {
            log.append("+login_dlg");
            c.session_branch = of.branch;
            c.session_right1 = of.administration;
            c.session_right2 = of.education;
            c.session_ok = true;
        };
        window = std::make_unique<main_frm>(on.c, std::move(what));
        window->log_in_and_start();
        log.clear();
    }
    ~at_window() { window.reset(); }

    openers all_stubs()
    {
        openers all;
        for (const auto& [name, code] : codes)
            all.screens[name] = [this, name = name, code = code](client& c, desk& at,
                                                                 QWidget* over) -> work_screen* {
                log.append(u'+' + name);
                auto* made = new work_screen{name, code, c, at, over};
                QObject::connect(made, &QObject::destroyed, window.get(),
                                 [this, name] { log.append(u'-' + name); });
                return made;
            };
        for (const command& each : commands())
            if (!all.screens.contains(each.target))
                all.dialogs[each.target] = [this, name = each.target](client&, desk&, QWidget*) {
                    log.append(u'+' + name);
                };
        return all;
    }

    QAction& action(const char* name) { return control<QAction>(*window, name); }
    /// Starts a command as a click would, and lets what was queued happen.
    QStringList start(const char* name)
    {
        action(name).trigger();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return std::exchange(log, {});
    }
    QWidget& screen(const char* name) { return control<QWidget>(*window, name); }

    running_client on{engine::embedded};
    QStringList log;
    std::unique_ptr<main_frm> window;
};

} // namespace

class main_frm_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rights_withhold_commands()
    {
        const struct {
            bool logged_in;
            const char* branch;
            qint16 administration, education;
            const char* withheld;
        } sessions[] = {{false, "0", 1, 1, "Toolbar1(1) Toolbar1(3) Toolbar1(5)"},
                        {true, "0", 1, 1, "m_login"},
                        {true, "00", 1, 1, "m_login"},
                        {true, "7", 1, 1, "m_login m_other"},
                        {true, "7 A", 1, 1, "m_login m_other"},
                        {true, "0", 0, 1, "Toolbar1(1) m_login m_mg"},
                        {true, "0", 1, 0, "m_edu m_login"},
                        {true, "0", -1, 2, "m_login"}, // another number is a right too
                        {true, "10", 0, 0, "Toolbar1(1) m_edu m_login m_mg m_other"}};
        for (const auto& each : sessions) {
            session_variables session;
            session.session_ok = each.logged_in;
            session.session_branch = each.branch;
            session.session_right1 = each.administration;
            session.session_right2 = each.education;
            QStringList names = withheld_from(session);
            names.sort();
            QCOMPARE(names.join(u' '), QString{each.withheld});
        }
    }

    void what_is_withheld_cannot_be_reached_by_keys()
    {
        for (const qint16 right : {1, 0}) {
            at_window at{{right}};
            QCOMPARE(at.action("m_mg").isEnabled(), right == 1);
            QCOMPARE(at.action("Toolbar1(1)").isEnabled(), right == 1);
            bring_up(*at.window);
            QTest::keyClick(at.window.get(), Qt::Key_F, Qt::ControlModifier); // the way round the menu
            QCoreApplication::processEvents();
            QCOMPARE(at.log.size(), right);
        }
    }

    void what_is_withheld_opens_nothing_whatever_starts_it()
    {
        const QString of_administration = " m_m_search m_mg_dues m_t_date m_r_etc m_other Toolbar1(1)";
        const QString of_education = " m_edu_pers m_Sup m_eduapp m_center m_etc m_lic_app";
        const QString others = " m_unfinished m_edu_in m_lic m_SupCreate m_codes Toolbar1(3) Toolbar1(5)";
        const struct {
            rights of;
            QString withheld;
        } operators[] = {{{1, 1, "0"}, "m_login"},
                         {{1, 1, "7"}, "m_login m_other"},
                         {{1, 1, "7 A"}, "m_login m_other"},
                         {{0, 1, "0"}, "m_login" + of_administration},
                         {{1, 0, "0"}, "m_login" + of_education},
                         {{0, 0, "7"}, "m_login" + of_administration + of_education}};
        const auto refused = [](at_window& at, const auto& start) {
            QStringList names;
            for (const command& each : commands()) {
                at.on.c.current_screen = screen_code::none;
                start(each);
                QCoreApplication::processEvents();
                if (std::exchange(at.log, {}).isEmpty())
                    names.append(each.name);
            }
            names.sort();
            return names;
        };
        const auto sorted = [](const QString& names) {
            QStringList all = names.split(u' ');
            all.sort();
            return all;
        };
        for (const auto& [of, withheld] : operators) {
            at_window at{of};
            QCOMPARE(refused(at, [&](const command& each) { at.window->start(each); }), sorted(withheld));
            QCOMPARE(at.on.say.take_notes().size(), sorted(withheld).size());
            QCOMPARE(refused(at, [&](const command& each) { at.action(qPrintable(each.name)).trigger(); }),
                     sorted(withheld));
            const auto start_behind_the_login = [&](const command& each) {
                at.on.c.session_ok = false;
                at.window->start(each);
            };
            QCOMPARE(refused(at, start_behind_the_login),
                     sorted((of_administration + of_education + others).mid(1)));
        }
    }

    void submenus_stand_where_their_commands_do()
    {
        at_window at;
        const auto names = [&](const char* menu) {
            QStringList all;
            for (const QAction* each : at.action(menu).menu()->actions())
                all.append(each->objectName());
            return all.join(u' ');
        };
        QCOMPARE(names("m_operation"), QStringLiteral("m_edu_in m_lic m_SupCreate m_codes"));
        QCOMPARE(names("m_mg"), QStringLiteral("m_m_search m_mg_dues m_receipt m_other"));
        QCOMPARE(names("m_receipt"), QStringLiteral("m_t_date m_r_etc"));
        QCOMPARE(names("m_edu"), QStringLiteral("m_edu_pers m_Sup m_eduapp m_edu_update m_lic_app"));
        QCOMPARE(names("m_edu_update"), QStringLiteral("m_center m_etc"));
    }

    void the_wait_box_stays_behind_its_screen_and_no_longer()
    {
        at_window at;
        at.start("Toolbar1(1)");
        const QWidget& box = at.screen("msg_frm");
        QVERIFY(box.isVisible());
        QCOMPARE(at.screen("workspace").childAt(box.geometry().center())->objectName(),
                 QStringLiteral("insert_frm"));
        at.start("m_m_search"); // nobody waits for a screen now
        QVERIFY(!box.isVisible());
        at.start("Toolbar1(1)");
        at.window->showNormal();
        at.window->resize(900, 600);
        QTRY_VERIFY(!box.isVisible());
    }

    void a_screen_takes_the_place_of_the_open_one()
    {
        at_window at;
        QCOMPARE(at.on.c.current_screen, screen_code::none);
        QCOMPARE(at.start("Toolbar1(1)"), QStringList{"+insert_frm"});
        QCOMPARE(at.on.c.current_screen, screen_code::insert_frm);
        QCOMPARE(at.start("m_edu_in"), (QStringList{"+edu_frm", "-insert_frm"}));
        QCOMPARE(at.start("m_edu_in"), (QStringList{"+edu_frm", "-edu_frm"})); // the same anew
        QVERIFY(at.screen("edu_frm").isVisible());
        QCOMPARE(at.screen("edu_frm").size(), at.screen("workspace").size());
        QCOMPARE(at.start("Toolbar1(5)"), (QStringList{"+frmSMSSend", "-edu_frm"}));
        QStringList log = at.start("m_edu_pers"); // a search leaves no screen
        log.sort();
        QCOMPARE(log, (QStringList{"+edu_pers_search_dlg", "-frmSMSSend"}));
    }

    void fees_are_brought_in_line_while_the_operator_rests()
    {
        running_client on{engine::embedded};
        client& c = on.c;
        a_row{"money_member"}.with("code_member", 20).with("mem_dues", 40'000).store_in(c.db_conn);
        c.mirrors_behind.insert("money_member");
        const auto fee = [&c] {
            return c.local_conn.number("select sum(mem_dues) as fee from money_member");
        };
        using namespace std::chrono_literals;
        QWidget window;
        QDialog question;
        question.setModal(true);
        auto refresh = std::make_unique<code_refresh>(c, code_refresh::pace{0ms, 1ms, 10ms});
        QTest::qWait(50);
        QCOMPARE(fee(), 0); // nobody has logged in yet
        question.show();
        c.session_ok = true;
        QTest::qWait(50);
        QCOMPARE(fee(), 0);
        refresh = std::make_unique<code_refresh>(c, code_refresh::pace{1500ms, 1ms, 10ms});
        question.hide();
        QTest::keyClick(&window, Qt::Key_A);
        QTest::qWait(200);
        QCOMPARE(fee(), 0); // who types is not disturbed
        QTRY_COMPARE(fee(), 40'000);
        QVERIFY(c.mirrors_behind.empty());
        c.db_conn.write("update money_member set mem_dues=50000");
        QTRY_COMPARE(fee(), 50'000); // in the next round
        QVERIFY(on.say.take_texts().isEmpty());
    }

    void codes_are_fetched_when_wanted()
    {
        running_client on{engine::embedded};
        a_row{"money_member"}.with("code_member", 20).store_in(on.c.db_conn);
        a_row{"school"}.with("code_school", 20).store_in(on.c.db_conn);
        const auto fetch = [&] {
            fake_desk desk;
            all_openers().dialogs.at("fetch_codes")(on.c, desk, nullptr);
            return on.say.take_texts().join(u'|');
        };
        QCOMPARE(fetch(), "코드표를 새로 받았습니다.\n바뀐 코드표: 학교, 회원구분과 회비\n\n"
                          "열려 있는 화면의 목록은 그 화면을 다시 열면 바뀝니다.");
        QCOMPARE(fetch(), "코드표가 서버와 같습니다. 바뀐 것이 없습니다.");
    }

    void codes_of_dialogs_stop_the_dispatch()
    {
        at_window at;
        at.start("Toolbar1(1)");
        for (const qint16 code : {8, 9, 16, -1}) {
            at.on.c.current_screen = code;
            for (const char* name : {"Toolbar1(1)", "Toolbar1(3)", "Toolbar1(5)", "m_edu_in", "m_Sup",
                                     "m_m_search", "m_edu_pers"})
                QCOMPARE(at.start(name), QStringList{});
            QCOMPARE(at.start("m_lic"), QStringList{"+lic_ud_dlg"}); // a dialog asks for no screen's place
            QVERIFY(at.screen("insert_frm").isVisible());
            QCOMPARE(at.on.c.current_screen, code);
        }
        at.on.c.current_screen = screen_code::insert_frm;
        QCOMPARE(at.start("m_edu_in"), (QStringList{"+edu_frm", "-insert_frm"}));
    }
};

ORVO_SCREEN_TESTS(main_frm_test)
#include "main_frm_test.moc"

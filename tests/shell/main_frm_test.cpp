#include "shell/commands.h"
#include "shell/main_frm.h"
#include "shell/openers.h"
#include "support/builders.h"
#include "support/screens.h"
#include "support/test_register.h"
#include "ui/work_screen.h"

#include "hands/hands.h"

#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QTest>
#include <QToolBar>

using namespace orvo;

namespace {

const std::map<QString, qint16> codes{
    {"insert_frm", screen_code::insert_frm}, {"manager_main_frm", screen_code::manager_main_frm},
    {"edu_frm", screen_code::edu_frm},       {"data_m_frm", screen_code::data_m_frm},
    {"frmSMSSend", screen_code::frmSMSSend}, {"sup_all_ud_dlg", screen_code::sup_all_ud_dlg}};

struct rights {
    const char* branch = "0";
    qint16 administration = 1;
    qint16 education = 1;
};

/// The main window whose targets are stubs. What they do is kept in `log`: "+name" opens, "-name" closes.
struct at_window {
    explicit at_window(rights given = {}, openers what = {})
    {
        a_row{"branch_code", database::local}
            .with("code_bran", 7)
            .with("branch_name", "부산지부")
            .store_in(on.c.local_conn);
        if (what.dialogs.empty())
            what = all_stubs();
        what.dialogs["login_dlg"] = [given](client& c, desk&, QWidget*) {
            c.session_name = "이정은";
            c.session_branch = given.branch;
            c.session_right1 = given.administration;
            c.session_right2 = given.education;
            c.session_ok = true;
        };
        window = std::make_unique<main_frm>(on.c, std::move(what));
        window->log_in_and_start();
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

/// Names and captions of a menu from top to bottom; what lies in a submenu stands in brackets.
QString listed(const QList<QAction*>& actions)
{
    QStringList all;
    for (const QAction* each : actions)
        all.append(each->isSeparator() ? QStringLiteral("|")
                   : each->menu()      ? each->objectName() + u'=' + each->text() + u'[' +
                                        listed(each->menu()->actions()) + u']'
                                  : each->objectName() + u'=' + each->text());
    return all.join(u' ');
}

} // namespace

class main_frm_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void menus_hold_all_commands_in_order();
    void nothing_is_offered_that_cannot_be_opened();
    void rights_take_commands_away();
    void the_status_bar_tells_who_works_where();
    void a_screen_takes_the_place_of_the_open_one();
    void a_search_closes_the_screen_and_asks();
    void codes_of_dialogs_stop_the_dispatch();
    void the_wait_box_stays_behind_the_screen();
    void a_screen_that_fails_to_open_leaves_no_wait_box();
    void closing_the_window_closes_all();
};

void main_frm_test::menus_hold_all_commands_in_order()
{
    at_window at;
    QCOMPARE(listed(at.window->menuBar()->actions()),
             QStringLiteral(
                 "m_log=관리자 인증(&L)[m_login=로그인] "
                 "m_operation=환경설정(&O)[m_edu_in=교육내용 입력 m_lic=자격증관리 m_SupCreate=위생 교육 "
                 "대상 생성] "
                 "m_mg=관리부(&M)[m_m_search=일반검색 m_mg_dues=회비납입여부검색 "
                 "m_receipt=영수증 출력[m_t_date=기간 검색 m_r_etc=기타 검색] m_other=오르보소식섭외명단] "
                 "m_edu=교육부(&E)[m_edu_pers=일반검색 m_Sup=위생교육관리 m_eduapp=교육신청 명단 "
                 "m_edu_update=교육과정 이수여부 일괄 수정[m_center=내부교육 수정 m_etc=기타교육(외부교육)] "
                 "m_lic_app=자격증발급]"));
    QCOMPARE(listed(control<QToolBar>(*at.window, "Toolbar1").actions()),
             QStringLiteral("Toolbar1(1)=회원관리 | Toolbar1(3)=통계 | Toolbar1(5)=발송"));
    for (const command& each : commands())
        if (each.name != "m_login")
            QVERIFY2(at.start(qPrintable(each.name)).contains(u'+' + each.target), qPrintable(each.name));
}

void main_frm_test::nothing_is_offered_that_cannot_be_opened()
{
    openers few;
    for (const char* name : {"search_dlg", "other_edu_dlg"})
        few.dialogs[name] = [](client&, desk&, QWidget*) {};
    at_window at{{}, few};
    QCOMPARE(listed(at.window->menuBar()->actions()),
             QStringLiteral(
                 "m_log=관리자 인증(&L)[m_login=로그인] m_mg=관리부(&M)[m_m_search=일반검색] "
                 "m_edu=교육부(&E)[m_edu_update=교육과정 이수여부 일괄 수정[m_etc=기타교육(외부교육)]]"));
    QVERIFY(!at.window->findChild<QToolBar*>());
}

void main_frm_test::rights_take_commands_away()
{
    const auto offered = [](at_window& at) {
        QString all;
        for (const char* name : {"m_login", "m_operation", "m_mg", "m_other", "m_edu", "Toolbar1(1)",
                                 "Toolbar1(3)", "Toolbar1(5)"})
            all += at.action(name).isEnabled() ? u'1' : u'0';
        return all;
    };
    at_window head;
    QCOMPARE(offered(head), QStringLiteral("01111111"));
    at_window branch{{.branch = "07"}};
    QCOMPARE(offered(branch), QStringLiteral("01101111"));
    at_window nothing{{.administration = 0, .education = 0}};
    QCOMPARE(offered(nothing).remove(3, 1), QStringLiteral("0100011"));
    for (at_window* each : {&head, &nothing}) {
        bring_up(*each->window);
        QTest::keyClick(each->window.get(), Qt::Key_F, Qt::ControlModifier); // the way round the menu
        QCoreApplication::processEvents();
        QCOMPARE(each->log.size(), each == &head ? 1 : 0);
    }
}

void main_frm_test::the_status_bar_tells_who_works_where()
{
    at_window at{{.branch = "7"}};
    QCOMPARE(shown_by(at.screen("operator_lbl")), QStringLiteral("이정은"));
    QCOMPARE(shown_by(at.screen("branch_lbl")), QStringLiteral("부산지부"));
    QCOMPARE(shown_by(at.screen("server_lbl")), QStringLiteral("서버 연결됨"));
    at.on.c.db_conn.close();
    QTRY_COMPARE(shown_by(at.screen("server_lbl")), QStringLiteral("서버 연결 끊김"));
}

void main_frm_test::a_screen_takes_the_place_of_the_open_one()
{
    at_window at;
    QCOMPARE(at.on.c.current_screen, screen_code::none);
    QCOMPARE(at.start("Toolbar1(1)"), QStringList{"+insert_frm"});
    QCOMPARE(at.on.c.current_screen, screen_code::insert_frm);
    QCOMPARE(at.start("m_edu_in"), (QStringList{"+edu_frm", "-insert_frm"}));
    QCOMPARE(at.start("m_edu_in"), (QStringList{"+edu_frm", "-edu_frm"})); // the same anew
    QVERIFY(at.screen("edu_frm").isVisible());
    QCOMPARE(at.screen("edu_frm").size(), at.screen("workspace").size());
    at.window->close_screen();
    QVERIFY(!at.screen("edu_frm").isVisible());
    at.window->close_screen(); // harmless
    QCOMPARE(at.start("Toolbar1(5)"), (QStringList{"+frmSMSSend", "-edu_frm"}));
    at.window->show(screen_code::manager_main_frm);
    QCOMPARE(at.log, QStringList{"+manager_main_frm"});
}

void main_frm_test::a_search_closes_the_screen_and_asks()
{
    at_window at;
    QCOMPARE(at.start("m_m_search"), QStringList{"+search_dlg"});
    at.start("Toolbar1(1)");
    QStringList log = at.start("m_edu_pers");
    log.sort();
    QCOMPARE(log, (QStringList{"+edu_pers_search_dlg", "-insert_frm"}));
    QVERIFY(!at.screen("msg_frm").isVisible()); // the one of the screen before
}

void main_frm_test::codes_of_dialogs_stop_the_dispatch()
{
    at_window at;
    at.start("Toolbar1(1)");
    for (const qint16 code : {8, 9, 16, -1}) {
        at.on.c.current_screen = code;
        for (const char* name :
             {"Toolbar1(1)", "Toolbar1(3)", "Toolbar1(5)", "m_edu_in", "m_Sup", "m_m_search", "m_edu_pers"})
            QCOMPARE(at.start(name), QStringList{});
        QCOMPARE(at.start("m_lic"), QStringList{"+lic_ud_dlg"}); // a dialog asks for no screen's place
        QVERIFY(at.screen("insert_frm").isVisible());
        QCOMPARE(at.on.c.current_screen, code);
    }
    at.on.c.current_screen = screen_code::insert_frm;
    QCOMPARE(at.start("m_edu_in"), (QStringList{"+edu_frm", "-insert_frm"}));
}

void main_frm_test::the_wait_box_stays_behind_the_screen()
{
    at_window at;
    at.start("Toolbar1(1)");
    QWidget& box = at.screen("msg_frm");
    QVERIFY(box.isVisible());
    QVERIFY(at.screen("workspace").childAt(box.geometry().center())->objectName() == "insert_frm");
    at.window->showNormal();
    at.window->resize(900, 600);
    QTRY_VERIFY(!box.isVisible());
    QTRY_COMPARE(at.screen("insert_frm").size(), at.screen("workspace").size());
}

void main_frm_test::a_screen_that_fails_to_open_leaves_no_wait_box()
{
    openers failing;
    failing.screens["insert_frm"] = [](client&, desk&, QWidget*) -> work_screen* {
        throw db_failure{failure_kind::other, "words"};
    };
    failing.dialogs["search_dlg"] = [](client&, desk&, QWidget*) {};
    at_window at{{}, failing};
    at.on.say.will_answer("작업을 마치지 못했습니다.\n\nwords", answer::second);
    at.start("Toolbar1(1)");
    QVERIFY(!at.screen("msg_frm").isVisible()); // nobody waits for what does not come
}

void main_frm_test::closing_the_window_closes_all()
{
    at_window at;
    at.start("Toolbar1(1)");
    QDialog above;
    above.show();
    at.window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!at.window->isVisible() && !above.isVisible());
    QCOMPARE(at.log, QStringList{"-insert_frm"});
}

ORVO_SCREEN_TESTS(main_frm_test)
#include "main_frm_test.moc"

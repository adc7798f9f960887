#include "shell/main_frm.h"

#include "client/client.h"
#include "client/workstation.h"
#include "shell/commands.h"
#include "shell/login.h"
#include "shell/workspace.h"
#include "ui/failures.h"
#include "ui/icons.h"
#include "ui/window_prompts.h"
#include "ui/work_screen.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScopeGuard>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

#include <algorithm>

namespace orvo {

using failures::guard;
using failures::policy;

main_frm::main_frm(client& c, openers what)
    : c_{c}, openers_{std::move(what)}, workspace_{new workspace{this}}, operator_lbl{new QLabel},
      branch_lbl{new QLabel}, engine_lbl{new QLabel}, server_lbl{new QLabel}
{
    setObjectName(QStringLiteral("main_frm"));
    setWindowTitle(program_title);
    setCentralWidget(workspace_);
    resize(1280, 740);
    build_menus();
    build_status_bar();
    apply_rights();
}

main_frm::~main_frm() = default;

/// Made with the first command that lies in it, so that a submenu stands where its commands do and none is
/// empty.
QMenu* main_frm::menu_of(const QString& name)
{
    QMenu*& made = menus_[name];
    if (made)
        return made;
    const menu_head& head = *std::ranges::find(menu_heads(), name, &menu_head::name);
    made = head.parent.isEmpty() ? menuBar()->addMenu(head.caption)
                                 : menu_of(head.parent)->addMenu(head.caption);
    made->setObjectName(name);
    made->menuAction()->setObjectName(name);
    return made;
}

void main_frm::make_toolbar()
{
    Toolbar1 = addToolBar(QStringLiteral("Toolbar1"));
    Toolbar1->setObjectName(QStringLiteral("Toolbar1"));
    Toolbar1->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    Toolbar1->setMovable(false);
}

void main_frm::build_menus()
{
    for (const command& each : commands()) {
        if (!openers_.can_open(each.target))
            continue;
        const bool is_button = each.menu == QLatin1String("Toolbar1");
        auto* action = new QAction{each.caption, this};
        action->setObjectName(each.name);
        connect(action, &QAction::triggered, this,
                [this, &each] { guard(c_.say, policy::report, [this, &each] { start(each); }); });
        if (is_button && Toolbar1)
            Toolbar1->addSeparator();
        else if (is_button)
            make_toolbar();
        is_button ? Toolbar1->addAction(action) : menu_of(each.menu)->addAction(action);
        actions_[each.name] = action;
    }
    if (actions_.contains(QStringLiteral("m_m_search")))
        actions_[QStringLiteral("m_m_search")]->setShortcut(QKeySequence::Find);
}

void main_frm::build_status_bar()
{
    operator_lbl->setObjectName(QStringLiteral("operator_lbl"));
    branch_lbl->setObjectName(QStringLiteral("branch_lbl"));
    engine_lbl->setObjectName(QStringLiteral("engine_lbl"));
    server_lbl->setObjectName(QStringLiteral("server_lbl"));
    for (QLabel* each : {operator_lbl, branch_lbl, engine_lbl, server_lbl}) {
        each->setContentsMargins(8, 0, 8, 0);
        statusBar()->addPermanentWidget(each);
    }
    engine_lbl->setText(in_words(c_.server));
    auto* look = new QTimer{this};
    connect(look, &QTimer::timeout, this, [this] { show_server_state(); });
    look->start(1000);
}

void main_frm::show_server_state()
{
    const bool up = c_.db_conn.is_up();
    server_lbl->setText(up ? QStringLiteral("서버 연결됨") : QStringLiteral("서버 연결 끊김"));
    server_lbl->setForegroundRole(up ? QPalette::WindowText : QPalette::BrightText);
}

void main_frm::show_operator()
{
    operator_lbl->setText(c_.session_name);
    branch_lbl->setText(session_branch_name(c_));
    show_server_state();
}

void main_frm::apply_rights()
{
    const QStringList withheld = withheld_from(c_);
    for (const command& each : commands())
        if (const auto action = actions_.find(each.name); action != actions_.end())
            action->second->setEnabled(may_start(c_, each));
    for (const auto& [name, menu] : menus_)
        menu->menuAction()->setEnabled(!withheld.contains(name));
    const bool can_search = actions_.contains(QStringLiteral("m_m_search")) && c_.session_right1 != 0;
    workspace_->set_hint(!c_.session_ok ? QString{}
                         : can_search ? QStringLiteral("[관리부]-[일반검색] 또는 Ctrl+F로 회원을 찾으십시오.")
                                      : QStringLiteral("메뉴에서 할 일을 고르십시오."));
}

bool main_frm::log_in_and_start()
{
    c_.current_screen = screen_code::none;
    const bool fits = QGuiApplication::primaryScreen()->availableGeometry().width() >= width();
    fits ? showMaximized() : QMainWindow::show();
    openers_.dialogs.at(QStringLiteral("login_dlg"))(c_, *this, this);
    QCoreApplication::processEvents();
    if (!c_.session_ok)
        return false;
    guard(c_.say, policy::report, [this] { take_over_workstation(c_); });
    // Once, and not again at a later login: rights last as long as the program runs.
    apply_rights();
    guard(c_.say, policy::report, [this] { show_operator(); });
    return true;
}

void main_frm::start(const command& what)
{
    // A grey menu holds no more than the mouse: tools for the blind, and others, reach the items in it.
    if (!may_start(c_, what))
        return c_.say.note(QStringLiteral("이 명령을 쓸 권한이 없습니다."));
    switch (what.kind) {
    case command_kind::screen:
        return open_screen(what.target);
    case command_kind::screen_search:
        return ask_after_closing(what.target);
    case command_kind::dialog:
        return openers_.dialogs.at(what.target)(c_, *this, this);
    }
}

void main_frm::open_screen(const QString& target)
{
    if (!dispatch_knows(c_.current_screen))
        return;
    open_in_place(target);
}

void main_frm::open_in_place(const QString& target)
{
    workspace_->close_screen();
    workspace_->show_wait_box();
    auto failed =
        qScopeGuard([this] { workspace_->close_screen(); }); // nobody is to wait for what does not come
    workspace_->open(openers_.screens.at(target)(c_, *this, workspace_));
    failed.dismiss();
}

void main_frm::ask_after_closing(const QString& dialog_name)
{
    if (!dispatch_knows(c_.current_screen))
        return;
    ask(dialog_name);
}

void main_frm::show(qint16 code)
{
    open_in_place(screen_name(code));
}

void main_frm::ask(const QString& dialog_name)
{
    workspace_->close_screen();
    if (!std::exchange(asked_for_, dialog_name).isEmpty())
        return; // a second call before the first was answered: one dialog is enough
    // Queued: the handler that asks belongs to the screen that has just been closed.
    QTimer::singleShot(0, this, [this] {
        guard(c_.say, policy::report,
              [&] { openers_.dialogs.at(std::exchange(asked_for_, {}))(c_, *this, this); });
    });
}

void main_frm::open_above(const QString& dialog_name, QWidget* over)
{
    openers_.dialogs.at(dialog_name)(c_, *this, over);
}

void main_frm::closeEvent(QCloseEvent* event)
{
    close_all_windows();
    event->accept();
}

/// Unloads what stands open, the last first. Errors on the way out are nobody's concern any more.
void main_frm::close_all_windows()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (auto each = windows.rbegin(); each != windows.rend(); ++each)
        if (*each != this && (*each)->isWindow() && (*each)->isVisible())
            (*each)->close();
    workspace_->close_screen();
}

} // namespace orvo

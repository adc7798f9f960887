#pragma once

#include "shell/openers.h"
#include "ui/desk.h"

#include <QMainWindow>

#include <map>

class QAction;
class QLabel;
class QMenu;
class QToolBar;

namespace orvo {

class workspace;
struct command;

/// The main window: menus, toolbar, the one open screen, and the line that tells who works where.
/// The desk is its first base: screens, which go with the window's other children, still find it to leave.
class main_frm : public desk, public QMainWindow {
public:
    main_frm(client& c, openers what);
    ~main_frm() override;

    /// The load sequence behind the connections: shows the window and logs the operator in. False where the
    /// operator did not log in: the program is to end.
    bool log_in_and_start();

    void show(qint16 code) override;
    void ask(const QString& dialog_name) override;
    void open_above(const QString& dialog_name, QWidget* over) override;

    /// Starts a command as its menu item or button does.
    void start(const command& what);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    client& c_;
    openers openers_;
    workspace* workspace_;
    QToolBar* Toolbar1 = nullptr;
    std::map<QString, QMenu*> menus_;
    std::map<QString, QAction*> actions_;
    QString asked_for_; ///< the dialog that is about to open; empty for none
    QLabel *operator_lbl, *branch_lbl, *engine_lbl, *server_lbl;

    QMenu* menu_of(const QString& name);
    void make_toolbar();
    void build_menus();
    void build_status_bar();
    void apply_rights();
    void show_operator();
    void show_server_state();
    void open_screen(const QString& target);
    void open_in_place(const QString& target);
    void ask_after_closing(const QString& dialog_name);
    void close_all_windows();
};

} // namespace orvo

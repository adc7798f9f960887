#pragma once

#include "client/session.h"

#include <QString>

#include <vector>

namespace orvo {

enum class command_kind {
    screen,        ///< takes the place of the open screen
    screen_search, ///< closes the open screen and asks; what is found opens a screen
    dialog         ///< stands above whatever is open
};

/// A command of the main window: the name of its menu item or toolbar button, and what it opens.
struct command {
    QString name;
    QString caption;
    QString menu; ///< the name of the menu that holds it; "Toolbar1" for a button
    command_kind kind;
    QString target;
};

struct menu_head {
    QString name;
    QString caption;
    QString parent; ///< empty: in the menu bar
};

/// The menus from left to right, heads before what they hold.
const std::vector<menu_head>& menu_heads();
/// All commands in the order in which they stand in their menus.
const std::vector<command>& commands();

/// Menus, items and buttons (by name) that an operator may not start.
QStringList withheld_from(const session_variables& session);

/// Whether an operator may start a command, whatever it is started by: neither it nor a menu around it is
/// withheld, and before the login there is nothing but the login.
bool may_start(const session_variables& session, const command& what);

/// Whether a screen command can close the screen of that code and go on. Codes 8 and 9 are those of dialogs,
/// for which the dispatch has no row: after one of them screen commands stay without effect until a screen
/// sets the code anew, so that no half-entered credit line is closed under the operator's hands.
bool dispatch_knows(qint16 current_screen);

} // namespace orvo

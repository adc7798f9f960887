#pragma once

#include <QString>

#include <functional>
#include <map>

class QWidget;

namespace orvo {

class client;
class desk;
class work_screen;

/// What can be opened, by name. A command whose target is missing here is not offered.
struct openers {
    using make_screen = std::function<work_screen*(client&, desk&, QWidget* over)>;
    using run_dialog = std::function<void(client&, desk&, QWidget* over)>;

    std::map<QString, make_screen> screens;
    std::map<QString, run_dialog> dialogs;

    bool can_open(const QString& name) const { return screens.contains(name) || dialogs.contains(name); }
};

/// All screens and dialogs of the program.
openers all_openers();

/// The name of the screen that a code stands for; empty for a code that no screen has.
QString screen_name(qint16 code);

} // namespace orvo

#pragma once

#include <QString>

#include <map>

class QWidget;

namespace orvo {

class member_panels;
class pick_target;

/// Codes of the screens, as `current_screen` holds them.
namespace screen_code {
inline constexpr qint16 none = 0;
inline constexpr qint16 insert_frm = 1;
inline constexpr qint16 manager_main_frm = 2;
inline constexpr qint16 comp_in_dlg = 3;
inline constexpr qint16 comp_ud_dlg = 4;
inline constexpr qint16 edu_frm = 5;
inline constexpr qint16 data_m_frm = 6;
inline constexpr qint16 frmSMSSend = 10;
inline constexpr qint16 sup_all_ud_dlg = 15;
} // namespace screen_code

/// By which a screen reaches the others without knowing them. The main window is the desk.
class desk {
public:
    virtual ~desk() = default;
    /// Opens the screen of that code in place of the one that is open, behind the wait box.
    virtual void show(qint16 code) = 0;
    /// Closes the open screen, if any, and opens the named dialog above the empty window.
    virtual void ask(const QString& dialog_name) = 0;
    /// Opens the named dialog above `over`, which stays open; returns when the dialog is closed.
    virtual void open_above(const QString& dialog_name, QWidget* over) = 0;

    /// Who takes what a picker brings for that code; null where nobody does.
    pick_target* target(qint16 code) const
    {
        const auto found = targets_.find(code);
        return found == targets_.end() ? nullptr : found->second;
    }
    void enter(qint16 code, pick_target* who) { targets_[code] = who; }
    /// A screen that reopens itself has entered anew by the time its former self leaves.
    void leave(qint16 code, const pick_target* who)
    {
        if (target(code) == who)
            targets_.erase(code);
    }

    /// The panels of the open member; null where the console is not open.
    member_panels* panels() const { return panels_; }
    void enter(member_panels* who) { panels_ = who; }
    void leave(const member_panels* who)
    {
        if (panels_ == who)
            panels_ = nullptr;
    }

private:
    std::map<qint16, pick_target*> targets_;
    member_panels* panels_ = nullptr;
};

} // namespace orvo

#pragma once

#include <QString>

class QWidget;

namespace orvo {

/// Codes of the screens, as `current_screen` holds them.
namespace screen_code {
inline constexpr qint16 none = 0;
inline constexpr qint16 insert_frm = 1;
inline constexpr qint16 manager_main_frm = 2;
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
};

} // namespace orvo

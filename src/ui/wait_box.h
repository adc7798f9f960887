#pragma once

#include <QFrame>

namespace orvo {

/// The shared wait box. Whoever shows it goes on with the slow work and never closes it: the screen that
/// opens covers it, and the main window takes it away when it is resized.
class msg_frm : public QFrame {
public:
    explicit msg_frm(QWidget* over);

    /// Shows the box in the middle of what it stands over, drawn before this returns.
    void show_now();
};

} // namespace orvo

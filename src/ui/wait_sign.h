#pragma once

#include "ui/input_gate.h"

#include <QFrame>

class QLabel;
class QPushButton;

namespace orvo {

/// A small box over the window in use, with a button that ends what is waited for. While it stands, nothing
/// else is heard. It goes by itself when the event that waited is over.
class wait_sign : public QFrame {
public:
    explicit wait_sign(QWidget* over);

    /// False where the operator has had enough; `can_end` tells whether he is offered the button.
    bool show_wait(const QString& text, bool can_end);

private:
    QLabel* text_;
    QPushButton* cancel_;
    bool ended_ = false;
    input_gate gate_;
};

} // namespace orvo

#pragma once

#include "db/connection.h"
#include "ui/wait_sign.h"

#include <QElapsedTimer>

#include <memory>

namespace orvo {

/// Shows how far something is that takes over a second, over the window that began it, and lets the operator
/// end it by Esc or the button.
class receipt_progress : public progress {
public:
    /// `all` is the number to be reached; 0 where it is not known.
    receipt_progress(QWidget* over, QString text, qint64 all = 0);

    bool go_on(qint64 so_far) override;

private:
    QWidget* over_;
    QString text_;
    qint64 all_;
    QElapsedTimer running_;
    std::unique_ptr<wait_sign> sign_;
};

} // namespace orvo

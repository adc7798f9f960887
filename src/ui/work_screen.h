#pragma once

#include "client/client.h"
#include "ui/desk.h"
#include "ui/failures.h"

#include <QWidget>

class QAbstractButton;

namespace orvo {

/// What fills the main window: one at a time. Sets `current_screen` when it opens, and leaves it when it
/// closes: the code tells which screen was the last.
class work_screen : public QWidget {
public:
    work_screen(const QString& name, qint16 code, client& c, desk& at, QWidget* over)
        : QWidget{over}, c_{c}, desk_{at}
    {
        setObjectName(name);
        c_.current_screen = code;
    }

protected:
    client& c_;
    desk& desk_;

    void on_click(QAbstractButton* button, std::function<void()> handler,
                  failures::policy how = failures::policy::report)
    {
        failures::on_click(button, c_.say, how, std::move(handler));
    }
    void guard(const std::function<void()>& handler, failures::policy how = failures::policy::report)
    {
        failures::guard(c_.say, how, handler);
    }
};

} // namespace orvo

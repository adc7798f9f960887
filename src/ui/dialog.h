#pragma once

#include "client/client.h"
#include "ui/failures.h"
#include "ui/form.h"

#include <QDialog>
#include <QLineEdit>

namespace orvo {

/// What all modal dialogs are made of: the program's title, Esc closes, handlers under a policy.
class dialog : public QDialog {
public:
    dialog(const QString& name, client& c, QWidget* over);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    client& c_;

    void lay_out(QLayout* content);
    void on_click(QAbstractButton* button, std::function<void()> handler,
                  failures::policy how = failures::policy::report);
    /// Enter in a field, under the same policies.
    void on_enter(QLineEdit* field, std::function<void()> handler,
                  failures::policy how = failures::policy::report);
    /// Enter in that widget is its own affair, and not the main button's.
    void keep_enter(QWidget* field) { field->installEventFilter(this); }
    /// Shows the refusal and leads to the field that it is about.
    void refuse(const message& why, QWidget* field);

private:
    bool enter_is_kept_ =
        false; ///< by the field it was pressed in, wherever the focus is when it comes up here
};

} // namespace orvo

#pragma once

#include "client/client.h"
#include "ui/failures.h"
#include "ui/form.h"

#include <QDialog>

#include <vector>

namespace orvo {

/// What all modal dialogs are made of: the program's title, Esc closes, handlers under a policy.
class dialog : public QDialog {
public:
    dialog(const QString& name, client& c, QWidget* over);

protected:
    void keyPressEvent(QKeyEvent* event) override;

    client& c_;

    void lay_out(QLayout* content);
    void on_click(QAbstractButton* button, std::function<void()> handler,
                  failures::policy how = failures::policy::report);
    /// Enter in a field, under the same policies.
    void on_enter(QLineEdit* field, std::function<void()> handler,
                  failures::policy how = failures::policy::report);
    /// Enter in that widget is its own affair, and not the main button's.
    void keep_enter(QWidget* field) { fields_with_enter_.push_back(field); }
    /// Shows the refusal and leads to the field that it is about.
    void refuse(const message& why, QWidget* field);

private:
    std::vector<QWidget*> fields_with_enter_;
};

} // namespace orvo

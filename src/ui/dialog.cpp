#include "ui/dialog.h"

#include "ui/window_prompts.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>

namespace orvo {

namespace {

bool is_enter(const QKeyEvent* event)
{
    return event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
}

} // namespace

dialog::dialog(const QString& name, client& c, QWidget* over) : QDialog{over}, c_{c}
{
    setObjectName(name);
    setWindowTitle(program_title);
}

void dialog::lay_out(QLayout* content)
{
    auto* box = new QVBoxLayout{this};
    box->setContentsMargins(rhythm * 2, rhythm * 2, rhythm * 2, rhythm * 2);
    box->addLayout(content);
}

void dialog::on_click(QAbstractButton* button, std::function<void()> handler, failures::policy how)
{
    failures::on_click(button, c_.say, how, std::move(handler));
}

void dialog::on_enter(QLineEdit* field, std::function<void()> handler, failures::policy how)
{
    keep_enter(field);
    connect(field, &QLineEdit::returnPressed, this,
            [this, how, handler = std::move(handler)] { failures::guard(c_.say, how, handler); });
}

bool dialog::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && is_enter(static_cast<QKeyEvent*>(event)))
        enter_is_kept_ = true;
    return false;
}

void dialog::keyPressEvent(QKeyEvent* event)
{
    if (is_enter(event) && std::exchange(enter_is_kept_, false))
        return;
    // The button that has the focus, before the main one.
    if (auto* button = dynamic_cast<QPushButton*>(focusWidget()); button && is_enter(event))
        return button->click();
    QDialog::keyPressEvent(event);
}

void dialog::refuse(const message& why, QWidget* field)
{
    c_.say.tell(why);
    field->setFocus(Qt::OtherFocusReason);
}

} // namespace orvo

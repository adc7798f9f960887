#include "ui/enter_walk.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

namespace orvo {

enter_walk::enter_walk(QWidget& form) : QObject{&form}, form_{form} {}

void enter_walk::chain(std::initializer_list<QWidget*> fields)
{
    for (auto each = fields.begin(); std::next(each) != fields.end(); ++each)
        next_[*each] = [next = *std::next(each)] { return next; };
}

void enter_walk::begin()
{
    for (QWidget* each : form_.findChildren<QWidget*>())
        if (dynamic_cast<QLineEdit*>(each) || dynamic_cast<QComboBox*>(each) ||
            dynamic_cast<QAbstractButton*>(each))
            each->installEventFilter(this);
}

QWidget* enter_walk::next_of(QWidget* field) const
{
    if (const auto found = next_.find(field); found != next_.end())
        if (QWidget* onward = found->second())
            return onward;
    QWidget* next = field->nextInFocusChain();
    while (next != field && !(form_.isAncestorOf(next) && next->isVisible() && next->isEnabled() &&
                              (next->focusPolicy() & Qt::TabFocus) && !next->focusProxy()))
        next = next->nextInFocusChain();
    return next;
}

bool enter_walk::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    auto* field = static_cast<QWidget*>(watched);
    if (auto* list = dynamic_cast<QComboBox*>(field->parentWidget())) // the line of a list that is typed into
        field = list;
    if (std::ranges::find(own_, field) != own_.end())
        return false;
    if (auto* button = dynamic_cast<QPushButton*>(field))
        button->click();
    else
        next_of(field)->setFocus(Qt::TabFocusReason);
    return true;
}

} // namespace orvo

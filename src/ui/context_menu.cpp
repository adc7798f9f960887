#include "ui/context_menu.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>

namespace orvo {

QPoint menu_place(const QAbstractItemView& list, const QContextMenuEvent& event)
{
    if (event.reason() != QContextMenuEvent::Keyboard)
        return event.globalPos();
    const QRect row = list.visualRect(list.currentIndex()) & list.viewport()->rect();
    return list.viewport()->mapToGlobal(row.isEmpty() ? QPoint{0, 0} : row.bottomLeft());
}

bool calls_menu(QAbstractItemView& list, const QKeyEvent& pressed)
{
    if (pressed.key() != Qt::Key_F10 || pressed.modifiers() != Qt::ShiftModifier)
        return false;
    QContextMenuEvent call{QContextMenuEvent::Keyboard, {}, list.mapToGlobal(QPoint{})};
    QApplication::sendEvent(&list, &call);
    return true;
}

} // namespace orvo

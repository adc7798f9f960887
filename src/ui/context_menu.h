#pragma once

#include <QPoint>

class QAbstractItemView;
class QContextMenuEvent;
class QKeyEvent;

namespace orvo {

/// Where the context menu of a list opens: at the pointer, or below the row in use where it was called by
/// key.
QPoint menu_place(const QAbstractItemView& list, const QContextMenuEvent& event);

/// Shift+F10 calls the context menu, as the menu key does, which not all keyboards have. True where it was
/// that key.
bool calls_menu(QAbstractItemView& list, const QKeyEvent& pressed);

} // namespace orvo

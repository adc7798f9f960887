#pragma once

#include <QString>
#include <Qt>

class QWidget;

/// What an operator's hands do, for the tour, the tests and the measurements.
namespace orvo {

/// The visible widget of that name in the window in use; null where there is none.
QWidget* seen(const char* name);
/// Text as an input method commits it, which is how Hangul comes.
void type(QWidget* into, const QString& text);
void press(QWidget* on, Qt::Key key);
void click(QWidget* on);
/// A click on the row of a list or table.
void click_row(QWidget* list, int row);

} // namespace orvo

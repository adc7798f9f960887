#pragma once

#include <QStringList>

namespace orvo {

/// The batches under "# act" in a file of tests/golden, one a line with the blanks at its end. Where the file
/// has no such act, one line that tells so and that no client sends.
QStringList golden_block(const QString& file, const QString& act);

/// Where what arrived first parts from what was wanted: the line's number, both texts from there on. Empty
/// where nothing differs.
QString first_difference(const QStringList& wanted, const QStringList& arrived);

} // namespace orvo

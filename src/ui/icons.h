#pragma once

#include <QIcon>

namespace orvo {

/// An icon of the set in `share/icons`, drawn in the given colour, sharp at every scaling.
QIcon icon(const char* name, const QColor& colour);
/// The same in the colour of the text.
QIcon icon(const char* name);

} // namespace orvo

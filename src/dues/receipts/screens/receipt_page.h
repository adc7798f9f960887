#pragma once

#include <QSizeF>

class QPainter;

namespace orvo {

struct receipt;

inline constexpr QSizeF receipt_page_size{210, 297}; ///< millimetres of A4

/// Draws a page, the same on the screen, on paper and in a file. The painter's unit is a millimetre and its
/// origin the upper left corner of the sheet. A text that is too long for its place is set smaller.
void draw_receipt(QPainter& on, const receipt& one);

} // namespace orvo

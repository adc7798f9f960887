#pragma once

#include <QStringView>

#include <cstdint>

namespace orvo {

// What keeps a cell of a comma-separated file a text where it is read, though nothing is quoted there. A
// sheet takes a cell that begins with a sign for a formula and runs it, and one that begins with a quotation
// mark for all that follows up to the next mark.

/// As must_be_held_down(), for a cell whose first character can begin such a thing.
bool begins_what_is_run(QStringView cell);

/// Whether a cell must get an apostrophe in front. Numbers with a sign and hyphens alone stay as they are.
inline bool must_be_held_down(QStringView cell)
{
    if (cell.isEmpty())
        return false;
    // Control characters and blanks, behind which the sign may stand; the mark and the signs themselves.
    constexpr std::uint64_t low = 0x1FFFFFFFF | 1ull << '"' | 1ull << '+' | 1ull << '-' | 1ull << '=';
    const char16_t first = cell.front().unicode();
    const bool can_begin = first < 64 ? (low >> first & 1) != 0 : first == u'@' || first >= 0x7F;
    // Hangul is what most cells begin with.
    return can_begin && (first < 0xAC00 || first > 0xD7A3) && begins_what_is_run(cell);
}

/// Whether a text is a number with separators, as "-1,234,567".
bool is_grouped_number(QStringView text);

} // namespace orvo

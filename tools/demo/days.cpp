#include "demo/days.h"

namespace orvo::demo {

namespace {

std::string digits(int number, std::size_t places)
{
    std::string text(places, '0');
    for (std::size_t at = places; at-- > 0; number /= 10)
        text[at] = static_cast<char>('0' + number % 10);
    return text;
}

} // namespace

std::string stored(QDate day)
{
    return digits(day.year() * 10000 + day.month() * 100 + day.day(), 8);
}

std::string stored_month(QDate day)
{
    return digits(day.year() * 100 + day.month(), 6);
}

QDate day_between(random_stream& random, QDate first, QDate last)
{
    const int days = static_cast<int>(first.daysTo(last));
    return days <= 0 ? first : first.addDays(random.below(days + 1));
}

} // namespace orvo::demo

#include "base/resident_number.h"

namespace orvo {

char resident_check_digit(std::string_view first_twelve)
{
    constexpr std::string_view weights = "234567892345";
    int sum = 0;
    for (std::size_t i = 0; i < weights.size(); ++i)
        sum += (first_twelve[i] - '0') * (weights[i] - '0');
    return static_cast<char>('0' + (11 - sum % 11) % 10);
}

} // namespace orvo

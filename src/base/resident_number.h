#pragma once

#include <string_view>

namespace orvo {

/// The thirteenth digit of a resident registration number whose first twelve are given as ASCII digits.
char resident_check_digit(std::string_view first_twelve);

} // namespace orvo

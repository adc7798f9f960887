#include "base/decimal.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace orvo {

namespace {

constexpr int greatest_exponent = 400; ///< no engine's numbers reach as far

bool is_digit(char letter)
{
    return letter >= '0' && letter <= '9';
}

/// The whole of a text as a number; nothing where more stands in it.
template <class number>
std::optional<number> read_all(std::string_view text)
{
    number read{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), read);
    return error == std::errc{} && end == text.data() + text.size() ? std::optional{read} : std::nullopt;
}

} // namespace

std::optional<decimal> read_decimal(std::string_view text)
{
    std::string whole;
    if (text.starts_with('-')) {
        whole = '-';
        text.remove_prefix(1);
    }
    std::string digits;
    std::optional<std::size_t> point;
    std::size_t at = 0;
    for (; at < text.size() && (is_digit(text[at]) || (text[at] == '.' && !point)); ++at) {
        if (text[at] == '.')
            point = digits.size();
        else
            digits += text[at];
    }
    if (digits.empty())
        return {};
    int exponent = 0;
    if (at < text.size()) {
        if (text[at] != 'e' && text[at] != 'E')
            return {};
        const std::string_view behind = text.substr(at + 1);
        const auto read = read_all<int>(behind.substr(behind.starts_with('+') && !behind.starts_with("+-")));
        if (!read || std::abs(*read) > greatest_exponent)
            return {};
        exponent = *read;
    }
    const auto before_point = static_cast<std::ptrdiff_t>(point.value_or(digits.size())) + exponent;
    const auto count = static_cast<std::size_t>(std::max<std::ptrdiff_t>(before_point, 0));
    if (count > digits.size())
        digits.resize(count, '0');
    whole += count == 0 ? "0" : digits.substr(0, count);
    const auto number = read_all<std::int64_t>(whole);
    if (!number)
        return {};
    return decimal{*number, digits.find_first_not_of('0', count) == std::string::npos};
}

std::string plain_text(double number)
{
    std::array<char, 400> digits;
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed);
    return {digits.data(), end.ptr};
}

} // namespace orvo

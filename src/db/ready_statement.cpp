#include "db/dialect.h"

#include "base/decimal.h"
#include "db/failure.h"

#include <charconv>

namespace orvo {

namespace {

std::string in_parentheses(const std::string& digits)
{
    return digits.starts_with('-') ? '(' + digits + ')' : digits;
}

} // namespace

void append_doubled(std::string& to, std::string_view text)
{
    for (char c : text)
        to.append(c == '\'' ? 2 : 1, c);
}

std::int64_t ready_statement::read(const parameter& as, std::string_view value, decimals how) const
{
    const std::string_view digits = without_blanks(value);
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error == std::errc{} && end == digits.data() + digits.size())
        return number;
    if (digits.empty() && as.is == parameter::kind::number)
        return 0;
    // A code or an amount out of a column of another type may come as "10.00".
    const auto printed = read_decimal(digits);
    if (!printed || (how == decimals::refused && !printed->is_whole))
        refuse(value);
    return printed->whole;
}

std::int64_t ready_statement::number_of(const parameter& of, std::string_view field) const
{
    return read(of, field, decimals::left_out);
}

void ready_statement::refuse(std::string_view value) const
{
    throw db_failure{failure_kind::conversion,
                     QStringLiteral("숫자가 들어갈 자리에 숫자가 아닌 값이 있습니다: \"%1\"")
                         .arg(QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size())).left(40)),
                     QString::fromStdString(text)};
}

std::vector<bound_value> ready_statement::bind(const values& given) const
{
    using enum parameter::kind;
    std::vector<bound_value> bound;
    bound.reserve(parameters.size());
    for (const parameter& each : parameters) {
        std::string value;
        for (const literal_piece& piece : each.pieces)
            value += piece.is_slot ? given.of(piece.text) : piece.text;
        if (each.is == parameter::kind::text) {
            bound.emplace_back(std::move(value));
        } else if (each.is == fraction) {
            const std::string_view digits = without_blanks(value);
            if (!digits.empty() && !read_decimal(digits))
                refuse(value);
            bound.emplace_back(digits.empty() ? "0" : std::string{digits});
        } else {
            const std::int64_t number = read(each, value, decimals::refused);
            if (each.is == parameter::kind::digits)
                bound.emplace_back(std::string{without_blanks(value)});
            else
                bound.emplace_back(number);
        }
    }
    return bound;
}

std::string ready_statement::filled(const std::vector<bound_value>& bound) const
{
    std::string result = stretches.front();
    for (std::size_t i = 0; i < bound.size(); ++i) {
        if (const auto* number = std::get_if<std::int64_t>(&bound[i]))
            result += in_parentheses(std::to_string(*number));
        else if (const std::string& value = std::get<std::string>(bound[i]);
                 parameters[i].is == parameter::kind::digits)
            result += in_parentheses(value);
        else
            append_doubled(result, value);
        result += stretches[i + 1];
    }
    return result;
}

} // namespace orvo

#include "db/dialect.h"

#include "db/failure.h"

#include <charconv>

namespace orvo {

namespace {

std::string in_parentheses(const std::string& digits)
{
    return digits.starts_with('-') ? '(' + digits + ')' : digits;
}

} // namespace

std::string_view without_blanks(std::string_view text)
{
    const std::size_t from = text.find_first_not_of(' ');
    return from == std::string_view::npos ? std::string_view{}
                                          : text.substr(from, text.find_last_not_of(' ') - from + 1);
}

bool parse_whole(std::string_view text, std::int64_t& number)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc{} && end == text.data() + text.size();
}

void append_doubled(std::string& to, std::string_view text)
{
    for (char c : text)
        to.append(c == '\'' ? 2 : 1, c);
}

std::int64_t ready_statement::number_of(const parameter& of, std::string_view value) const
{
    const std::string_view digits = without_blanks(value);
    std::int64_t number = 0;
    const bool empty_is_zero = of.is == parameter::kind::number && digits.empty();
    if (!empty_is_zero && !parse_whole(digits, number))
        throw db_failure{
            failure_kind::conversion,
            QStringLiteral("숫자가 들어갈 자리에 숫자가 아닌 값이 있습니다: \"%1\"")
                .arg(QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size())).left(40)),
            QString::fromStdString(text)};
    return number;
}

std::vector<bound_value> ready_statement::bind(const values& given) const
{
    std::vector<bound_value> bound;
    bound.reserve(parameters.size());
    for (const parameter& each : parameters) {
        std::string value;
        for (const literal_piece& piece : each.pieces)
            value += piece.is_slot ? given.of(piece.text) : piece.text;
        if (each.is == parameter::kind::text) {
            bound.emplace_back(std::move(value));
            continue;
        }
        const std::int64_t number = number_of(each, value);
        if (each.is == parameter::kind::digits)
            bound.emplace_back(std::string{without_blanks(value)});
        else
            bound.emplace_back(number);
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

#include "db/row_key.h"

#include "base/decimal.h"

namespace orvo {

std::string codes_text(const table& codes)
{
    std::string names;
    for (const column& each : codes.columns)
        names.append(names.empty() ? "" : ",").append(each.name);
    return "select " + names + " from " + std::string{codes.name};
}

std::optional<std::vector<std::string>> code_of(const table& codes, std::span<const cell> row)
{
    std::vector<std::string> code;
    for (const std::string_view each : codes.key) {
        const cell& field = row[static_cast<std::size_t>(codes.find(each) - codes.columns.data())];
        const std::string_view text = without_blanks(field.text);
        if (field.is == cell::kind::number) {
            code.push_back(std::to_string(field.number));
        } else if (const auto number = read_decimal(text)) {
            code.push_back(std::to_string(number->whole)); // "07" and "7.00" are one code
        } else if (text.empty()) {
            return {};
        } else {
            code.emplace_back(text);
        }
    }
    return code;
}

} // namespace orvo

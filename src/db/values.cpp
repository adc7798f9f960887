#include "db/values.h"

#include <algorithm>
#include <stdexcept>

namespace orvo {

values::value::value(std::string_view of_slot, const QString& given)
    : slot{of_slot}, text{given.toStdString()}
{
    std::erase(text, '\0');
}

values::value::value(std::string_view of_slot, const char* given) : slot{of_slot}, text{given} {}

values::value::value(std::string_view of_slot, qint64 number) : slot{of_slot}, text{std::to_string(number)} {}

const std::string& values::of(std::string_view slot) const
{
    const auto found =
        std::find_if(values_.begin(), values_.end(), [slot](const value& each) { return each.slot == slot; });
    if (found == values_.end())
        throw std::logic_error{"no value for slot " + std::string{slot}};
    return found->text;
}

} // namespace orvo

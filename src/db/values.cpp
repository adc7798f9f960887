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

const std::string* values::find(std::string_view slot) const
{
    const auto found = std::ranges::find(values_, slot, &value::slot);
    return found == values_.end() ? nullptr : &found->text;
}

const std::string& values::of(std::string_view slot) const
{
    if (const std::string* text = find(slot))
        return *text;
    throw std::logic_error{"no value for slot " + std::string{slot}};
}

} // namespace orvo

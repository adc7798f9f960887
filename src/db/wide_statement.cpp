#include "db/wide_statement.h"

namespace orvo {

std::string insert_text(std::string_view table, std::span<const column_value> columns)
{
    std::string names;
    std::string slots_of_values;
    for (const column_value& each : columns) {
        const std::string comma = names.empty() ? "" : ",";
        const std::string quote = each.is_bare ? "" : "'";
        names.append(comma).append(each.column);
        slots_of_values.append(comma + quote + "{").append(each.column).append("}" + quote);
    }
    return "insert into " + std::string{table} + "(" + names + ") values (" + slots_of_values + ")";
}

values slot_values(std::span<const column_value> columns)
{
    values given;
    for (const column_value& each : columns)
        given.add({each.column, each.value});
    return given;
}

} // namespace orvo

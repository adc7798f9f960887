#include "db/wide_statement.h"

namespace orvo {

namespace {

std::string slot_of(const column_value& taking, std::string_view prefix = {})
{
    const std::string slot = std::string{"{"}.append(prefix).append(taking.column) + "}";
    return taking.is_bare ? slot : "'" + slot + "'";
}

} // namespace

std::string insert_text(std::string_view table, std::span<const column_value> columns,
                        std::string_view prefix)
{
    std::string names;
    std::string slots_of_values;
    for (const column_value& each : columns) {
        const std::string comma = names.empty() ? "" : ",";
        names.append(comma).append(each.column);
        slots_of_values.append(comma + slot_of(each, prefix));
    }
    return "insert into " + std::string{table} + "(" + names + ") values (" + slots_of_values + ")";
}

std::string update_text(std::string_view table, std::span<const column_value> columns)
{
    std::string assignments;
    for (const column_value& each : columns)
        assignments.append(assignments.empty() ? "" : ",").append(each.column).append("=" + slot_of(each));
    return "update " + std::string{table} + " set " + assignments;
}

values slot_values(std::span<const column_value> columns, std::string_view prefix)
{
    values given;
    for (const column_value& each : columns)
        given.add({std::string{prefix}.append(each.column), each.value});
    return given;
}

} // namespace orvo

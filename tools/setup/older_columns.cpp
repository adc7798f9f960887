#include "setup/older_columns.h"

#include "db/schema/ddl.h"

#include <algorithm>
#include <array>

namespace orvo::setup {

namespace {

struct column_name {
    std::string_view table;
    std::string_view column;
};

/// They were whole numbers once.
constexpr std::array once_numbers{column_name{"education_tbl", "test_avg"},
                                  column_name{"std_h_tbl", "iss_no"}, column_name{"std_b_tbl", "test_avg"}};

bool is_as_made(const standing_column& found, const column& made)
{
    switch (kind_of(made.type)) {
    case value_kind::text:
        return found.what == holds::texts && (found.width == 0 || found.width == made.width);
    case value_kind::whole:
        return found.what == holds::whole;
    case value_kind::fraction:
        break;
    }
    return found.what == holds::decimals;
}

bool is_all_else_as_made(const std::vector<standing_column>& standing, const older_column& but)
{
    const auto count = std::ranges::count(standing, but.of->name, &standing_column::table);
    return static_cast<std::size_t>(count) == but.of->columns.size() &&
           std::ranges::all_of(but.of->columns, [&](const column& each) {
               const standing_column* found = find_column(standing, but.of->name, each.name);
               return found && (&each == but.field || is_as_made(*found, each));
           });
}

} // namespace

std::vector<older_column> older_columns(const std::vector<standing_column>& standing)
{
    std::vector<older_column> older;
    for (const auto& [table_name, name] : once_numbers) {
        const table* of = find_table(database::server, table_name);
        const older_column one{of, of->find(name)};
        const standing_column* found = find_column(standing, table_name, name);
        if (found && found->what == holds::whole && is_all_else_as_made(standing, one))
            older.push_back(one);
    }
    return older;
}

void bring_up(connection& on, const older_column& which)
{
    try {
        transaction all_or_nothing{on};
        for (const std::string& text :
             retype_statements(on.kind(), database::server, *which.of, *which.field))
            on.direct(text);
        all_or_nothing.commit();
    } catch (const db_failure&) {
        const auto left = older_columns(standing_columns(on));
        if (std::ranges::find(left, which.field, &older_column::field) != left.end())
            throw;
        // Somebody else was quicker.
    }
}

std::string name_of(const older_column& which)
{
    return std::string{which.field->name} + " of " + std::string{which.of->name};
}

} // namespace orvo::setup

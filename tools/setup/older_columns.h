#pragma once

#include "setup/standing_columns.h"

namespace orvo::setup {

/// A column that an earlier orvo_db made of another type than the schema now says.
struct older_column {
    const table* of;
    const column* field;
};

/// Those of a register that orvo_db made: whose tables are otherwise as it makes them. Other registers are
/// left alone, as other programs of the association may count on their types.
std::vector<older_column> older_columns(const std::vector<standing_column>& standing);

/// Gives a column its type and keeps what it holds. Throws db_failure, and the table is as it was.
void bring_up(connection& on, const older_column& which);

/// "test_avg of std_b_tbl"
std::string name_of(const older_column& which);

} // namespace orvo::setup

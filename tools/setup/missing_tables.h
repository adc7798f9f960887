#pragma once

#include "db/connection.h"
#include "db/engine.h"

#include <QString>

#include <string_view>
#include <vector>

namespace orvo::setup {

struct tables {
    std::vector<std::string_view> found; ///< left as they are
    std::vector<std::string_view> made;
};

/// The names of the tables that stand in the database, in lower case.
std::vector<QString> standing_tables(connection& on);

/// Makes the tables of a database that are not there yet, each with its indexes.
tables make_missing_tables(connection& on, database where);

} // namespace orvo::setup

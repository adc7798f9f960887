#pragma once

#include "db/connection.h"
#include "db/engine.h"

#include <string_view>
#include <vector>

namespace orvo::setup {

struct tables {
    std::vector<std::string_view> found; ///< left as they are
    std::vector<std::string_view> made;
};

/// Makes the tables of a database that are not there yet, each with its indexes.
tables make_missing_tables(connection& on, database where);

} // namespace orvo::setup

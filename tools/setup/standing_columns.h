#pragma once

#include "db/connection.h"
#include "db/schema/schema.h"

#include <vector>

namespace orvo::setup {

/// What a column of a database can hold, in any engine's words for it.
enum class holds { whole, decimals, texts, padded_texts, days, truth, something };

struct standing_column {
    std::string table; ///< in lower case, as the name
    std::string name;
    std::string type; ///< in the engine's words
    holds what = holds::something;
    int width = 0; ///< of a text, in letters; 0 where it is not told or has no bound
};

/// The columns of the tables that stand in the database, as far as the login may know of them.
std::vector<standing_column> standing_columns(connection& on);

/// The one of that name; null where there is none.
const standing_column* find_column(const std::vector<standing_column>& standing, std::string_view table,
                                   std::string_view name);

} // namespace orvo::setup

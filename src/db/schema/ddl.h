#pragma once

#include "db/schema/schema.h"

namespace orvo {

/// The statements that make one table of a database with its indexes.
std::vector<std::string> make_statements(engine kind, database where, const table& one);

/// Brings the `name` of each table that stands in the open database.
std::string_view table_names_text(engine kind);

} // namespace orvo

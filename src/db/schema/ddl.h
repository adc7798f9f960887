#pragma once

#include "db/schema/schema.h"

namespace orvo {

/// The statements that make one table of a database with its indexes.
std::vector<std::string> make_statements(engine kind, database where, const table& one);

/// Adds a column that is not of the key, with its default in the rows that are there.
std::string add_column_statement(engine kind, database where, const table& to, const column& added);

/// Whether the embedded engine keeps the rows in the order of their key, in place of places of their own.
bool is_clustered(const table& one);
/// The columns of the primary key; empty where the table has none.
std::vector<std::string_view> primary_key_of(const table& one);
/// The statements that give a column, which is of another type, the type that the schema says. What it holds
/// is kept. The client never sends them.
std::vector<std::string> retype_statements(engine kind, database where, const table& of, const column& field);

/// Brings the `name` of each table that stands in the open database.
std::string_view table_names_text(engine kind);
/// Brings the columns of its tables: `table_name`, `column_name`, `data_type` in the engine's words, `width`
/// of a text and `scale` of a number, where the engine tells them.
std::string_view columns_text(engine kind);

} // namespace orvo

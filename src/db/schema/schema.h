#pragma once

#include "db/engine.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvo {

enum class column_type {
    text,
    number,  ///< a code, count, point or flag that is calculated with: 32 bits
    money,   ///< whole won: 64 bits
    identity ///< assigned by the server: 32 bits
};

struct column {
    std::string_view name;
    column_type type = column_type::text;
    int width = 0; ///< of a text, in characters
};

struct table {
    std::string_view name;
    std::vector<column> columns;
    /// Orders the rows where a statement names no order; unique unless `doubles`. Empty: the order of
    /// writing.
    std::vector<std::string_view> key;
    /// Each an index by its columns, for the statements that look rows up other than by their key.
    std::vector<std::vector<std::string_view>> indexes;
    /// The key orders rows, but two may be alike in it.
    bool doubles = false;

    const column* find(std::string_view column_name) const; ///< without case; null where there is none
};

/// The tables of a database, in the order in which they are made.
const std::vector<table>& tables_of(database where);

/// A table by its name, without case; null where there is none.
const table* find_table(database where, std::string_view name);

/// The tables that stand on the server and, as a mirror, in the local file: code tables and member kinds.
const std::vector<std::string_view>& mirrored_tables();

/// Whether a column of that name holds numbers. Types go by name, once for the whole schema.
bool is_number(std::string_view column_name);
/// Whether a column of that name holds text. Neither is so of a name that no table has.
bool is_text(std::string_view column_name);

/// The number of characters that a text column holds; 0 where there is no such column.
int width_of(std::string_view table_name, std::string_view column_name);

/// The statements that make the tables and indexes of a database on an engine.
std::vector<std::string> make_statements(engine kind, database where);
/// The same for the workstation's file, which is embedded on every engine.
std::vector<std::string> make_local_statements();

} // namespace orvo

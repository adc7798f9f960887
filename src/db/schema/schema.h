#pragma once

#include "db/engine.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvo {

enum class column_type {
    text,
    number,   ///< a code, count, point or flag that is calculated with: 32 bits
    money,    ///< whole won: 64 bits
    fraction, ///< a score, which may have decimals
    identity  ///< assigned by the server: 32 bits
};

/// What a value of a column is.
enum class value_kind { text, whole, fraction };

constexpr value_kind kind_of(column_type type)
{
    return type == column_type::text       ? value_kind::text
           : type == column_type::fraction ? value_kind::fraction
                                           : value_kind::whole;
}

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

/// A table by its name in whichever database has it: those that stand in two have the same columns.
const table* find_table(std::string_view name);

/// What the tables make of a column's name.
struct column_use {
    /// The widest of the columns where they are of one type; null where two tables use the name in two ways.
    const column* common = nullptr;
    bool is_on_server = false; ///< not of the workstation's own file alone
};

/// Null for a name that no table has.
const column_use* use_of(std::string_view column_name);
/// Whether a column of that name holds whole numbers in every table.
bool is_number(std::string_view column_name);

/// The number of characters that a text column holds; 0 where there is no such column.
int width_of(std::string_view table_name, std::string_view column_name);

/// The statements that make the tables and indexes of a database on an engine.
std::vector<std::string> make_statements(engine kind, database where);
/// The same for the workstation's file, which is embedded on every engine.
std::vector<std::string> make_local_statements();

} // namespace orvo

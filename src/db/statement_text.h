#pragma once

#include "db/schema/schema.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvo {

/// A piece of a quoted literal: constant text, or the name of a slot.
struct literal_piece {
    bool is_slot = false;
    std::string text;
};

struct token {
    enum class kind {
        word,    ///< a name or a key word
        number,  ///< 10
        literal, ///< '%{key}%', in pieces
        slot,    ///< {code}, outside quotes: a whole number
        sign     ///< an operator, parenthesis, comma or point
    };

    kind is = kind::sign;
    std::string text; ///< as written; of a literal empty
    std::vector<literal_piece> pieces;

    bool is_word(std::string_view lower) const;
    bool is_sign(std::string_view sign) const { return is == kind::sign && text == sign; }
    bool is_value() const { return is == kind::literal || is == kind::slot || is == kind::number; }
};

/// What a statement does to the rows it meets.
enum class verb { select, insert, update, erase, other };

/// A statement text, cut into tokens. What a value is compared with, or stored into, follows from the
/// schema's column types: from the tables that the statement names, else from the column's name alone.
class statement_text {
public:
    /// Throws std::logic_error on a text that ends inside a literal or a slot.
    explicit statement_text(std::string_view text);

    const std::vector<token>& tokens() const { return tokens_; }
    verb what() const { return what_; }
    /// The table that the statement reads first, or writes; in lower case. Empty where there is none.
    const std::string& first_table() const { return first_table_; }
    /// The name by which the statement calls that table in its column names: the alias, or the table's own.
    const std::string& first_alias() const { return first_alias_; }

    /// What the value at `at` is by the column it meets.
    value_kind met_at(std::size_t at) const;
    /// What the operand is that ends at `at`, before a comparison.
    value_kind operand_at(std::size_t at) const;
    /// What the column is whose name stands at `at`; nothing where no table has it.
    std::optional<value_kind> column_at(std::size_t at) const;
    /// Whether sending the statement twice does what sending it once does: a read, a delete, an assignment of
    /// values.
    bool can_be_repeated() const;
    /// Whether the rows are those of the tables: not grouped, counted or summed.
    bool brings_rows_as_they_are() const;
    bool is_ordered() const;
    bool is_distinct() const;
    /// Whether the select list brings all columns of the first table.
    bool selects_all_of_first() const;

private:
    /// A table as the statement names it, in lower case.
    struct named_table {
        std::string name;
        std::string alias;
        const table* known; ///< null where it is none of the schema
    };

    std::vector<token> tokens_;
    std::vector<value_kind> inserted_; // by token, for the values of an insert
    std::vector<named_table> tables_;
    verb what_ = verb::other;
    std::string first_table_;
    std::string first_alias_;

    void find_tables();
    void type_inserted_values();
    value_kind any_number(std::size_t from, std::size_t to) const;
    std::size_t find_word(std::string_view lower) const; // outside parentheses; tokens().size() where missing
    std::size_t opening_of(std::size_t closing) const;
    bool word_at(std::size_t at, std::string_view lower) const;
};

} // namespace orvo

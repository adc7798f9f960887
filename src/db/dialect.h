#pragma once

#include "db/cell.h"
#include "db/engine.h"
#include "db/statement_text.h"
#include "db/values.h"

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace orvo {

/// One parameter of a ready statement: a whole quoted literal that holds slots, or a slot outside quotes.
struct parameter {
    enum class kind {
        text,
        number,       ///< a quoted value that meets whole numbers: an empty text is 0
        fraction,     ///< a quoted value that meets numbers with decimals: an empty text is 0
        plain_number, ///< a slot outside quotes: nothing but a whole number
        digits        ///< a slot outside quotes that meets a text column
    };

    kind is = kind::text;
    std::vector<literal_piece> pieces;

    bool is_number() const { return is == kind::number || is == kind::plain_number; }
};

using bound_value = std::variant<std::int64_t, std::string>;

/// A statement in the dialect of one engine: fit to be prepared, or, where the engine takes the literal text,
/// in the stretches between its slots.
struct ready_statement {
    std::string text; ///< the template
    std::string sql;
    std::vector<std::string> stretches; ///< one more than parameters; empty where `sql` is prepared
    std::vector<parameter> parameters;
    verb what = verb::other;
    bool repeatable = false;

    /// The parameters' values in their order. Throws db_failure (conversion) where a number is none.
    std::vector<bound_value> bind(const values& given) const;
    /// The number that a field of another statement's row is for one of the parameters: read and refused as
    /// bind does, but for decimals, which are left out.
    std::int64_t number_of(const parameter& of, std::string_view field) const;
    /// The literal text, from the stretches: the quotes of values doubled, negative numbers outside quotes in
    /// parentheses (`mem_dues--5` would make a comment of all that follows).
    std::string filled(const std::vector<bound_value>& bound) const;

private:
    enum class decimals { refused, left_out };
    std::int64_t read(const parameter& as, std::string_view value, decimals how) const;
    [[noreturn]] void refuse(std::string_view value) const;
};

/// A template in the engine's dialect; for SQL Server, whose texts they are, as it stands. Where `letters` is
/// set, Latin letters in `like` are compared without case by the engine's slower way; where no value holds a
/// letter with case, the faster way finds the same.
ready_statement translate(const statement_text& statement, std::string_view text, engine kind, database where,
                          bool letters);

/// Whether the dialect has two ways for this statement.
bool has_letter_variant(const statement_text& statement, engine kind);

/// Whether a text holds a letter that has an upper and a lower case.
bool has_cased_letter(std::string_view utf8);

/// Appends a text as it stands between quotes: its own quotes doubled.
void append_doubled(std::string& to, std::string_view text);

} // namespace orvo

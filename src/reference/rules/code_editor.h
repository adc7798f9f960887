#pragma once

#include "db/connection.h"

#include <QString>

#include <optional>
#include <string_view>
#include <vector>

namespace orvo {

/// What the list gets that an editor was opened for.
enum class hand_back {
    hits,        ///< the row that was clicked, or at the closing all rows of the grid
    clicked_row, ///< the row that was clicked
    nothing
};

/// How one code table is looked through and added to: a member of a family of eighteen.
struct code_editor {
    const char* dialog;
    const char* heading;
    std::string_view table;
    std::string_view key;
    std::string_view name;
    int step; ///< from one code to the next, and the first one
    hand_back gives = hand_back::hits;
    const char* search_button = "search_img";
    bool server_first = false; ///< a new row goes to the server before the workstation
    // Statements of their own; empty where they follow the pattern that the family shares.
    std::string_view highest = {};
    std::string_view insert = {};
    std::string_view all = {};
};

const std::vector<code_editor>& code_editors();

/// What the operator entered for one column of a new row, and the slot of the insert that takes it.
struct column_text {
    std::string_view column;
    std::string_view slot;
    QString text;
};

/// What became of an addition. Not refused and without a failure: it is stored on both sides.
struct addition {
    QString refusal;              ///< nothing was sent, because of this
    std::size_t refused_text = 0; ///< which of the texts it is about
    qint64 code = 0;
    bool is_here = false; ///< in the workstation's mirror
    bool is_on_server = false;
    std::optional<db_failure> failure;
};

/// The rows whose name holds the word, wildcards included, in the order of their codes.
rows find_codes(connection& local, const code_editor& of, const QString& word);

/// The whole table as the editor shows it after an addition. `parents` are the codes under which the new one
/// stands, by their columns.
rows all_codes(connection& local, const code_editor& of, const values& parents);

/// Gives the texts (the first of them the name) the next code and stores them on both sides, one after the
/// other. Throws db_failure where nothing is stored and another try may go better; a failure behind the first
/// side, and a code that the server has already, are told in the result.
addition add_code(connection& local, connection& server, const code_editor& of,
                  const std::vector<column_text>& texts, const values& parents);

/// What the lists above the name offer.
rows read_branches(connection& local);
rows read_big_divisions(connection& local);

} // namespace orvo

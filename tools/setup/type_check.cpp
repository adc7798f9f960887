#include "setup/type_check.h"

#include "setup/older_columns.h"

#include <algorithm>
#include <map>
#include <optional>

namespace orvo::setup {

namespace {

struct difference {
    bool is_fault = false;
    std::string what_follows;
};

std::optional<difference> where_whole_numbers_are_expected(const standing_column& found, engine kind)
{
    const bool is_postgresql = kind == engine::postgresql;
    switch (found.what) {
    case holds::whole:
        return {};
    case holds::decimals:
        if (is_postgresql && found.type == "money")
            break;
        return difference{false, "read in whole numbers, what stands behind the point is not shown"};
    case holds::texts:
    case holds::padded_texts:
        if (is_postgresql)
            break;
        return difference{false,
                          "texts where the client has numbers, so that 07 and 7 are two to the server and "
                          "10 comes before 9"};
    case holds::truth:
        if (is_postgresql)
            break;
        return difference{false, "hold 0 and 1 alone"};
    case holds::days:
    case holds::something:
        break;
    }
    return difference{true,
                      "cannot be compared with the numbers that the client sends: what reads them fails"};
}

std::optional<difference> where_texts_are_expected(const standing_column& found, const column& wanted,
                                                   engine kind)
{
    const bool is_postgresql = kind == engine::postgresql;
    switch (found.what) {
    case holds::texts:
        if (found.width == 0 || (wanted.width > 0 && found.width >= wanted.width))
            return {};
        return difference{false,
                          "narrower than the client's fields: a text that is longer is refused when it is "
                          "saved"};
    case holds::padded_texts:
        return difference{false, "filled up with blanks, which the client leaves out when it reads"};
    case holds::whole:
    case holds::decimals:
    case holds::truth:
        if (is_postgresql)
            break;
        return difference{false, "numbers where the client has texts: noughts in front are lost, letters are "
                                 "refused, and nothing is stored as 0"};
    case holds::days:
        return difference{true,
                          "days in the server's own form: the client writes and reads them as 20261231"};
    case holds::something:
        break;
    }
    return difference{true, "cannot be compared with the texts that the client sends: what reads them fails"};
}

std::optional<difference> where_scores_are_expected(const standing_column& found, engine kind)
{
    switch (found.what) {
    case holds::decimals:
        if (kind == engine::postgresql && found.type == "money")
            break;
        return {};
    case holds::whole:
        return difference{false,
                          "whole numbers where the client has scores such as 87.5: they are cut, rounded or "
                          "refused"};
    default:
        break;
    }
    return difference{true,
                      "cannot be compared with the scores that the client sends: what reads them fails"};
}

std::optional<difference> difference_of(const standing_column& found, const column& wanted, engine kind)
{
    switch (kind_of(wanted.type)) {
    case value_kind::text:
        return where_texts_are_expected(found, wanted, kind);
    case value_kind::whole:
        return where_whole_numbers_are_expected(found, kind);
    case value_kind::fraction:
        break;
    }
    return where_scores_are_expected(found, kind);
}

/// "dues_h_tbl.mem_dues (numeric)"
std::string in_words(const standing_column& found)
{
    const std::string width = found.width > 0 ? "(" + std::to_string(found.width) + ")" : std::string{};
    return found.table + "." + found.name + " (" + found.type + width + ")";
}

std::vector<std::string> sentences(const std::map<std::string, std::string>& columns_by_what_follows)
{
    std::vector<std::string> all;
    for (const auto& [what_follows, columns] : columns_by_what_follows)
        all.push_back(what_follows + ": " + columns);
    return all;
}

} // namespace

differences differing_types(connection& on, database where)
{
    const std::vector<standing_column> standing = standing_columns(on);
    std::map<std::string, std::string> faults;
    std::map<std::string, std::string> remarks;
    for (const table& each : tables_of(where))
        for (const column& wanted : each.columns) {
            const standing_column* found = find_column(standing, each.name, wanted.name);
            const auto difference = found ? difference_of(*found, wanted, on.kind()) : std::nullopt;
            if (!difference)
                continue;
            std::string& columns = (difference->is_fault ? faults : remarks)[difference->what_follows];
            columns += (columns.empty() ? "" : ", ") + in_words(*found);
        }
    differences all{sentences(faults), sentences(remarks)};
    if (where == database::server)
        for (const older_column& each : older_columns(standing))
            all.remarks.push_back("an earlier orvo_db made " + name_of(each) +
                                  ": orvo_db init brings it up to date");
    return all;
}

} // namespace orvo::setup

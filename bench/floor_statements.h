#pragma once

#include <array>
#include <map>
#include <span>
#include <string>

/// The statements of the saves as the client's rules send them, with values that both engines take.

inline constexpr int most_fields = 40;

struct field {
    enum class of { nothing_else, pers_no, val_year, code_member, balance };

    of differs_by = of::nothing_else; ///< what it takes from the member and year of the turn
    const char* text = nullptr;       ///< else this
    bool is_number = false;
};

/// What a step is to its save beside a write on the server.
enum class part {
    plain,
    local,         ///< goes to the workstation's file
    finds_nothing, ///< a row would be a mistake of the benchmark
    paid,          ///< its first field goes off the balance
    owed,          ///< its `mem_dues` goes onto the balance
    where_settled, ///< sent where the balance is zero or less
    where_open     ///< sent where it is not
};

struct step {
    const char* name;
    const char* sql; ///< each parameter first met in the order of the fields: so both engines number alike
    int count;
    std::array<field, most_fields> fields;
    part is = part::plain;
};

/// By the name of the save: "registration", "payment", "change".
const std::map<std::string, std::span<const step>>& floor_saves();

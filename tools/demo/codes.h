#pragma once

#include "demo/loader.h"

#include <array>
#include <span>
#include <string_view>

namespace orvo::demo {

struct member_kind {
    int code;
    std::string_view name;
    int center_money;
    int bran_money;

    int dues() const { return center_money + bran_money; }
    bool is_lifetime() const { return code >= 10 && code <= 13; }
};

const member_kind& kind_of(int code);

struct branch {
    int code;
    std::string_view name;
    int weight; ///< its share of the members
};

std::span<const branch> branches();

struct workplace_class {
    int part;
    int great;
    int small;
    std::string_view name;
    std::string_view suffix; ///< what a workplace of the class is called behind its own name
    int division;            ///< of the members who work there
    int weight;              ///< its share of the workplaces

    bool has_beds() const { return great == 30; }
    bool is_catering() const { return part == 100; }
    bool is_professors() const { return great == 60 && small == 5; }
};

std::span<const workplace_class> workplace_classes();

/// The sub-branches of a branch and division have the codes 1 to this number.
int section_count(int branch, int division);

/// The number of rows of a code table whose codes go up by `step`.
int schools();
int contractors();

inline constexpr int head_office_place = 1;
inline constexpr std::array branch_places{2, 3, 4, 5};

void fill_codes(loader& into, quint64 seed);

} // namespace orvo::demo

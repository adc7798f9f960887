#pragma once

#include "demo/codes.h"
#include "demo/demo.h"
#include "demo/edges.h"

#include <string>
#include <vector>

namespace orvo::demo {

/// What all concerns need to know of a member.
struct person {
    std::string pers_no;
    std::string name;
    int number = 0; ///< the member's stream of random numbers
    bool is_male = false;
    int birth_year = 0;
    int branch = 0;
    int division = 0;
    int section = 0;
    int kind = 0;
    int joined = 0;   ///< the year
    int lifetime = 0; ///< the year in which a lifetime member became one
    int workplaces = 0;
    const workplace_class* works_at = nullptr; ///< of the primary workplace; null without one
    const edge* shape = nullptr;               ///< where the member has one of the rare shapes
};

/// All members in the order of their numbers.
std::vector<person> make_people(const plan& what);

} // namespace orvo::demo

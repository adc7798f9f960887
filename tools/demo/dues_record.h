#pragma once

#include "demo/people.h"

#include <string>
#include <vector>

namespace orvo::demo {

struct payment {
    int kind = 0;
    std::string year; ///< or "평생회원"
    std::string center_day;
    std::string branch_day;
    int amount = 0;
    int place = 0;
    std::string entered;
};

struct yearly_dues {
    int kind = 0;
    int year = 0;
    int dues = 0;
    int paid = 0;
    std::string entered;
};

struct dues_record {
    std::vector<yearly_dues> years;
    std::vector<payment> payments;
};

/// What a member owed and paid, the same at each call: six years up to this one, and the year in which a
/// lifetime member became one. The balance of a year is its dues less its payments.
dues_record dues_of(const plan& what, const person& who);

} // namespace orvo::demo

#pragma once

#include "demo/random.h"

#include <string>

namespace orvo::demo {

struct address {
    std::string post; ///< six digits
    std::string text;
    std::string_view area; ///< the telephone's area code
};

/// What has a postal code.
struct neighbourhood {
    std::string post;
    std::string_view province;
    std::string district;
    std::string name;
    std::string_view area; ///< the telephone's area code

    bool is_rural() const { return name.ends_with("읍") || name.ends_with("면"); }
};

neighbourhood any_neighbourhood(random_stream& random, int branch);

/// Where a member of a branch may live. Districts and streets are of our own making.
address home_address(random_stream& random, int branch);
/// Where a workplace of that branch may stand.
address work_address(random_stream& random, int branch);

/// The names of districts, one by one and then again from the first.
std::string_view district_name(int number);

/// Numbers that no subscriber has: exchanges begin with 1 on lines, with 0 on mobiles.
std::string line_number(random_stream& random, std::string_view area);
std::string mobile_number(random_stream& random);

} // namespace orvo::demo

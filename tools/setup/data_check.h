#pragma once

#include "db/connection.h"

#include <string>
#include <vector>

namespace orvo::setup {

/// What is to be known of a register's content, a sentence each: rows of numbers that no member has, members
/// without dues, years that do not add up, codes that stand twice or are none. Reads only.
std::vector<std::string> findings_in(connection& on);

/// A member's number without its last seven digits: a birth date tells an operator whom to look for, and
/// nobody else who it is.
std::string hidden_number(std::string_view pers_no);

} // namespace orvo::setup

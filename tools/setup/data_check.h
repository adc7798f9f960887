#pragma once

#include "db/connection.h"

#include <string>
#include <vector>

namespace orvo::setup {

/// What is to be known of a register's content, a sentence each: rows of numbers that no member has, members
/// without dues, years that do not add up, codes that stand twice or are none. Numbers of members are told
/// without their last seven digits. Reads only.
std::vector<std::string> findings_in(connection& on);

} // namespace orvo::setup

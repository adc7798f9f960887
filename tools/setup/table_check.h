#pragma once

#include "db/connection.h"
#include "db/engine.h"

#include <string>
#include <vector>

namespace orvo::setup {

/// What a database lacks of what the client needs, a sentence each: tables and columns that are missing, and
/// tables that the login may not read, add to, change or delete from. Changes nothing.
std::vector<std::string> faults_of(connection& on, database where);

} // namespace orvo::setup

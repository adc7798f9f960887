#pragma once

#include "db/connection.h"
#include "db/engine.h"

#include <string>
#include <vector>

namespace orvo::setup {

/// What a database has otherwise than the client expects it, a sentence each.
struct differences {
    std::vector<std::string> faults;  ///< with which the client cannot work
    std::vector<std::string> remarks; ///< with which it works, and what follows for its operators
};

/// Columns of other types than the client's.
differences differing_types(connection& on, database where);

} // namespace orvo::setup

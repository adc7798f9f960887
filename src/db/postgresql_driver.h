#pragma once

#include "db/driver.h"
#include "db/open.h"

#include <memory>

namespace orvo {

/// PostgreSQL over libpq. Statements are prepared once a line; results that can be large come row by row.
std::unique_ptr<driver> make_postgresql_driver(const server_address& server, database where);

} // namespace orvo

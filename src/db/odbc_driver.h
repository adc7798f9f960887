#pragma once

#include "db/driver.h"
#include "db/open.h"

#include <memory>

namespace orvo {

/// SQL Server, straight on ODBC. It gets the literal texts, each by a direct execution that reads forward
/// only: so they go over the line as they stand.
std::unique_ptr<driver> make_odbc_driver(const server_address& server, database where);

} // namespace orvo

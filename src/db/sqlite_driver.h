#pragma once

#include "db/driver.h"
#include "db/open.h"

#include <memory>

namespace orvo {

/// The embedded engine on one file. The file is made, for the owner alone, where `use` says so. In a folder
/// that cannot be written the file is opened for reading only. A file that another program holds is waited
/// for as long as `longest_hold`.
std::unique_ptr<driver> make_sqlite_driver(const QString& path, database where, file_use use,
                                           std::chrono::seconds longest_hold);

} // namespace orvo

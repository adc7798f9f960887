#pragma once

#include <string_view>

namespace orvo {

class connection;

/// Brings the workstation's copy of the code tables and member kinds in line with the server's: all or
/// nothing. Throws db_failure; the copy is then as it was.
void sync_codes(connection& server, connection& local);

/// The same for one of these tables.
void sync_code_table(connection& server, connection& local, std::string_view name);

} // namespace orvo

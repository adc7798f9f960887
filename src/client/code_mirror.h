#pragma once

#include <string_view>

namespace orvo {

class connection;

/// Brings the workstation's copy of the code tables and member kinds in line with the server's: all or
/// nothing. Of a code that the server holds twice the first row counts, and one without a code is left out.
/// Throws db_failure; the copy is then as it was. Tables that are alike are not written.
void sync_codes(connection& server, connection& local);

/// The same for one of these tables. Tells whether it was different.
bool sync_code_table(connection& server, connection& local, std::string_view name);

} // namespace orvo

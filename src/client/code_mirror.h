#pragma once

namespace orvo {

class connection;

/// Brings the workstation's copy of the code tables and member kinds in line with the server's: all or
/// nothing. Throws db_failure; the copy is then as it was.
void sync_codes(connection& server, connection& local);

} // namespace orvo

#pragma once

class QWidget;

namespace orvo {

class client;

/// Brings this workstation's copy of the code tables in line with the server's, and tells which were
/// different. Can be ended between two tables. Throws db_failure.
void fetch_codes(client& c, QWidget* over);

} // namespace orvo

#pragma once

#include "db/connection.h"

#include <string_view>
#include <vector>

namespace orvo {

class client;

enum class inspection { quick, thorough };

/// Whether the open local file has all its tables and columns; in a thorough look, whether all its rows can
/// be read. Throws db_failure where that cannot be seen, as another program holds the file.
bool is_local_file_sound(connection& local, inspection how = inspection::quick);
/// Whether the local file failed for no fault of its own.
bool is_held_elsewhere(const db_failure& failure);

/// Adds what a newer version of the program keeps in the open local file: tables, columns, keys; all or
/// nothing. Returns the mirrored tables among those that were changed, which want the server's rows. A file
/// without any of the tables is none of ours, and is left as it is.
std::vector<std::string_view> complete_local_file(connection& local);

/// What a new local file has of a table of the earlier one.
struct carried_table {
    std::string_view name;
    qint64 rows = 0;
    bool is_whole = true; ///< all rows could be read
};

/// Makes the local file anew and opens it. The code tables come from the open register; what is kept nowhere
/// else (postal codes, drafts, what is queued) from the earlier file, as far as its rows can be read. That
/// one is kept beside it. Throws db_failure; then the file that was there stays in use.
std::vector<carried_table> remake_local_file(client& c);

} // namespace orvo

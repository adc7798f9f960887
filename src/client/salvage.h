#pragma once

#include "db/connection.h"
#include "db/schema/schema.h"

namespace orvo {

struct salvaged {
    qint64 rows = 0;
    bool is_whole = true; ///< no row was passed over
};

/// Copies the rows of a table from a file of the embedded engine, some pages of which may be damaged, into
/// the empty table of another: row by row, past what cannot be read. A column that the other has no more is
/// left out, one that it has besides keeps its default.
salvaged salvage(connection& from, connection& to, const table& which);

} // namespace orvo

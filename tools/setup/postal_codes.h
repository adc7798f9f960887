#pragma once

#include "db/connection.h"
#include "setup/delimited_text.h"

#include <functional>

namespace orvo::setup {

struct import_count {
    qint64 imported = 0;
    qint64 rejected = 0;
};

/// Hears of each row that is not taken: the number of its line in the file, from 1, and why.
using rejection = std::function<void(qint64 line, const std::string& reason)>;

/// Puts the rows of a file in place of the postal codes of the workstation's file. A first line that names
/// columns tells which field is which; without one they come in the order of the table. Where no row can be
/// taken, and at any failure, the postal codes stay as they are. Throws refusal where the file cannot be read
/// or its first line tells no columns that serve.
import_count import_postal_codes(connection& local, const QString& path, text_encoding encoding,
                                 const rejection& tell);

} // namespace orvo::setup

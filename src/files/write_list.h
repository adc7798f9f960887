#pragma once

#include "db/connection.h"
#include "files/text_table.h"

namespace orvo {

// Both write beside the file of that name and give it the name at the end: after a failure the name holds
// what it held before. They throw db_failure, of which the text is a sentence for the operator: disk_full,
// cancelled where the progress said so, or other.

/// Captions and rows as lines, in UTF-8 with a byte-order mark. Each row begins with its number under
/// `number_caption`, or with its first cell where that is empty. A list without rows is a file without a
/// byte.
void write_csv(const QString& path, const text_table& list, progress* follow = nullptr,
               const QString& number_caption = QStringLiteral("no"));

/// The header cells in row 1, the captions in row 2, the rows from row 3, all of them as text.
void write_workbook(const QString& path, const QStringList& header, const text_table& list,
                    progress* follow = nullptr);

} // namespace orvo

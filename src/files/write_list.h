#pragma once

#include "db/connection.h"
#include "files/text_table.h"

namespace orvo {

// Both write beside the file of that name and give it the name at the end: after a failure the name holds
// what it held before. They throw db_failure, of which the text is a sentence for the operator: disk_full,
// cancelled where the progress said so, or other.

enum class csv_encoding {
    utf8, ///< with a byte-order mark
    cp949 ///< for readers that know no other
};

/// Captions and rows as lines. Each row begins with its number under `number_caption`, or with its first cell
/// where that is empty. A list without rows is a file without a byte. Returns the number of characters that
/// the encoding lacks, in whose place stands "?".
///
/// No cell is quoted, and none shifts its neighbours or is run where the file is read: see csv_cell.h.
qint64 write_csv(const QString& path, const text_table& list, progress* follow = nullptr,
                 const QString& number_caption = QStringLiteral("no"),
                 csv_encoding encoding = csv_encoding::utf8);

/// The header cells in row 1, the captions in row 2, the rows from row 3, all of them as text.
void write_workbook(const QString& path, const QStringList& header, const text_table& list,
                    progress* follow = nullptr);

} // namespace orvo

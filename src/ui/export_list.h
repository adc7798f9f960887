#pragma once

#include "files/text_table.h"

class QMenu;

namespace orvo {

class client;

/// Asks for a file and writes the list as lines with commas. Tells how it went; a failure goes to the shared
/// error box. `number_caption`: see write_csv.
void export_csv(client& c, const text_table& list, const QString& number_caption = QStringLiteral("no"));

/// Asks for a file and writes the list as a workbook, the header cells in its first row. Tells how it went; a
/// failure is told by its text.
void make_excel_file(client& c, const QStringList& header, const text_table& list);

/// The commands by which any list is written. `list` is asked when one of them is chosen.
void add_export_actions(QMenu& to, client& c, std::function<text_table()> list);

} // namespace orvo

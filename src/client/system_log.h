#pragma once

#include "client/program_folder.h"

#include <QDateTime>

namespace orvo {

/// Appends "mm/dd/yy hh:mm:ss - text" to "SystemLog.txt" in the program folder. A log that cannot be written
/// is no concern of the operator's: the caller never learns of it.
void write_system_log(const program_folder& folder, const QDateTime& now, const QString& text);

} // namespace orvo

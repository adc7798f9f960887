#pragma once

#include "db/connection.h"

#include <QString>

namespace orvo {

/// The classes of a workplace under its part, and those under such a class, from the workstation's mirror.
rows read_great_divisions(connection& local, const QString& code_part);
rows read_small_divisions(connection& local, const QString& code_part, const QString& code_great);

} // namespace orvo

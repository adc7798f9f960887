#pragma once

#include "db/engine.h"
#include "db/failure.h"

namespace orvo {

/// Why a table cannot be read or written.
enum class hindrance { no_table, no_right, other };

hindrance hindrance_of(engine kind, const db_failure& failure);

} // namespace orvo

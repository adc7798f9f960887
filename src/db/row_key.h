#pragma once

#include "db/cell.h"
#include "db/schema/schema.h"

#include <optional>
#include <string>

namespace orvo {

/// Reads a code table whole, its columns in their order.
std::string codes_text(const table& codes);

/// The numbers by which a code table knows a row, whose fields come in the order of the table's columns.
/// Nothing where one of them is missing: a row without a code cannot be chosen.
std::optional<std::vector<std::string>> code_of(const table& codes, std::span<const cell> row);

} // namespace orvo

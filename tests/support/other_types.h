#pragma once

#include "support/test_register.h"

namespace orvo {

/// The register past the client's own layer, for what its statements cannot do: on SQL Server the files of
/// the test's server.
connection beneath(const test_register& its);

/// Gives a table of the register, with what it holds, the types that other registers have: texts of a fixed
/// width, filled up with blanks, numbers with decimals; no keys.
void give_other_types(const test_register& its, std::string_view table);

} // namespace orvo

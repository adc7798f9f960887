#pragma once

#include "driven_program.h"

#include <functional>

namespace orvo::bench {

/// Opens the registration form by its command, each time in place of the one before; then, for the floor, a
/// window of the same controls with nothing in them, and an empty window. `add` gets who was opened
/// ("client", "floor", "empty") and the milliseconds from the request to nothing being left to lay out, paint
/// or delete.
void open_forms(driven_program& client, watched_application& app, int times,
                const std::function<void(const char* who, double took)>& add);

} // namespace orvo::bench

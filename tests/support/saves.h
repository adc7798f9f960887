#pragma once

#include "client/save.h"

#include <functional>
#include <vector>

namespace orvo {

/// A save of the association: what the register holds before it, and what it stores.
struct save_under_test {
    const char* name;
    std::function<void(connection&)> prepare;
    std::function<planned_save(connection&)> plan;
    int statements; ///< that reach the register, and how often its client waits for them
    int waits;
};

/// All of them, for member 9001011234568 and the day 2026-11-22.
const std::vector<save_under_test>& saves_under_test();

} // namespace orvo

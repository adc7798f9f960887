#pragma once

#include "save_floor.h"

#include "client/client.h"

#include <functional>

namespace orvo::bench {

/// "registration", "payment" or "change" as the screens do it once the operator's input stands: ready to run.
/// The values are those that the floor stores.
std::function<void()> client_save(client& c, const std::string& save, const member_year& whose);

} // namespace orvo::bench

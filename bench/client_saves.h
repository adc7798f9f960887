#pragma once

#include "save_floor.h"

#include "client/client.h"
#include "members/rules/registration.h"

#include <functional>

namespace orvo::bench {

/// All that a form can hold, but for the member's number: the dates of a payment, a pledge and a workplace.
new_member filled_form();

/// "registration", "payment" or "change" as the screens do it once the operator's input stands: ready to run.
/// The values are those that the floor stores.
std::function<void()> client_save(client& c, const std::string& save, const member_year& whose);

} // namespace orvo::bench

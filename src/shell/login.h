#pragma once

#include "client/client.h"

namespace orvo {

/// Asks the server for the operator, the texts as typed, and takes name, branch and rights into the session.
/// False where no operator has that id and password.
bool log_in(client& c, const QString& id, const QString& password);

} // namespace orvo

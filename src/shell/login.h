#pragma once

#include "client/client.h"

namespace orvo {

/// Asks the server for the operator, the texts as typed, and takes name, branch and rights into the session.
/// False where no operator has that id and password.
bool log_in(client& c, const QString& id, const QString& password);

/// The name of the operator's branch, from the mirror of the code tables; empty where it does not know it.
/// Of a branch that is none, whose operator finds nobody, what is wrong with it.
QString session_branch_name(client& c);

} // namespace orvo

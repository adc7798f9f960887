#pragma once

#include "client/client.h"

namespace orvo {

/// Asks the server for the operator, the texts as typed, and takes name, branch and rights into the session.
/// False where no operator has that id and password.
bool log_in(client& c, const QString& id, const QString& password);

class login_attempts;

enum class login_answer { welcome, refused, too_early };

/// The same for who sits at the dialog: not before the id's wrong passwords allow it, and written down.
login_answer try_to_log_in(client& c, login_attempts& attempts, const QString& id, const QString& password);

/// The name of the operator's branch, from the mirror of the code tables; empty where it does not know it.
/// Of a branch that is none, whose operator finds nobody, what is wrong with it.
QString session_branch_name(client& c);

} // namespace orvo

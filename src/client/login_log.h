#pragma once

#include "client/program_folder.h"

#include <QDateTime>

namespace orvo {

enum class login_event {
    success,
    refused,
    slowed ///< the next try has to wait
};

/// Appends "yyyy-mm-dd hh:mm:ss event id" to "login.log" in the program folder, which only its owner can
/// read. No password is ever written there: where nobody has that id, which is then often a password in the
/// wrong field, `id` is empty and "unknown" stands for it. Like the system log, it troubles nobody when it
/// cannot be written.
void write_login_log(const program_folder& folder, const QDateTime& now, login_event what, const QString& id);

} // namespace orvo

#pragma once

#include "db/connection.h"

#include <QString>

namespace orvo {

/// The lists of the member console, from the workstation's mirror of the code tables, in the order of their
/// reading.
struct member_choices {
    rows branches;
    rows divisions;
    rows schools;
    rows affiliated_bodies;
    rows contractors;
    rows religions;
    rows educations;
    rows degrees;
};

member_choices read_console_choices(connection& local);

/// The sub-branches under a branch and a division; none where one of the two is unknown or not chosen.
rows read_sections(connection& local, const QString& code_bran, const QString& code_big);

} // namespace orvo

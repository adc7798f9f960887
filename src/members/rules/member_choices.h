#pragma once

#include "db/connection.h"

#include <QString>

namespace orvo {

/// The lists of a member's own data, from the workstation's mirror of the code tables.
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

/// What a workplace is chosen from, beside its classes.
struct workplace_choices {
    rows job_lines;
    rows job_levels;
    rows uses;
};

struct registration_choices {
    member_choices member;
    workplace_choices workplace;
    rows member_kinds;
    rows receipt_places;
};

member_choices read_console_choices(connection& local);
registration_choices read_registration_choices(connection& local);
/// The lists of the dialogs that add and change a workplace.
workplace_choices read_workplace_choices(connection& local);

/// The sub-branches under a branch and a division. What is missing is the refusal for an operator who picks.
struct section_choices {
    rows sections;
    QString refusal;
};
section_choices read_sections(connection& local, const QString& code_bran, const QString& code_big);

} // namespace orvo

#pragma once

#include "client/save.h"
#include "members/rules/member_data.h"

namespace orvo {

/// What must be filled in before a change is saved, in the order of the form's questions. Kind and sub-branch
/// are not asked for: members of old registrations have none; nor is a telephone that is kept as it is
/// stored.
std::optional<refusal> check_edited_member(const member_data& typed, bool keeps_telephone);

/// The columns of `person_m_tbl` that a change writes, in their order, as the form holds them.
std::vector<column_value> edited_columns(const member_data& typed, const QString& today);

/// What a change writes where the form cannot show all that is stored (a telephone number of odd length, a
/// code without a name): the stored value, unless the operator touched the field or the code above it.
/// `untouched` is what the form held when it had just shown the row.
std::vector<column_value> keep_what_cannot_be_shown(const std::vector<column_value>& typed,
                                                    const std::vector<column_value>& untouched,
                                                    const rows::row& stored);

/// Whether a change takes the member to a branch whose members the operator does not see.
bool leaves_what_is_seen(const std::vector<column_value>& typed, const rows::row& stored,
                         const QString& session_branch);

/// Whether the home telephone is one that the form cannot show and nobody touched.
bool keeps_telephone(const member_data& typed, const std::vector<column_value>& untouched,
                     const rows::row& stored);

/// A column in which the register is newer than what the form was filled from.
struct newer_value {
    QString column;
    QString on_server;
    QString seen; ///< when the form was filled
};

/// The member's row on the server as it is now; nothing where he was deleted meanwhile.
question<std::optional<rows>> row_on_server(const QString& pers_no);

/// What another workstation has changed since `seen` was read, among the columns that a change writes. The
/// date of the last change is none of them.
std::vector<newer_value> newer_values(const rows::row& on_server, const rows::row& seen,
                                      const std::vector<column_value>& written);

/// Writes the columns to the register and to the workstation's copy, and takes the member's number through
/// the tables that hold it. The walk stops short of credits, certificates, the hygiene list's number and the
/// web login's own number: as in use, must not change. `before`: what the row held when it was shown.
planned_save change_member(const QString& selected_pers_no, const std::vector<column_value>& columns,
                           const QString& id, const QString& passwd, const values& before);

/// How many rows of a member a deletion takes away, by what operators call them.
struct rows_to_go {
    QString what;
    qint64 count = 0;
};
std::vector<rows_to_go> what_a_deletion_takes(connection& db, const QString& pers_no);

/// Deletes the member from the register. Pledge and instalments stay for good, and so does the workstation's
/// copy until the next search: as in use, must not change.
planned_save delete_member(const QString& pers_no, const QString& pers_name);

extern const save_act member_changed, member_deleted;

} // namespace orvo

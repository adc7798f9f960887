#pragma once

#include "client/save.h"
#include "members/rules/member_data.h"

namespace orvo {

/// What the registration form holds when a new member is saved. A web login typed there is not part of it:
/// the member's `id_tbl` row comes into being, empty, when the console first opens him.
struct new_member {
    member_data member;
    QString code_member;    ///< the member kind
    QString mem_dues;       ///< the dues of the year, in won
    QString agree_pay;      ///< paid on the spot
    QString dues_in;        ///< pledged for life; empty: no pledge
    QString pers_mem_day;   ///< paid to head office
    QString pers_mem_b_day; ///< paid to the branch
    QString code_receipt;   ///< place of payment
    workplace_data workplace;
};

/// What must be filled in before a member can be registered, in the order of the form's questions.
std::optional<refusal> check_member(const new_member& typed);

/// Whether the register has a member of that resident number.
bool is_registered(connection& db, const QString& pers_no);

/// The member, the dues of this year, the payment if both its dates are there, the pledge of a lifetime fee
/// and the workplace as far as they are filled in: what is not is remarked. `today` is "yyyymmdd".
planned_save register_member(const new_member& typed, const QString& today);

extern const save_act registration_act;

/// What a pick in the list of member kinds proposes as dues, in won; nothing for a kind without fees.
std::optional<QString> dues_of_kind(connection& local, const QString& code_member);

} // namespace orvo

#pragma once

#include "db/save_steps.h"
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

/// The member, the dues of this year, and the payment if both its dates are there. `today` is "yyyymmdd".
void store_member(save_steps& save, const new_member& typed, const QString& today);
/// The pledge of a lifetime fee, nothing of it paid. Any kind of member can make one.
void store_pledge(save_steps& save, const new_member& typed, const QString& today);
void store_workplace(save_steps& save, const new_member& typed, const QString& today);

/// What a pick in the list of member kinds proposes as dues, in won; nothing for a kind without fees.
std::optional<QString> dues_of_kind(connection& local, const QString& code_member);

} // namespace orvo

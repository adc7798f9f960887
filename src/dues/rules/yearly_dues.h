#pragma once

#include "dues/rules/settlement.h"

#include <optional>

namespace orvo {

/// What a member owes for a year: `dues_h_tbl`. Amounts in won.
struct dues_header {
    QString code_member;
    qint64 mem_dues = 0;
    qint64 yet_money = 0; ///< negative after an overpayment
};

/// The member kinds with their fees, by `mem_kind` and `code_member`.
question<rows> member_kinds();
/// The fee of a kind, in won; nothing where the fee table has no such kind.
std::optional<QString> fee_of_kind(connection& db, const QString& code_member);

question<std::optional<dues_header>> header_of(const dues_year& year);

/// The member's name by the copy of the last search; empty where he is not in it.
QString member_name(connection& local, const QString& pers_no);

/// Opens the year with nothing paid, and makes its kind the member's, in this workstation's copy too. An
/// amount in whole won; `today` is "yyyymmdd". No kind chosen is an empty code.
planned_save add_year(const dues_year& year, const QString& code_member, const QString& mem_dues,
                      const QString& today);
/// Changes kind and amount of the year, and makes the kind the member's, even that of a year long gone.
/// `before`: the year as it was read.
planned_save change_year(const dues_year& year, const QString& code_member, const QString& mem_dues,
                         const QString& today, const dues_header& before);
/// Takes the year with all its payments.
planned_save delete_year(const dues_year& year);

extern const save_act year_added, year_changed, year_deleted;

} // namespace orvo

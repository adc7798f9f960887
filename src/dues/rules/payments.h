#pragma once

#include "dues/rules/settlement.h"

#include <optional>

namespace orvo {

/// A line of `dues_b_tbl`. Dates are "yyyymmdd", or as much of one as was chosen; the amount is whole won.
struct payment {
    QString pers_mem_day;   ///< received by head office
    QString pers_mem_b_day; ///< received by a branch
    QString pres_money;
    QString code_receipt; ///< place of payment; empty where none is chosen
};

/// The places of payment, by `receipt_name` and `code_receipt`.
question<rows> receipt_places();

/// Nothing where the line is gone.
question<std::optional<payment>> payment_of(const QString& pers_no, const QString& dues_id);

struct payments_of_year {
    qsizetype count = 0;
    qint64 sum = 0; ///< won
};
question<payments_of_year> payments_in(const dues_year& year);

/// The numbers of the year's payments, as a new one needs them.
question<QString> payment_ids_in(const dues_year& year);

// Each of these settles the year behind its own step.

/// `known_ids`: of the payments that the year has had before.
planned_save add_payment(const dues_year& year, const QString& code_member, const payment& paid,
                         const QString& today, const QString& known_ids);
/// `before`: the payment as it was read.
planned_save change_payment(const dues_year& year, const QString& dues_id, const payment& paid,
                            const QString& today, const payment& before);
planned_save delete_payment(const dues_year& year, const QString& dues_id);

extern const save_act payment_added, payment_changed, payment_deleted;

} // namespace orvo

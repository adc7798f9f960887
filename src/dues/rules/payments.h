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

// Each of these settles the year behind its own step.
void add_payment(save_steps& save, const dues_year& year, const QString& code_member, const payment& paid,
                 const QString& today);
void change_payment(save_steps& save, const dues_year& year, const QString& dues_id, const payment& paid,
                    const QString& today);
void delete_payment(save_steps& save, const dues_year& year, const QString& dues_id);

} // namespace orvo

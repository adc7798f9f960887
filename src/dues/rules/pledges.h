#pragma once

#include "client/save.h"

#include <optional>
#include <vector>

namespace orvo {

/// What a member promised: `contract`, of which the first row counts. Amounts in won.
struct member_pledge {
    QString con_day; ///< "yyyymmdd", by which the instalments name it
    qint64 con_amount = 0;
    qint64 con_money = 0; ///< the sum of the instalments
    bool is_given_up = false;
};

/// A payment towards a pledge: `contract_list`. The date is "yyyymmdd", the amount whole won.
struct instalment {
    QString con_date;
    QString con_money;
    QString con_id = {}; ///< empty for one that is not stored yet
};

/// The instalment that is chosen in the console.
struct chosen_instalment {
    QString pers_no;
    QString con_date; ///< as it is stored
    QString con_id;
};

question<std::optional<member_pledge>> pledge_of(const QString& pers_no);

/// The instalments of the member on the day of the chosen one, in the server's order.
question<std::vector<instalment>> instalments_of_day(const chosen_instalment& chosen);
/// That of the chosen number among them; null where it is gone.
const instalment* chosen_among(const std::vector<instalment>& of_day, const chosen_instalment& chosen);

/// The numbers of the member's instalments, as a new one needs them.
question<QString> instalment_ids_of(const QString& pers_no);

/// The pledge of a member who has none: made today, over that amount, running, nothing paid.
planned_save add_pledge(const QString& pers_no, const QString& con_amount, const QString& today);

// Each of these brings the pledge's sum in step with all its instalments behind its own step.

/// `known_ids`: of the instalments that the member has had before.
planned_save add_instalment(const QString& pers_no, const QString& con_day, const instalment& paid,
                            const QString& known_ids);
/// `give_up` is the code of the choice: "1" gives the pledge up, "0" sets it running. `con_money_before`: the
/// amount as it was read.
planned_save change_instalment(const chosen_instalment& chosen, const instalment& paid,
                               const QString& give_up, const QString& con_money_before);
planned_save delete_instalment(const chosen_instalment& chosen);

extern const save_act pledge_added, instalment_added, instalment_changed, instalment_deleted;

} // namespace orvo

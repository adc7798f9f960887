#pragma once

#include "client/save.h"

namespace orvo {

/// A member's year of dues. The text of the year is that of the row last clicked in the console; empty where
/// none was.
struct dues_year {
    QString pers_no;
    QString val_year;
};

/// What the lines of the year come to, in won. Lines are matched by the text of the year alone, so what a
/// lifetime member paid at registration ("평생회원") counts to no year.
question<qint64> paid_for(const dues_year& year);

/// Puts the balance of the year and its mark of being paid in step with its lines, as the last step of every
/// save that changed one. From all lines, not by the difference: so it also mends what a broken save left
/// behind. A year that has no header is left alone.
/// Of the year that `selected_pers_no` and `cur_val_year` name.
void settle(save& of);

} // namespace orvo

#include "dues/rules/settlement.h"

namespace orvo {

qint64 paid_for(save_steps& save, const QString& for_step, const dues_year& year)
{
    const rows sum = save.read(for_step,
                               "select sum(pres_money) as tot_money from dues_b_tbl "
                               "where pers_no='{selected_pers_no}' and val_year='{year}'",
                               {{"selected_pers_no", year.pers_no}, {"year", year.val_year}});
    return sum.front().number("tot_money"); // a null where there is no line
}

void settle(save_steps& save, const dues_year& year)
{
    const QString step = QStringLiteral("미수금");
    const qint64 paid = paid_for(save, step, year);
    const rows header =
        save.read(step, "select * from dues_h_tbl where pers_no='{selected_pers_no}' and val_year='{year}'",
                  {{"selected_pers_no", year.pers_no}, {"year", year.val_year}});
    if (header.empty())
        return;
    const qint64 balance = header.front().number("mem_dues") - paid;
    save.write(step,
               balance <= 0 ? "update dues_h_tbl set yet_money='{balance}',incom_flag='1' where "
                              "pers_no='{selected_pers_no}' and val_year='{year}'"
                            : "update dues_h_tbl set yet_money='{balance}',incom_flag='0' where "
                              "pers_no='{selected_pers_no}' and val_year='{year}'",
               {{"balance", balance}, {"selected_pers_no", year.pers_no}, {"year", year.val_year}});
}

} // namespace orvo

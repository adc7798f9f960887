#include "dues/rules/settlement.h"

#include <optional>

namespace orvo {

namespace {

/// What is owed for the year, in won; nothing where it has no header.
question<std::optional<qint64>> owed_for(const dues_year& year)
{
    return {{"select * from dues_h_tbl where pers_no='{selected_pers_no}' and val_year='{year}'",
             {{"selected_pers_no", year.pers_no}, {"year", year.val_year}}},
            [](const rows& header) -> std::optional<qint64> {
                if (header.empty())
                    return {};
                return header.front().number("mem_dues");
            }};
}

} // namespace

question<qint64> paid_for(const dues_year& year)
{
    return {{"select sum(pres_money) as tot_money from dues_b_tbl "
             "where pers_no='{selected_pers_no}' and val_year='{year}'",
             {{"selected_pers_no", year.pers_no}, {"year", year.val_year}}},
            // a null where there is no line
            [](const rows& sum) { return sum.front().number("tot_money"); }};
}

void settle(save& of)
{
    constexpr save_step step{"balance", "미수금"};
    const dues_year year{of.given("selected_pers_no"), of.given("cur_val_year")};
    const auto [paid, owed] = of.ask_together(step, paid_for(year), owed_for(year));
    if (!owed)
        return;
    const qint64 balance = *owed - paid;
    of.write(step,
             balance <= 0 ? "update dues_h_tbl set yet_money='{balance}',incom_flag='1' where "
                            "pers_no='{selected_pers_no}' and val_year='{cur_val_year}'"
                          : "update dues_h_tbl set yet_money='{balance}',incom_flag='0' where "
                            "pers_no='{selected_pers_no}' and val_year='{cur_val_year}'",
             {{"balance", balance}});
}

} // namespace orvo

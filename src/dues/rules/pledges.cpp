#include "dues/rules/pledges.h"

#include <algorithm>

namespace orvo {

namespace {

const QString sum_step = QStringLiteral("총입금액");

/// What the member's instalments come to, in won.
question<qint64> paid_so_far(const QString& pers_no)
{
    return {{"select sum(con_money) as tot_money from contract_list where pers_no='{selected_pers_no}'",
             {{"selected_pers_no", pers_no}}},
            // a null where there is no instalment
            [](const rows& sum) { return sum.front().number("tot_money"); }};
}

void sum_up(save_steps& save, const QString& pers_no)
{
    const qint64 sum = save.ask(sum_step, paid_so_far(pers_no));
    save.write(sum_step, "update contract set con_money='{sum}' where pers_no='{selected_pers_no}'",
               {{"sum", sum}, {"selected_pers_no", pers_no}});
}

} // namespace

question<std::optional<member_pledge>> pledge_of(const QString& pers_no)
{
    return {{"select * from contract where pers_no='{selected_pers_no}'", {{"selected_pers_no", pers_no}}},
            [](const rows& found) -> std::optional<member_pledge> {
                if (found.empty())
                    return {};
                const auto first = found.front();
                return member_pledge{first.text("con_day"), first.number("con_amount"),
                                     first.number("con_money"), first.number("con_finish") != 0};
            }};
}

question<std::vector<instalment>> instalments_of_day(const chosen_instalment& chosen)
{
    return {{"select * from contract_list where pers_no='{selected_pers_no}' and con_date='{cur_con_date}'",
             {{"selected_pers_no", chosen.pers_no}, {"cur_con_date", chosen.con_date}}},
            [](const rows& found) {
                std::vector<instalment> all;
                for (const auto row : found)
                    all.push_back(
                        {row.text("con_date"), QString::number(row.number("con_money")), row.text("con_id")});
                return all;
            }};
}

const instalment* chosen_among(const std::vector<instalment>& of_day, const chosen_instalment& chosen)
{
    const auto found = std::ranges::find(of_day, chosen.con_id, &instalment::con_id);
    return found == of_day.end() ? nullptr : &*found;
}

void add_pledge(save_steps& save, const QString& pers_no, const QString& con_amount, const QString& today)
{
    save.write(QStringLiteral("약정"),
               "insert into contract(con_day,pers_no,con_amount,con_money,con_check,con_finish) values ("
               "'{today}','{selected_pers_no}','{str_txt}','0','0','0')",
               {{"today", today}, {"selected_pers_no", pers_no}, {"str_txt", con_amount}});
}

void add_instalment(save_steps& save, const QString& pers_no, const QString& con_day, const instalment& paid)
{
    save.write(QStringLiteral("약정 입금"),
               "insert into contract_list (con_day,con_date,pers_no,con_money) values ("
               "'{con_day}' ,'{con_date}','{selected_pers_no}','{str_txt}')",
               {{"con_day", con_day},
                {"con_date", paid.con_date},
                {"selected_pers_no", pers_no},
                {"str_txt", paid.con_money}});
    sum_up(save, pers_no);
}

void change_instalment(save_steps& save, const chosen_instalment& chosen, const instalment& paid,
                       const QString& give_up)
{
    save.write(QStringLiteral("약정 입금 변경"),
               "update contract_list set con_date='{date}' ,con_money='{str_txt}' "
               "where pers_no='{selected_pers_no}' and con_date='{cur_con_date}' and con_id='{cur_con_id}' ",
               {{"date", paid.con_date},
                {"str_txt", paid.con_money},
                {"selected_pers_no", chosen.pers_no},
                {"cur_con_date", chosen.con_date},
                {"cur_con_id", chosen.con_id}});
    const QString step = QStringLiteral("총입금액과 약정상태");
    const qint64 sum = save.ask(step, paid_so_far(chosen.pers_no));
    save.write(
        step,
        "update contract set con_money='{sum}',con_finish='{give_up}' where pers_no='{selected_pers_no}'",
        {{"sum", sum}, {"give_up", give_up}, {"selected_pers_no", chosen.pers_no}});
}

void delete_instalment(save_steps& save, const chosen_instalment& chosen)
{
    save.write(QStringLiteral("약정 입금 삭제"),
               "delete from contract_list where pers_no='{selected_pers_no}' and con_date='{cur_con_date}' "
               "and con_id='{cur_con_id}'",
               {{"selected_pers_no", chosen.pers_no},
                {"cur_con_date", chosen.con_date},
                {"cur_con_id", chosen.con_id}});
    sum_up(save, chosen.pers_no);
}

} // namespace orvo

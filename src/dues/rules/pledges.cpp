#include "dues/rules/pledges.h"

#include <algorithm>

namespace orvo {

namespace {

/// What the member's instalments come to, in won.
question<qint64> paid_so_far(const QString& pers_no)
{
    return {{"select sum(con_money) as tot_money from contract_list where pers_no='{selected_pers_no}'",
             {{"selected_pers_no", pers_no}}},
            // a null where there is no instalment
            [](const rows& sum) { return sum.front().number("tot_money"); }};
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

question<QString> instalment_ids_of(const QString& pers_no)
{
    return {
        {"select * from contract_list where pers_no='{selected_pers_no}'", {{"selected_pers_no", pers_no}}},
        [](const rows& found) { return keys_of(found, "con_id"); }};
}

namespace {

void sum_up(save& of)
{
    constexpr save_step step{"sum", "총입금액"};
    const qint64 sum = of.ask(step, paid_so_far(of.given("selected_pers_no")));
    of.write(step, "update contract set con_money='{sum}' where pers_no='{selected_pers_no}'",
             {{"sum", sum}});
}

void store_pledge(save& of)
{
    of.write_once(
        {"pledge", "약정"},
        "insert into contract(con_day,pers_no,con_amount,con_money,con_check,con_finish) values ("
        "'{today}','{selected_pers_no}','{str_txt}','0','0','0')",
        {"select con_day from contract where pers_no='{selected_pers_no}' and con_day='{today}' and "
         "con_amount='{str_txt}'",
         "con_day"});
}

void store_new(save& of)
{
    of.write_once(
        {"instalment", "약정 입금"},
        "insert into contract_list (con_day,con_date,pers_no,con_money) values ("
        "'{con_day}' ,'{con_date}','{selected_pers_no}','{str_txt}')",
        {"select con_id from contract_list where pers_no='{selected_pers_no}' and con_day='{con_day}' "
         "and con_date='{con_date}' and con_money='{str_txt}'",
         "con_id"});
    sum_up(of);
}

void store_changed(save& of)
{
    of.write({"instalment", "약정 입금 변경"},
             "update contract_list set con_date='{date}' ,con_money='{str_txt}' "
             "where pers_no='{selected_pers_no}' and con_date='{cur_con_date}' and con_id='{cur_con_id}' ");
    constexpr save_step step{"sum", "총입금액과 약정상태"};
    const qint64 sum = of.ask(step, paid_so_far(of.given("selected_pers_no")));
    of.write(
        step,
        "update contract set con_money='{sum}',con_finish='{give_up}' where pers_no='{selected_pers_no}'",
        {{"sum", sum}});
}

void store_deleted(save& of)
{
    of.write({"instalment", "약정 입금 삭제"},
             "delete from contract_list where pers_no='{selected_pers_no}' and con_date='{cur_con_date}' "
             "and con_id='{cur_con_id}'");
    sum_up(of);
}

constexpr changed_record the_instalment{
    "select * from contract_list where pers_no='{selected_pers_no}' and con_id='{cur_con_id}'", [] {
        return std::vector<changed_record::field>{{"con_date", "date"}, {"con_money", "str_txt"}};
    }};

values slots_of(const chosen_instalment& chosen)
{
    return {{"selected_pers_no", chosen.pers_no},
            {"cur_con_date", chosen.con_date},
            {"cur_con_id", chosen.con_id}};
}

} // namespace

const save_act pledge_added{"pledge added", "약정액 추가", store_pledge};
const save_act instalment_added{"instalment added", "약정 입금 추가", store_new};
const save_act instalment_changed{"instalment changed", "약정액 수정", store_changed, &the_instalment};
const save_act instalment_deleted{"instalment deleted", "약정액 삭제", store_deleted};

planned_save add_pledge(const QString& pers_no, const QString& con_amount, const QString& today)
{
    return {
        &pledge_added, pers_no, {{"today", today}, {"selected_pers_no", pers_no}, {"str_txt", con_amount}}};
}

planned_save add_instalment(const QString& pers_no, const QString& con_day, const instalment& paid,
                            const QString& known_ids)
{
    return {&instalment_added,
            pers_no,
            {{"con_day", con_day},
             {"con_date", paid.con_date},
             {"selected_pers_no", pers_no},
             {"str_txt", paid.con_money}},
            {{"con_id", known_ids}}};
}

planned_save change_instalment(const chosen_instalment& chosen, const instalment& paid,
                               const QString& give_up, const QString& con_money_before)
{
    values given = slots_of(chosen);
    given.add(values{{"date", paid.con_date}, {"str_txt", paid.con_money}, {"give_up", give_up}});
    return {&instalment_changed,
            chosen.pers_no,
            given,
            {{"con_date", chosen.con_date}, {"con_money", con_money_before}}};
}

planned_save delete_instalment(const chosen_instalment& chosen)
{
    return {&instalment_deleted, chosen.pers_no, slots_of(chosen)};
}

} // namespace orvo

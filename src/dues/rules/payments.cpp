#include "dues/rules/payments.h"

namespace orvo {

question<rows> receipt_places()
{
    return {{"select * from receipt_place"}, std::identity{}};
}

question<std::optional<payment>> payment_of(const QString& pers_no, const QString& dues_id)
{
    return {{"select * from dues_b_tbl where pers_no='{selected_pers_no}' and dues_id='{cur_dues_id}'",
             {{"selected_pers_no", pers_no}, {"cur_dues_id", dues_id}}},
            [](const rows& found) -> std::optional<payment> {
                if (found.empty())
                    return {};
                const auto line = found.front();
                return payment{line.text("pers_mem_day"), line.text("pers_mem_b_day"),
                               QString::number(line.number("pres_money")), line.text("code_receipt")};
            }};
}

question<payments_of_year> payments_in(const dues_year& year)
{
    return {{"select * from dues_b_tbl where pers_no='{selected_pers_no}' and val_year='{cur_val_year}'",
             {{"selected_pers_no", year.pers_no}, {"cur_val_year", year.val_year}}},
            [](const rows& lines) {
                payments_of_year all;
                for (const auto line : lines) {
                    ++all.count;
                    all.sum += line.number("pres_money");
                }
                return all;
            }};
}

void add_payment(save_steps& save, const dues_year& year, const QString& code_member, const payment& paid,
                 const QString& today)
{
    save.write(QStringLiteral("회비 입금"),
               "insert into dues_b_tbl("
               "pers_no,code_member,val_year,"
               "pers_mem_day,pers_mem_b_day,pres_money,"
               "code_receipt,pres_let_day) values ("
               "'{selected_pers_no}','{cur_code_member}','{cur_val_year}','{day}','{bday}','{str_txt}',"
               "'{code}','{today}')",
               {{"selected_pers_no", year.pers_no},
                {"cur_code_member", code_member},
                {"cur_val_year", year.val_year},
                {"day", paid.pers_mem_day},
                {"bday", paid.pers_mem_b_day},
                {"str_txt", paid.pres_money},
                {"code", paid.code_receipt},
                {"today", today}});
    settle(save, year);
}

void change_payment(save_steps& save, const dues_year& year, const QString& dues_id, const payment& paid,
                    const QString& today)
{
    save.write(QStringLiteral("입금 변경"),
               "update dues_b_tbl set pers_mem_day='{day}' ,pers_mem_b_day='{bday}' ,pres_money='{str_txt}',"
               "code_receipt='{code}',pres_let_day='{today}' "
               "where pers_no='{selected_pers_no}' and dues_id='{cur_dues_id}'",
               {{"day", paid.pers_mem_day},
                {"bday", paid.pers_mem_b_day},
                {"str_txt", paid.pres_money},
                {"code", paid.code_receipt},
                {"today", today},
                {"selected_pers_no", year.pers_no},
                {"cur_dues_id", dues_id}});
    settle(save, year);
}

void delete_payment(save_steps& save, const dues_year& year, const QString& dues_id)
{
    save.write(QStringLiteral("입금 삭제"),
               "delete from dues_b_tbl where pers_no='{selected_pers_no}' and dues_id='{cur_dues_id}'",
               {{"selected_pers_no", year.pers_no}, {"cur_dues_id", dues_id}});
    settle(save, year);
}

} // namespace orvo

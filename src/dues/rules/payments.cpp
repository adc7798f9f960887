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

question<QString> payment_ids_in(const dues_year& year)
{
    return {payments_in(year).asked, [](const rows& lines) { return keys_of(lines, "dues_id"); }};
}

namespace {

values slots_of(const dues_year& year)
{
    return {{"selected_pers_no", year.pers_no}, {"cur_val_year", year.val_year}};
}

void store_new(save& of)
{
    of.write_once(
        {"payment", "회비 입금"},
        "insert into dues_b_tbl("
        "pers_no,code_member,val_year,"
        "pers_mem_day,pers_mem_b_day,pres_money,"
        "code_receipt,pres_let_day) values ("
        "'{selected_pers_no}','{cur_code_member}','{cur_val_year}','{day}','{bday}','{str_txt}',"
        "'{code}','{today}')",
        {"select dues_id from dues_b_tbl where pers_no='{selected_pers_no}' and "
         "code_member='{cur_code_member}' and val_year='{cur_val_year}' and pers_mem_day='{day}' and "
         "pers_mem_b_day='{bday}' and pres_money='{str_txt}' and code_receipt='{code}' and "
         "pres_let_day='{today}'",
         "dues_id"});
    settle(of);
}

void store_changed(save& of)
{
    of.write({"payment", "입금 변경"},
             "update dues_b_tbl set pers_mem_day='{day}' ,pers_mem_b_day='{bday}' ,pres_money='{str_txt}',"
             "code_receipt='{code}',pres_let_day='{today}' "
             "where pers_no='{selected_pers_no}' and dues_id='{cur_dues_id}'");
    settle(of);
}

void store_deleted(save& of)
{
    of.write({"payment", "입금 삭제"},
             "delete from dues_b_tbl where pers_no='{selected_pers_no}' and dues_id='{cur_dues_id}'");
    settle(of);
}

constexpr changed_record the_payment{
    "select * from dues_b_tbl where pers_no='{selected_pers_no}' and dues_id='{cur_dues_id}'", [] {
        return std::vector<changed_record::field>{{"pers_mem_day", "day"},
                                                  {"pers_mem_b_day", "bday"},
                                                  {"pres_money", "str_txt"},
                                                  {"code_receipt", "code"}};
    }};

values slots_of(const payment& paid, const QString& today)
{
    return {{"day", paid.pers_mem_day},
            {"bday", paid.pers_mem_b_day},
            {"str_txt", paid.pres_money},
            {"code", paid.code_receipt},
            {"today", today}};
}

} // namespace

const save_act payment_added{"payment added", "회비납입 추가", store_new};
const save_act payment_changed{"payment changed", "회비납입 수정", store_changed, &the_payment};
const save_act payment_deleted{"payment deleted", "회비납입 삭제", store_deleted};

planned_save add_payment(const dues_year& year, const QString& code_member, const payment& paid,
                         const QString& today, const QString& known_ids)
{
    values given = slots_of(year);
    given.add({"cur_code_member", code_member});
    given.add(slots_of(paid, today));
    return {&payment_added, year.pers_no, given, {{"dues_id", known_ids}}};
}

planned_save change_payment(const dues_year& year, const QString& dues_id, const payment& paid,
                            const QString& today, const payment& before)
{
    values given = slots_of(year);
    given.add({"cur_dues_id", dues_id});
    given.add(slots_of(paid, today));
    return {&payment_changed,
            year.pers_no,
            given,
            {{"pers_mem_day", before.pers_mem_day},
             {"pers_mem_b_day", before.pers_mem_b_day},
             {"pres_money", before.pres_money},
             {"code_receipt", before.code_receipt}}};
}

planned_save delete_payment(const dues_year& year, const QString& dues_id)
{
    values given = slots_of(year);
    given.add({"cur_dues_id", dues_id});
    return {&payment_deleted, year.pers_no, given};
}

} // namespace orvo

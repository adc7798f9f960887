#include "members/rules/registration.h"

#include "base/amount.h"
#include "base/resident_number.h"

#include <algorithm>

namespace orvo {

namespace {

std::vector<column_value> member_row(const new_member& typed, const QString& today)
{
    const member_data& member = typed.member;
    return {{"pers_no", member.pers_no()},
            {"lic_no", member.lic_no},
            {"pers_name", member.pers_name},
            {"pers_sex", flag(member.is_male)},
            {"code_religion", member.code_religion},
            {"pers_marry", member.pers_marry},
            {"code_post", member.code_post},
            {"pers_add", member.pers_add},
            {"pers_tel", joined(member.pers_tel)},
            {"pers_hp", joined(member.pers_hp)},
            {"email", member.email},
            {"code_bran", member.code_bran},
            {"code_big", member.code_big},
            {"code_sect", member.code_sect},
            {"code_scholar", member.code_scholar},
            {"code_univer", member.code_univer},
            {"code_school", member.code_school},
            {"pers_career", member.career_years + member.career_months},
            {"pers_call", member.pers_call},
            {"get_mail_place", member.get_mail_place},
            {"pers_year_pay", or_zero(member.pers_year_pay), true},
            {"code_member", typed.code_member},
            {"regi_date", today},
            {"lic_kind1", flag(member.lic_kind[0])},
            {"lic_kind2", flag(member.lic_kind[1])},
            {"lic_kind3", flag(member.lic_kind[2])},
            {"lic_kind4", flag(member.lic_kind[3])},
            {"lic_kind5", flag(member.lic_kind[4])},
            {"lic_kind6", flag(member.lic_kind[5])},
            {"lic_kind6_no", member.lic_kind6_no},
            {"lic_kind7", flag(member.lic_kind[6])},
            {"lic_kind7_no", member.lic_kind7_no},
            {"lic_pay", or_zero(member.lic_pay), true},
            {"code_deposit", member.code_deposit},
            {"sub_code", member.sub_code}};
}

/// The year under which a payment is entered: that of a lifetime member counts for no single year.
QString year_of_payment(const new_member& typed, const QString& today)
{
    const int kind = typed.code_member.toInt();
    return kind >= 10 && kind <= 13 ? QStringLiteral("평생회원") : today.left(4);
}

void store_payment(save_steps& save, const new_member& typed, const QString& today)
{
    const values given{{"pers_no", typed.member.pers_no()},         {"code_member", typed.code_member},
                       {"val_year", year_of_payment(typed, today)}, {"pers_mem_day", typed.pers_mem_day},
                       {"pers_mem_b_day", typed.pers_mem_b_day},    {"amount", or_zero(typed.agree_pay)},
                       {"code_receipt", typed.code_receipt},        {"today", today}};
    save.write(QStringLiteral("회비 입금"),
               "insert into dues_b_tbl("
               "pers_no,code_member,val_year,"
               "pers_mem_day,pers_mem_b_day,pres_money,"
               "code_receipt,pres_let_day) values ("
               "'{pers_no}','{code_member}','{val_year}','{pers_mem_day}','{pers_mem_b_day}','{amount}',"
               "'{code_receipt}','{today}')",
               given);
    // Without a year: at registration the member has one header, and it is that one.
    const bool in_full = whole_part(typed.agree_pay) >= whole_part(typed.mem_dues);
    save.write(QStringLiteral("미수금"),
               in_full ? "update dues_h_tbl set yet_money=yet_money-{amount},incom_flag='1' where "
                         "pers_no='{pers_no}' and code_member='{code_member}'"
                       : "update dues_h_tbl set yet_money=yet_money-{amount},incom_flag='0' where "
                         "pers_no='{pers_no}' and code_member='{code_member}'",
               given);
}

} // namespace

std::optional<refusal> check_member(const new_member& typed)
{
    const member_data& member = typed.member;
    if (auto why = check_identity(member, &registration::check_pers_no))
        return why;
    if (typed.code_member.isEmpty())
        return refusal{QStringLiteral("회원구분을 선택하세요"), QStringLiteral("mem_kind_cbb")};
    if (member.code_bran.isEmpty())
        return refusal{QStringLiteral("소속지부를 선택하세요"), QStringLiteral("bran_cbb")};
    if (member.code_big.isEmpty())
        return refusal{QStringLiteral("소속분과를 선택하세요"), QStringLiteral("big_cbb")};
    if (member.code_sect.isEmpty())
        return refusal{QStringLiteral("소속분회를 선택하세요"), QStringLiteral("sect_cbb")};
    return check_home_telephone(member);
}

bool is_registered(connection& db, const QString& pers_no)
{
    return !db.read("select * from person_m_tbl where pers_no='{pers_no}'", {{"pers_no", pers_no}}).empty();
}

void store_member(save_steps& save, const new_member& typed, const QString& today)
{
    const std::vector<column_value> row = member_row(typed, today);
    save.write(QStringLiteral("회원"), insert_text("person_m_tbl", row), slot_values(row));
    save.write(QStringLiteral("올해 회비"),
               "insert into dues_h_tbl("
               "pers_no,code_member,val_year,"
               "mem_dues,yet_money,incom_flag,regi_date) values ("
               "'{pers_no}','{code_member}','{val_year}','{mem_dues}','{mem_dues}','0','{today}')",
               {{"pers_no", typed.member.pers_no()},
                {"code_member", typed.code_member},
                {"val_year", today.left(4)},
                {"mem_dues", typed.mem_dues},
                {"today", today}});
    // A single date is a payment that has not come to its end: what was typed of it is not entered.
    if (!typed.pers_mem_day.isEmpty() && !typed.pers_mem_b_day.isEmpty())
        store_payment(save, typed, today);
}

void store_pledge(save_steps& save, const new_member& typed, const QString& today)
{
    save.write(QStringLiteral("약정"),
               "insert into contract(con_day,pers_no,con_amount,con_money,con_check,con_finish) "
               "values ('{today}','{pers_no}','{dues_in}','0','0','0')",
               {{"today", today}, {"pers_no", typed.member.pers_no()}, {"dues_in", typed.dues_in}});
}

void store_workplace(save_steps& save, const new_member& typed, const QString& today)
{
    const std::vector<column_value> row = workplace_columns(typed.member.pers_no(), typed.workplace, today);
    save.write(QStringLiteral("근무처"), insert_text("company", row), slot_values(row));
}

std::optional<QString> dues_of_kind(connection& local, const QString& code_member)
{
    const rows found =
        local.read("select * from money_member where code_member={code}", {{"code", code_member}});
    if (found.empty())
        return {};
    return found.front().text("mem_dues");
}

} // namespace orvo

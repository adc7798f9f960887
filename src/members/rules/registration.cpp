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

/// In front of the slots of the workplace, some of whose columns are called as the member's.
constexpr std::string_view of_workplace = "company.";

void store_payment(save& of)
{
    of.write_once({"payment", "회비 입금"},
                  "insert into dues_b_tbl("
                  "pers_no,code_member,val_year,"
                  "pers_mem_day,pers_mem_b_day,pres_money,"
                  "code_receipt,pres_let_day) values ("
                  "'{pers_no}','{code_member}','{val_year}','{pers_mem_day}','{pers_mem_b_day}','{amount}',"
                  "'{code_receipt}','{today}')",
                  {"select dues_id from dues_b_tbl where pers_no='{pers_no}' and val_year='{val_year}' and "
                   "pers_mem_day='{pers_mem_day}' and pers_mem_b_day='{pers_mem_b_day}' and "
                   "pres_money='{amount}' and pres_let_day='{today}'",
                   "dues_id"});
    // Without a year: at registration the member has one header, and it is that one.
    const bool in_full = of.given("incom_flag") == QLatin1String("1");
    of.write_once(
        {"balance", "미수금"},
        in_full ? "update dues_h_tbl set yet_money=yet_money-{amount},incom_flag='1' where "
                  "pers_no='{pers_no}' and code_member='{code_member}'"
                : "update dues_h_tbl set yet_money=yet_money-{amount},incom_flag='0' where "
                  "pers_no='{pers_no}' and code_member='{code_member}'",
        {"select val_year from dues_h_tbl where pers_no='{pers_no}' and code_member='{code_member}' and "
         "yet_money=mem_dues-{amount} and incom_flag='{incom_flag}'",
         "val_year"});
}

void store_pledge(save& of)
{
    if (of.given("dues_in").isEmpty())
        return of.remark(QStringLiteral("약정은 입력하지 않으셨습니다."));
    of.write_once({"pledge", "약정"},
                  "insert into contract(con_day,pers_no,con_amount,con_money,con_check,con_finish) "
                  "values ('{today}','{pers_no}','{dues_in}','0','0','0')",
                  {"select con_day from contract where pers_no='{pers_no}' and con_day='{today}' and "
                   "con_amount='{dues_in}'",
                   "con_day"});
}

void store_workplace(save& of)
{
    if (of.given("company.company_name").isEmpty())
        return of.remark(QStringLiteral("근무처 내용은 입력하지 않습니다."));
    static const std::string text = insert_text("company", workplace_columns({}, {}, {}), of_workplace);
    of.write_once({"workplace", "근무처"}, text,
                  {"select company_id from company where pers_no='{pers_no}' and "
                   "company_name='{company.company_name}' and regi_date='{today}'",
                   "company_id"});
}

void store_all(save& of)
{
    static const std::string text = insert_text("person_m_tbl", member_row({}, {}));
    of.write_once(
        {"member", "회원"}, text,
        {"select pers_no from person_m_tbl where pers_no='{pers_no}' and pers_name='{pers_name}' and "
         "regi_date='{today}'",
         "pers_no"});
    of.write_once({"year", "올해 회비"},
                  "insert into dues_h_tbl("
                  "pers_no,code_member,val_year,"
                  "mem_dues,yet_money,incom_flag,regi_date) values ("
                  "'{pers_no}','{code_member}','{this_year}','{mem_dues}','{mem_dues}','0','{today}')",
                  {"select val_year from dues_h_tbl where pers_no='{pers_no}' and val_year='{this_year}' and "
                   "code_member='{code_member}'",
                   "val_year"});
    // A single date is not enough: what was typed of the payment is not entered then. As in use; must not
    // change.
    if (!of.given("pers_mem_day").isEmpty() && !of.given("pers_mem_b_day").isEmpty())
        store_payment(of);
    store_pledge(of);
    store_workplace(of);
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

const save_act registration_act{"registration", "회원 등록", store_all};

planned_save register_member(const new_member& typed, const QString& today)
{
    values given = slot_values(member_row(typed, today));
    given.add(values{
        {"today", today},
        {"this_year", today.left(4)},
        {"mem_dues", typed.mem_dues},
        {"val_year", year_of_payment(typed, today)},
        {"pers_mem_day", typed.pers_mem_day},
        {"pers_mem_b_day", typed.pers_mem_b_day},
        {"amount", or_zero(typed.agree_pay)},
        {"incom_flag", flag(whole_part(typed.agree_pay) >= whole_part(typed.mem_dues))},
        {"code_receipt", typed.code_receipt},
        {"dues_in", typed.dues_in},
    });
    given.add(slot_values(workplace_columns(typed.member.pers_no(), typed.workplace, today), of_workplace));
    return {&registration_act, typed.member.pers_no(), given};
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

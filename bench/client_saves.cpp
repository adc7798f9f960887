#include "client_saves.h"

#include "dues/rules/payments.h"
#include "members/rules/member_update.h"

namespace orvo::bench {

namespace {

const QString today = QStringLiteral("20260131");

} // namespace

/// The floor stores the same.
new_member filled_form()
{
    const auto text = [](const char* utf8) { return QString::fromUtf8(utf8); };
    new_member typed;
    member_data& m = typed.member;
    m.lic_no = text("12345");
    m.pers_name = text("홍길순");
    m.code_religion = text("2");
    m.pers_marry = text("미혼");
    m.code_post = text("135080");
    m.pers_add = text("서울 강남구 역삼동 12-3");
    m.pers_tel = {text("02"), text("2123"), text("4567")};
    m.pers_hp = {text("010"), text("1234"), text("5678")};
    m.email = text("hong@example.org");
    m.code_bran = text("1");
    m.code_big = text("2");
    m.code_sect = text("3");
    m.code_scholar = text("1");
    m.code_univer = text("1");
    m.code_school = text("7");
    m.career_years = text("05");
    m.career_months = text("06");
    m.pers_call = text("영양사님");
    m.get_mail_place = text("자택");
    m.pers_year_pay = text("2400");
    m.lic_kind = {true, false, false, true, false, true, false};
    m.lic_kind6_no = text("제6-77호");
    m.lic_pay = text("50000");
    m.code_deposit = text("4");
    m.sub_code = text("5");
    typed.code_member = text("1");
    typed.mem_dues = text("30000");
    typed.agree_pay = text("20000");
    typed.dues_in = text("500000");
    typed.pers_mem_day = text("20260131");
    typed.pers_mem_b_day = text("20260131");
    typed.code_receipt = text("3");
    workplace_data& w = typed.workplace;
    w.company_name = text("한빛병원");
    w.code_part = text("100");
    w.code_great = text("1");
    w.code_small = text("2");
    w.pers_in_date = text("202503");
    w.job_dept = text("영양과");
    w.job_line_code = text("1");
    w.job_level_code = text("2");
    w.code_use = text("1");
    w.code_post = text("135081");
    w.company_add = text("서울 강남구 역삼동 45");
    w.company_tel = text("0225556666");
    w.company_fax = text("0225556667");
    w.meals = {text("100"), text("300"), text("200"), text("0")};
    w.staff = {text("2"), text("3"), text("8")};
    w.company_meal = text("3500");
    w.company_sick_bad = text("120");
    w.pers_multy = text("0");
    w.join_con = text("2");
    w.comp_except = text("1");
    w.primary_flag = text("1");
    return typed;
}

namespace {

/// The form of the turn's member, filled in ahead of the clock.
new_member typed_for(const member_year& whose)
{
    const QString pers_no = QString::fromStdString(whose.pers_no);
    new_member typed = filled_form();
    typed.member.pers_no1 = pers_no.left(6);
    typed.member.pers_no2 = pers_no.mid(6);
    return typed;
}

std::function<void()> registration(client& c, const member_year& whose)
{
    return [&c, typed = typed_for(whose)] {
        if (is_registered(c.db_conn, typed.member.pers_no()))
            qFatal("bench_saves: the number is taken");
        c.begin(register_member(typed, today)).carry_out();
    };
}

std::function<void()> payment_of(client& c, const member_year& whose)
{
    const dues_year year{QString::fromStdString(whose.pers_no), QString::fromStdString(whose.val_year)};
    const payment paid{today, {}, QStringLiteral("20000"), QStringLiteral("3")};
    return [&c, year, code = QString::fromStdString(whose.code_member), paid] {
        c.begin(add_payment(year, code, paid, today, {})).carry_out();
    };
}

std::function<void()> change(client& c, const member_year& whose)
{
    return [&c, member = typed_for(whose).member, pers_no = QString::fromStdString(whose.pers_no)] {
        c.begin(change_member(pers_no, edited_columns(member, today), QStringLiteral("gilsun"),
                              QStringLiteral("5678"), {}))
            .carry_out();
    };
}

} // namespace

std::function<void()> client_save(client& c, const std::string& save, const member_year& whose)
{
    if (save == "registration")
        return registration(c, whose);
    return save == "payment" ? payment_of(c, whose) : change(c, whose);
}

} // namespace orvo::bench

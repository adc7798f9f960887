#include "db/schema/tables.h"

namespace orvo {

using namespace columns;

namespace {

table operators()
{
    return {"admin_tbl",
            {text("admin_id", 40), text("admin_pass", 40), text("log_name", 40), text("log_email", 100),
             text("send_id", 40), number("code_bran"), number("author1"), number("author2"),
             number("author3")},
            {"admin_id"},
            {}};
}

table members()
{
    return {"person_m_tbl", member_columns(), {"pers_no"}, {{"code_bran", "code_big", "code_sect"}}};
}

table web_logins()
{
    return {"id_tbl", {text("pers_no", 13), text("id", 40), text("passwd", 40)}, {"pers_no"}, {{"id"}}};
}

table workplaces()
{
    return {"company",
            {text("pers_no", 13),      text("company_name", 100),    number("code_part"),
             number("code_great"),     number("code_small"),         day("pers_in_date"),
             text("job_dept", 60),     number("job_line_code"),      number("job_level_code"),
             number("code_use"),       text("code_post", 10),        text("company_add", 200),
             text("company_tel", 20),  text("company_fax", 20),      number("company_morning"),
             number("company_midday"), number("company_evening"),    number("company_between"),
             number("company_diet"),   number("company_cook"),       number("company_food"),
             text("company_meal", 20), text("company_sick_bad", 20), number("pers_multy"),
             text("join_con", 20),     text("join_cook", 20),        number("comp_except"),
             day("regi_date"),         day("pers_out_date"),         number("primary_flag"),
             identity("company_id")},
            {"company_id"},
            {{"pers_no", "primary_flag"}}};
}

table yearly_dues()
{
    return {"dues_h_tbl",
            {text("pers_no", 13), number("code_member"), text("val_year", 8), money("mem_dues"),
             money("yet_money"), flag("incom_flag"), day("regi_date")},
            {"pers_no", "val_year"},
            {{"regi_date"}, {"val_year", "code_member"}}};
}

table payments()
{
    return {"dues_b_tbl",
            {text("pers_no", 13), number("code_member"), text("val_year", 8), day("pers_mem_day"),
             day("pers_mem_b_day"), money("pres_money"), number("code_receipt"), day("pres_let_day"),
             identity("dues_id")},
            {"dues_id"},
            {{"pers_no", "val_year"}, {"pers_mem_day"}, {"pers_mem_b_day"}}};
}

table pledges()
{
    return {"contract",
            {day("con_day"), text("pers_no", 13), money("con_amount"), money("con_money"), flag("con_check"),
             flag("con_finish")},
            {"pers_no", "con_day"},
            {},
            true};
}

table instalments()
{
    return {"contract_list",
            {day("con_day"), day("con_date"), text("pers_no", 13), money("con_money"), identity("con_id")},
            {"con_id"},
            {{"pers_no", "con_date"}}};
}

table courses()
{
    return {"education_tbl",
            {flag("edu_kind"), flag("lic_flag"), number("code_season"), number("code_session"),
             number("code_class"), number("code_inst"), flag("center_flag"), text("detail_name", 100),
             text("edu_avg", 10), text("test_avg", 10), text("edu_expense", 20), day("app_date"),
             day("edu_open"), day("edu_close"), text("edu_attendance", 10), text("edu_place", 100),
             flag("csr_flag"), identity("edu_id")},
            {"edu_id"},
            {}};
}

table credit_periods()
{
    return {"std_h_tbl",
            {text("pers_no", 13), text("iss_no", 20), day("s_date"), day("e_date"), number("com_avg"),
             number("etc_avg"), number("yet_avg"), flag("com_flag"), number("center_com_avg"),
             number("center_yet_avg"), number("tot_center_avg"), number("tot_avg"), flag("csr_flag"),
             identity("std_id")},
            {"std_id"},
            {{"pers_no", "csr_flag"}}};
}

table credit_lines()
{
    return {"std_b_tbl",
            {text("pers_no", 13), number("std_id"), flag("center_flag"), number("edu_id"),
             text("detail_name", 100), day("end_day"), number("att_count"), fraction("test_avg"),
             number("code_private"), number("app_avg"), flag("csr_com_flag"), flag("csr_flag"),
             day("submit_day"), flag("att_com_flag"), flag("test_com_flag"), flag("lic_app_flag"),
             number("com_avg"), flag("diet_edu_flag"), identity("app_id")},
            {"app_id"},
            {{"pers_no"}, {"std_id"}, {"edu_id"}}};
}

table certificates()
{
    return {"have_lic_tbl",
            {text("pers_no", 13), flag("csr_flag"), number("iss_no"), flag("get_flag"), text("pers_name", 40),
             text("lic_no", 20), day("val_s_date"), day("val_e_date"), text("etc", 200), day("iss_date"),
             identity("lic_id")},
            {"lic_id"},
            {{"pers_no", "csr_flag"}, {"csr_flag", "iss_no"}, {"val_e_date", "val_s_date"}}};
}

table hygiene_list()
{
    return {"supplement",
            {text("pers_no", 13), text("exe_year", 8), text("pers_name", 40), text("lic_no", 20),
             number("company_id"), number("code_bran"), text("degree", 10), text("place", 100),
             flag("com_flag"), day("edu_date"), text("ep_flag", 10), identity("sup_id")},
            {"sup_id"},
            {{"pers_no", "exe_year"}, {"exe_year", "code_bran"}, {"code_bran", "degree"}}};
}

table address_book()
{
    return {"books_tbl",
            {text("company_name", 100), text("pers_name", 40), text("job_kind", 40), text("code_post", 10),
             text("pers_add", 200), text("pers_add1", 200), flag("book_flag"), identity("b_no")},
            {"b_no"},
            {}};
}

} // namespace

std::vector<column> member_columns()
{
    return {
        text("pers_no", 13),     text("lic_no", 20),       text("pers_name", 40),  flag("pers_sex"),
        number("code_religion"), text("pers_marry", 10),   text("code_post", 10),  text("pers_add", 200),
        text("pers_tel", 20),    text("pers_hp", 20),      text("email", 100),     number("code_bran"),
        number("code_big"),      number("code_sect"),      number("code_scholar"), number("code_univer"),
        number("code_school"),   text("pers_career", 10),  text("pers_call", 40),  text("get_mail_place", 20),
        money("pers_year_pay"),  number("code_member"),    flag("re_edu_flag"),    day("regi_date"),
        flag("bran_calc_flag"),  flag("lic_kind1"),        flag("lic_kind2"),      flag("lic_kind3"),
        flag("lic_kind4"),       flag("lic_kind5"),        flag("lic_kind6"),      text("lic_kind6_no", 20),
        flag("lic_kind7"),       text("lic_kind7_no", 20), money("lic_pay"),       number("code_deposit"),
        number("sub_code")};
}

std::vector<table> server_tables()
{
    std::vector<table> all{operators(),    members(),      web_logins(),   workplaces(),  yearly_dues(),
                           payments(),     pledges(),      instalments(),  courses(),     credit_periods(),
                           credit_lines(), certificates(), hygiene_list(), address_book()};
    for (table& codes : code_tables())
        all.push_back(std::move(codes));
    return all;
}

std::vector<table> mail_tables()
{
    return {{"tbl_tempmail",
             {text("mailto", 200), text("mailfrom", 200), text("subject", 200), text("message", unbounded),
              day("send_date"), text("user_name", 40), number("code_bran"), text("mail_type", 40)},
             {},
             {}}};
}

} // namespace orvo

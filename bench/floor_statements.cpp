#include "floor_statements.h"

namespace {

constexpr field pers_no{field::of::pers_no};
constexpr field val_year{field::of::val_year};
constexpr field code_member{field::of::code_member, nullptr, true};
constexpr field balance{field::of::balance, nullptr, true};

constexpr field number(const char* digits)
{
    return {field::of::nothing_else, digits, true};
}

constexpr field words(const char* text)
{
    return {field::of::nothing_else, text};
}

constexpr step registration[] = {
    {"look", "select * from person_m_tbl where pers_no=$1", 1, {pers_no}, part::finds_nothing},
    {"member",
     "insert into person_m_tbl(pers_no,lic_no,pers_name,pers_sex,code_religion,pers_marry,code_post,pers_add,"
     "pers_tel,pers_hp,email,code_bran,code_big,code_sect,code_scholar,code_univer,code_school,pers_career,"
     "pers_call,get_mail_place,pers_year_pay,code_member,regi_date,lic_kind1,lic_kind2,lic_kind3,lic_kind4,"
     "lic_kind5,lic_kind6,lic_kind6_no,lic_kind7,lic_kind7_no,lic_pay,code_deposit,sub_code) values ("
     "$1,$2,$3,$4,$5,$6,$7,$8,$9,$10,$11,$12,$13,$14,$15,$16,$17,$18,$19,$20,$21,$22,$23,$24,$25,$26,$27,"
     "$28,$29,$30,$31,$32,$33,$34,$35)",
     35,
     {pers_no,
      words("12345"),
      words("홍길순"),
      words("0"),
      number("2"),
      words("미혼"),
      words("135080"),
      words("서울 강남구 역삼동 12-3"),
      words("0221234567"),
      words("01012345678"),
      words("hong@example.org"),
      number("1"),
      number("2"),
      number("3"),
      number("1"),
      number("1"),
      number("7"),
      words("0506"),
      words("영양사님"),
      words("자택"),
      number("2400"),
      number("1"),
      words("20260131"),
      words("1"),
      words("0"),
      words("0"),
      words("1"),
      words("0"),
      words("1"),
      words("제6-77호"),
      words("0"),
      words(""),
      number("50000"),
      number("4"),
      number("5")}},
    {"dues",
     "insert into dues_h_tbl(pers_no,code_member,val_year,mem_dues,yet_money,incom_flag,regi_date) values "
     "($1,$2,$3,$4,$5,$6,$7)",
     7,
     {pers_no, number("1"), words("2026"), number("30000"), number("30000"), words("0"), words("20260131")}},
    {"payment",
     "insert into dues_b_tbl(pers_no,code_member,val_year,pers_mem_day,pers_mem_b_day,pres_money,"
     "code_receipt,pres_let_day) values ($1,$2,$3,$4,$5,$6,$7,$8)",
     8,
     {pers_no, number("1"), words("2026"), words("20260131"), words("20260131"), number("20000"), number("3"),
      words("20260131")}},
    {"outstanding",
     "update dues_h_tbl set yet_money=yet_money-$1,incom_flag='0' where pers_no=$2 and code_member=$3",
     3,
     {number("20000"), pers_no, number("1")}},
    {"pledge",
     "insert into contract(con_day,pers_no,con_amount,con_money,con_check,con_finish) values "
     "($1,$2,$3,$4,$5,$6)",
     6,
     {words("20260131"), pers_no, number("500000"), number("0"), words("0"), words("0")}},
    {"workplace",
     "insert into company(pers_no,company_name,code_part,code_great,code_small,pers_in_date,job_dept,"
     "job_line_code,job_level_code,code_use,code_post,company_add,company_tel,company_fax,company_morning,"
     "company_midday,company_evening,company_between,company_diet,company_cook,company_food,company_meal,"
     "company_sick_bad,pers_multy,join_con,join_cook,comp_except,regi_date,pers_out_date,primary_flag) "
     "values "
     "($1,$2,$3,$4,$5,$6,$7,$8,$9,$10,$11,$12,$13,$14,$15,$16,$17,$18,$19,$20,$21,$22,$23,$24,$25,$26,$27,"
     "$28,$29,$30)",
     30,
     {pers_no,
      words("한빛병원"),
      number("100"),
      number("1"),
      number("2"),
      words("202503"),
      words("영양과"),
      number("1"),
      number("2"),
      number("1"),
      words("135081"),
      words("서울 강남구 역삼동 45"),
      words("0225556666"),
      words("0225556667"),
      number("100"),
      number("300"),
      number("200"),
      number("0"),
      number("2"),
      number("3"),
      number("8"),
      words("3500"),
      words("120"),
      number("0"),
      words("2"),
      words("0"),
      number("1"),
      words("20260131"),
      words(""),
      number("1")}}};

constexpr step payment[] = {
    {"payment_line",
     "insert into dues_b_tbl(pers_no,code_member,val_year,pers_mem_day,pers_mem_b_day,pres_money,"
     "code_receipt,pres_let_day) values ($1,$2,$3,$4,$5,$6,$7,$8)",
     8,
     {pers_no, code_member, val_year, words("20260131"), words(""), number("20000"), number("3"),
      words("20260131")}},
    {"sum",
     "select sum(pres_money) as tot_money from dues_b_tbl where pers_no=$1 and val_year=$2",
     2,
     {pers_no, val_year},
     part::paid},
    {"header",
     "select * from dues_h_tbl where pers_no=$1 and val_year=$2",
     2,
     {pers_no, val_year},
     part::owed},
    {"settled",
     "update dues_h_tbl set yet_money=$1,incom_flag='1' where pers_no=$2 and val_year=$3",
     3,
     {balance, pers_no, val_year},
     part::where_settled},
    {"open",
     "update dues_h_tbl set yet_money=$1,incom_flag='0' where pers_no=$2 and val_year=$3",
     3,
     {balance, pers_no, val_year},
     part::where_open}};

constexpr char member_update[] =
    "update person_m_tbl set pers_no=$1,lic_no=$2,pers_name=$3,pers_sex=$4,code_religion=$5,"
    "pers_marry=$6,code_post=$7,pers_add=$8,pers_tel=$9,pers_hp=$10,email=$11,code_bran=$12,"
    "code_big=$13,code_sect=$14,code_scholar=$15,code_univer=$16,code_school=$17,pers_career=$18,"
    "pers_call=$19,get_mail_place=$20,pers_year_pay=$21,regi_date=$22,lic_kind1=$23,"
    "lic_kind2=$24,lic_kind3=$25,lic_kind4=$26,lic_kind5=$27,lic_kind6=$28,lic_kind6_no=$29,"
    "lic_kind7=$30,lic_kind7_no=$31,lic_pay=$32,code_deposit=$33,sub_code=$34 where pers_no=$35";
constexpr std::array<field, most_fields> changed_member{pers_no,
                                                        words("12345"),
                                                        words("홍길순"),
                                                        words("0"),
                                                        number("2"),
                                                        words("미혼"),
                                                        words("135080"),
                                                        words("서울 강남구 역삼동 12-3"),
                                                        words("0221234567"),
                                                        words("01012345678"),
                                                        words("hong@example.org"),
                                                        number("1"),
                                                        number("2"),
                                                        number("3"),
                                                        number("1"),
                                                        number("1"),
                                                        number("7"),
                                                        words("0506"),
                                                        words("영양사님"),
                                                        words("자택"),
                                                        number("2400"),
                                                        words("20260131"),
                                                        words("1"),
                                                        words("0"),
                                                        words("0"),
                                                        words("1"),
                                                        words("0"),
                                                        words("1"),
                                                        words("제6-77호"),
                                                        words("0"),
                                                        words(""),
                                                        number("50000"),
                                                        number("4"),
                                                        number("5"),
                                                        pers_no};

constexpr step change[] = {
    {"server_row", member_update, 35, changed_member},
    {"local_row", member_update, 35, changed_member, part::local},
    {"web_login",
     "update id_tbl set id=$1 ,passwd=$2 where pers_no=$3",
     3,
     {words("gilsun"), words("5678"), pers_no}},
    {"headers", "update dues_h_tbl set pers_no=$1 where pers_no=$2", 2, {pers_no, pers_no}},
    {"lines", "update dues_b_tbl set pers_no=$1 where pers_no=$2", 2, {pers_no, pers_no}},
    {"pledges", "update contract set pers_no=$1 where pers_no=$2", 2, {pers_no, pers_no}},
    {"instalments", "update contract_list set pers_no=$1 where pers_no=$2", 2, {pers_no, pers_no}},
    {"workplaces", "update company set pers_no=$1 where pers_no=$2", 2, {pers_no, pers_no}},
    {"branch", "update supplement set code_bran=$1 where pers_no=$2", 2, {number("1"), pers_no}}};

} // namespace

const std::map<std::string, std::span<const step>>& floor_saves()
{
    static const std::map<std::string, std::span<const step>> all{
        {"registration", registration}, {"payment", payment}, {"change", change}};
    return all;
}

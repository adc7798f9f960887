#include "dues/rules/yearly_dues.h"

namespace orvo {

namespace {

values slots_of(const dues_year& year)
{
    return {{"selected_pers_no", year.pers_no}, {"cur_val_year", year.val_year}};
}

} // namespace

question<rows> member_kinds()
{
    return {{"select * from money_member order by code_member asc"}, std::identity{}};
}

std::optional<QString> fee_of_kind(connection& db, const QString& code_member)
{
    const rows found =
        db.read("select * from money_member where code_member='{code}'", {{"code", code_member}});
    if (found.empty())
        return {};
    return QString::number(found.front().number("mem_dues"));
}

question<std::optional<dues_header>> header_of(const dues_year& year)
{
    return {{"select * from dues_h_tbl where pers_no='{selected_pers_no}' and val_year='{cur_val_year}'",
             slots_of(year)},
            [](const rows& found) -> std::optional<dues_header> {
                if (found.empty())
                    return {};
                const auto header = found.front();
                return dues_header{header.text("code_member"), header.number("mem_dues"),
                                   header.number("yet_money")};
            }};
}

QString member_name(connection& local, const QString& pers_no)
{
    const rows found = local.read("select pers_name from person_m_tbl where pers_no='{selected_pers_no}'",
                                  {{"selected_pers_no", pers_no}});
    return found.empty() ? QString{} : found.front().text("pers_name");
}

namespace {

/// The kind of the member follows the year that was written last.
void change_kind(save& of)
{
    constexpr std::string_view text =
        "update person_m_tbl set code_member='{code}' where pers_no='{selected_pers_no}'";
    of.write({"kind", "회원종류"}, text);
    of.write_here({"kind in the copy", "검색 목록의 회원종류"}, text);
}

void store_new(save& of)
{
    of.write_once(
        {"year", "회비"},
        "insert into dues_h_tbl(pers_no,code_member,val_year,mem_dues,yet_money,incom_flag,regi_date) "
        "values ('{selected_pers_no}','{code}','{cur_val_year}','{str_txt}','{str_txt}','0','{today}')",
        {"select val_year from dues_h_tbl where pers_no='{selected_pers_no}' and val_year='{cur_val_year}' "
         "and "
         "code_member='{code}' and mem_dues='{str_txt}' and regi_date='{today}'",
         "val_year"});
    change_kind(of);
}

void store_changed(save& of)
{
    // The lines keep the kind under which they were paid.
    of.write({"year", "회비"},
             "update dues_h_tbl set code_member='{code}' ,mem_dues='{str_txt}',regi_date='{today}' "
             "where pers_no='{selected_pers_no}' and val_year='{cur_val_year}'");
    constexpr save_step balance{"balance", "미수금"};
    const dues_year year{of.given("selected_pers_no"), of.given("cur_val_year")};
    const qint64 sum = of.ask(balance, paid_for(year));
    // incom_flag stays as it was, also where it then disagrees with the balance: as in use, must not change.
    of.write(balance,
             "update dues_h_tbl set yet_money=mem_dues-{sum} "
             "where pers_no='{selected_pers_no}' and val_year='{cur_val_year}'",
             {{"sum", sum}});
    change_kind(of);
}

constexpr save_step the_header{"year", "회비 삭제"};

void store_deleted(save& of)
{
    of.write(the_header,
             "delete from dues_h_tbl where pers_no='{selected_pers_no}' and val_year='{cur_val_year}'");
    // By the year alone: the lines of another kind in that year go as well.
    of.write({"payments", "입금 내역 삭제"},
             "delete from dues_b_tbl where pers_no='{selected_pers_no}' and val_year='{cur_val_year}'");
}

QString has_come_back(save& of)
{
    const auto header = ask(of.db(), header_of({of.given("selected_pers_no"), of.given("cur_val_year")}));
    return header && of.has_stored(the_header)
               ? QStringLiteral("그 사이에 이 년도의 회비가 다시 등록되었습니다.")
               : QString{};
}

constexpr changed_record the_year{
    "select * from dues_h_tbl where pers_no='{selected_pers_no}' and val_year='{cur_val_year}'", [] {
        return std::vector<changed_record::field>{{"code_member", "code"}, {"mem_dues", "str_txt"}};
    }};

values slots_of(const dues_year& year, const QString& code_member, const QString& mem_dues,
                const QString& today)
{
    values given = slots_of(year);
    given.add(values{{"code", code_member}, {"str_txt", mem_dues}, {"today", today}});
    return given;
}

} // namespace

const save_act year_added{"year added", "회비추가", store_new};
const save_act year_changed{"year changed", "회비수정", store_changed, &the_year};
const save_act year_deleted{"year deleted", "회비삭제", store_deleted, nullptr, has_come_back};

planned_save add_year(const dues_year& year, const QString& code_member, const QString& mem_dues,
                      const QString& today)
{
    return {&year_added, year.pers_no, slots_of(year, code_member, mem_dues, today)};
}

planned_save change_year(const dues_year& year, const QString& code_member, const QString& mem_dues,
                         const QString& today, const dues_header& before)
{
    return {&year_changed,
            year.pers_no,
            slots_of(year, code_member, mem_dues, today),
            {{"code_member", before.code_member}, {"mem_dues", before.mem_dues}}};
}

planned_save delete_year(const dues_year& year)
{
    return {&year_deleted, year.pers_no, slots_of(year)};
}

} // namespace orvo

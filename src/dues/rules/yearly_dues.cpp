#include "dues/rules/yearly_dues.h"

namespace orvo {

namespace {

values slots_of(const dues_year& year)
{
    return {{"selected_pers_no", year.pers_no}, {"cur_val_year", year.val_year}};
}

void change_kind(save_steps& save, const QString& pers_no, const QString& code_member)
{
    save.write(QStringLiteral("회원종류"),
               "update person_m_tbl set code_member='{code}' where pers_no='{selected_pers_no}'",
               {{"code", code_member}, {"selected_pers_no", pers_no}});
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

void add_year(save_steps& save, const dues_year& year, const QString& code_member, const QString& mem_dues,
              const QString& today)
{
    save.write(QStringLiteral("회비"),
               "insert into dues_h_tbl(pers_no,code_member,val_year,mem_dues,yet_money,incom_flag,regi_date) "
               "values ('{selected_pers_no}','{code}','{val_year}','{str_txt}','{str_txt}','0','{today}')",
               {{"selected_pers_no", year.pers_no},
                {"code", code_member},
                {"val_year", year.val_year},
                {"str_txt", mem_dues},
                {"today", today}});
    change_kind(save, year.pers_no, code_member);
}

void change_year(save_steps& save, const dues_year& year, const QString& code_member, const QString& mem_dues,
                 const QString& today)
{
    values changed = slots_of(year);
    changed.add({"code", code_member});
    changed.add({"str_txt", mem_dues});
    changed.add({"today", today});
    // The lines keep the kind under which they were paid: what came in by kinds stays as it was reported.
    save.write(QStringLiteral("회비"),
               "update dues_h_tbl set code_member='{code}' ,mem_dues='{str_txt}',regi_date='{today}' "
               "where pers_no='{selected_pers_no}' and val_year='{cur_val_year}'",
               changed);
    const QString balance = QStringLiteral("미수금");
    values subtracted = slots_of(year);
    subtracted.add({"sum", save.ask(balance, paid_for(year))});
    // incom_flag stays: a year once marked as paid remains so when its dues are raised later, until the next
    // payment is settled. Whoever lists the paid years goes by the mark, not by the balance.
    save.write(balance,
               "update dues_h_tbl set yet_money=mem_dues-{sum} "
               "where pers_no='{selected_pers_no}' and val_year='{cur_val_year}'",
               subtracted);
    change_kind(save, year.pers_no, code_member);
}

void change_kind_in_copy(save_steps& save, connection& local, const QString& pers_no,
                         const QString& code_member)
{
    save.write(QStringLiteral("검색 목록의 회원종류"), local,
               "update person_m_tbl set code_member='{code}' where pers_no='{selected_pers_no}'",
               {{"code", code_member}, {"selected_pers_no", pers_no}});
}

void delete_year(save_steps& save, const dues_year& year)
{
    save.write(QStringLiteral("회비 삭제"),
               "delete from dues_h_tbl where pers_no='{selected_pers_no}' and val_year='{cur_val_year}'",
               slots_of(year));
    // By the year alone: the lines of another kind in that year go as well.
    save.write(QStringLiteral("입금 내역 삭제"),
               "delete from dues_b_tbl where pers_no='{selected_pers_no}' and val_year='{cur_val_year}'",
               slots_of(year));
}

} // namespace orvo

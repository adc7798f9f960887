#include "members/rules/member_record.h"

#include "base/amount.h"
#include "base/dates.h"

#include <algorithm>
#include <limits>

namespace orvo {

std::optional<rows> read_member(connection& local, const QString& pers_no)
{
    rows found = local.read("select * from person_m_tbl where pers_no='{pers_no}'", {{"pers_no", pers_no}});
    if (found.empty())
        return {};
    return found;
}

bool is_id_free(connection& db, const QString& id)
{
    return db.read("select id from id_tbl where id='{id}'", {{"id", id}}).empty();
}

namespace {

constexpr std::string_view years_text =
    "select a.*,b.mem_kind as mem_kind from dues_h_tbl a,money_member b where "
    "a.pers_no='{selected_pers_no}' and a.code_member=b.code_member";
constexpr std::string_view workplaces_text =
    "select * from company where pers_no='{selected_pers_no}' order by primary_flag desc";
constexpr std::string_view pledge_text = "select * from contract where pers_no='{selected_pers_no}'";
constexpr std::string_view instalments_text =
    "select * from contract_list where pers_no='{selected_pers_no}'";

std::vector<panel_row> years_of(const rows& found)
{
    std::vector<panel_row> years;
    for (const auto row : found)
        years.push_back({{row.text("val_year"), row.text("mem_kind"), with_separators(row.number("mem_dues")),
                          with_separators(row.number("yet_money"))},
                         row.text("code_member")});
    return years;
}

std::vector<panel_row> workplaces_of(const rows& found)
{
    std::vector<panel_row> places;
    for (const auto row : found)
        places.push_back(
            {{row.text("company_name"),
              row.number("code_part") == 100 ? QStringLiteral("집단급식") : QStringLiteral("비집단급식"),
              with_hyphens(row.text("pers_out_date")),
              row.number("comp_except") == 1 ? QStringLiteral("받음") : QStringLiteral("않음")},
             row.text("company_id")});
    return places;
}

QString text_of_pledge(const rows::row& first)
{
    const qint64 amount = first.number("con_amount");
    const qint64 paid = first.number("con_money");
    QString text;
    const auto add = [&](const QString& caption, const QString& value) {
        text += QStringLiteral("* %1 : %2\r\n").arg(caption, value);
    };
    add(QStringLiteral("약정일"), with_hyphens(first.text("con_day")));
    add(QStringLiteral("약정액"), with_separators(amount));
    add(QStringLiteral("총입금액"), with_separators(paid));
    add(QStringLiteral("미수금액"), with_separators(amount - paid));
    add(QStringLiteral("약정상태"),
        first.number("con_finish") == 0 ? QStringLiteral("진행") : QStringLiteral("포기"));
    return text;
}

pledge pledge_of(const rows& pledges, const rows& instalments)
{
    pledge result;
    if (!pledges.empty()) {
        result.con_day = pledges.front().text("con_day");
        result.text = text_of_pledge(pledges.front());
    }
    for (const auto row : instalments)
        result.instalments.push_back(
            {{with_hyphens(row.text("con_date")), with_separators(row.number("con_money"))},
             row.text("con_id")});
    return result;
}

} // namespace

question<std::optional<web_identity>> web_identity_of(const QString& pers_no)
{
    return {{"select * from id_tbl where pers_no='{selected_pers_no}'", {{"selected_pers_no", pers_no}}},
            [](const rows& found) -> std::optional<web_identity> {
                if (found.empty())
                    return {};
                return web_identity{found.front().text("id"), found.front().text("passwd")};
            }};
}

member_records open_records(connection& db, const QString& pers_no)
{
    const values member{{"selected_pers_no", pers_no}};
    const auto login = ask(db, web_identity_of(pers_no));
    if (!login)
        db.write("insert into id_tbl(pers_no,id,passwd) values ('{selected_pers_no}','','')", member);
    const std::vector<rows> found = db.read_together(
        {{pledge_text, member}, {instalments_text, member}, {years_text, member}, {workplaces_text, member}});
    return {login.value_or(web_identity{}), pledge_of(found[0], found[1]), years_of(found[2]),
            workplaces_of(found[3])};
}

std::vector<panel_row> dues_years(connection& db, const QString& pers_no)
{
    return years_of(db.read(years_text, {{"selected_pers_no", pers_no}}));
}

bool has_header_of_year(connection& db, const QString& pers_no, const QString& year)
{
    const rows headers = db.read("select * from dues_h_tbl where pers_no='{selected_pers_no}'",
                                 {{"selected_pers_no", pers_no}});
    for (const auto header : headers)
        if (header.text("val_year") == year)
            return true;
    return false;
}

std::optional<std::size_t> year_to_pay(const std::vector<shown_year>& years)
{
    const auto rank = [](const shown_year& each) {
        const int year = each.val_year.trimmed().toInt(); // 0 for what is none
        const int last = std::numeric_limits<int>::max();
        const bool is_open = each.yet_money > 0;
        return std::pair{!is_open, !is_open ? -year : year == 0 ? last : year};
    };
    const auto first = std::ranges::min_element(years, {}, rank);
    if (first == years.end())
        return {};
    return static_cast<std::size_t>(first - years.begin());
}

std::vector<panel_row> dues_lines(connection& db, const QString& pers_no, const QString& val_year)
{
    std::vector<panel_row> lines;
    const rows found =
        db.read("select * from dues_b_tbl where pers_no='{selected_pers_no}' and val_year='{val_year}'",
                {{"selected_pers_no", pers_no}, {"val_year", val_year}});
    for (const auto row : found)
        lines.push_back({{with_hyphens(row.text("pers_mem_day")), with_hyphens(row.text("pers_mem_b_day")),
                          with_separators(row.number("pres_money"))},
                         row.text("dues_id")});
    return lines;
}

std::vector<panel_row> workplaces(connection& db, const QString& pers_no)
{
    return workplaces_of(db.read(workplaces_text, {{"selected_pers_no", pers_no}}));
}

pledge read_pledge(connection& db, const QString& pers_no)
{
    const values member{{"selected_pers_no", pers_no}};
    const std::vector<rows> found = db.read_together({{pledge_text, member}, {instalments_text, member}});
    return pledge_of(found[0], found[1]);
}

} // namespace orvo

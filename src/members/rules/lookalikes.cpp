#include "members/rules/lookalikes.h"

#include <algorithm>

namespace orvo {

namespace {

constexpr std::size_t most = 20;

QString branch_name(connection& local, const QString& code_bran)
{
    const rows found = local.read("select branch_name from branch_code where code_bran='{code_bran}'",
                                  {{"code_bran", code_bran}});
    return found.empty() ? QString{} : found.front().text("branch_name");
}

} // namespace

std::vector<lookalike> find_lookalikes(connection& db, connection& local, const QString& pers_name,
                                       const QString& pers_no1, const QString& pers_no2)
{
    std::vector<lookalike> alike;
    const auto add = [&](const rows& found) {
        for (const auto row : found) {
            const QString pers_no = row.text("pers_no");
            const bool is_known = std::ranges::find(alike, pers_no, &lookalike::pers_no) != alike.end();
            if (!is_known && alike.size() < most)
                alike.push_back({pers_no, row.text("pers_name"), branch_name(local, row.text("code_bran")),
                                 row.text("regi_date"), pers_no == pers_no1 + pers_no2});
        }
    };
    if (pers_no1.size() != 6)
        return alike;
    if (pers_no2.size() == 7)
        add(db.read(
            "select pers_no,pers_name,code_bran,regi_date from person_m_tbl where pers_no='{pers_no}'",
            {{"pers_no", pers_no1 + pers_no2}}));
    // A range of the key instead of a pattern: both engines answer it from the index.
    if (!pers_name.isEmpty())
        add(db.read("select pers_no,pers_name,code_bran,regi_date from person_m_tbl where "
                    "pers_no between '{birth}0000000' and '{birth}9999999' and pers_name='{pers_name}'",
                    {{"birth", pers_no1}, {"pers_name", pers_name}}));
    return alike;
}

} // namespace orvo

#include "members/rules/lookalikes.h"

#include "client/branches.h"

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

/// Those who were found so far, each once.
class findings {
public:
    findings(connection& local, const QString& session_branch, QString typed_number)
        : local_{local}, session_branch_{session_branch}, typed_number_{std::move(typed_number)}
    {
    }

    void add(const rows& found)
    {
        for (const auto row : found) {
            const QString pers_no = row.text("pers_no");
            if (known_.contains(pers_no) || alike_.size() == most)
                continue;
            known_.append(pers_no);
            const bool same_number = pers_no == typed_number_;
            const QString branch = branch_name(local_, row.text("code_bran"));
            if (sees_members_of(session_branch_, row.number("code_bran")))
                alike_.push_back({branch, same_number, true, row.text("pers_name"), pers_no.left(6),
                                  row.text("regi_date")});
            else
                add_unseen(branch, same_number);
        }
    }

    std::vector<lookalike> take() { return std::move(alike_); }

private:
    connection& local_;
    const QString& session_branch_;
    QString typed_number_;
    QStringList known_; ///< numbers
    std::vector<lookalike> alike_;

    void add_unseen(const QString& branch, bool same_number)
    {
        const auto before = std::ranges::find_if(
            alike_, [&](const lookalike& each) { return !each.is_seen && each.branch == branch; });
        if (before == alike_.end())
            alike_.push_back({branch, same_number, false, {}, {}, {}});
        else
            before->same_number |= same_number;
    }
};

} // namespace

std::vector<lookalike> find_lookalikes(connection& db, connection& local, const QString& session_branch,
                                       const QString& pers_name, const QString& pers_no1,
                                       const QString& pers_no2)
{
    findings alike{local, session_branch, pers_no1 + pers_no2};
    if (pers_no1.size() != 6)
        return {};
    if (pers_no2.size() == 7)
        alike.add(db.read(
            "select pers_no,pers_name,code_bran,regi_date from person_m_tbl where pers_no='{pers_no}'",
            {{"pers_no", pers_no1 + pers_no2}}));
    // A range of the key instead of a pattern: both engines answer it from the index.
    if (!pers_name.isEmpty())
        alike.add(db.read("select pers_no,pers_name,code_bran,regi_date from person_m_tbl where "
                          "pers_no between '{birth}0000000' and '{birth}9999999' and pers_name='{pers_name}'",
                          {{"birth", pers_no1}, {"pers_name", pers_name}}));
    return alike.take();
}

} // namespace orvo

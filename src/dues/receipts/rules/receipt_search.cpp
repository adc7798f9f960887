#include "dues/receipts/rules/receipt_search.h"

#include "client/branches.h"

namespace orvo {

namespace {

struct statement {
    std::string text;
    values given;
};

constexpr std::string_view home_text =
    "select a.*,b.*,c.mem_kind as mem_kind,d.branch_name as branch_name "
    "from person_m_tbl a,dues_b_tbl b,money_member c,branch_code d "
    "Where a.pers_no = b.pers_no And a.code_member = c.code_member And a.code_bran = d.code_bran "
    "and a.pers_no='{pers_no}'";

constexpr std::string_view workplace_text =
    "select a.*,b.*,c.mem_kind as mem_kind,d.branch_name as branch_name,e.code_post as c_code_post,"
    "e.company_add as company_add,e.company_name as company_name "
    "from person_m_tbl a,dues_b_tbl b,money_member c,branch_code d,company e "
    "Where a.pers_no = b.pers_no and a.pers_no=e.pers_no And a.code_member = c.code_member "
    "And a.code_bran = d.code_bran and a.pers_no='{pers_no}' and e.primary_flag='1'";

constexpr std::string_view workplace_in_period_text =
    "select a.*,b.*,c.mem_kind as mem_kind,d.branch_name as branch_name,e.code_post as c_code_post,"
    "e.company_name as company_name,e.company_add as company_add "
    "from person_m_tbl a,dues_b_tbl b,money_member c,branch_code d,company e "
    "Where a.pers_no = b.pers_no and a.pers_no=e.pers_no And a.code_member = c.code_member "
    "And a.code_bran = d.code_bran and a.pers_no='{pers_no}' and e.primary_flag='1'";

/// What brings a member's payments, for each place that mail can go to, and what their other slots take.
struct payment_texts {
    std::string home;
    std::string workplace;
    values given;
};

QString gapped(const QString& day)
{
    return day.mid(0, 4) + QStringLiteral("    ") + day.mid(4, 2) + QStringLiteral("   ") + day.mid(6, 2);
}

/// What brings the payments, a query a member, and whether they go to the workplace.
struct wanted_payments {
    std::vector<connection::query> asked;
    std::vector<bool> to_workplace;
};

/// A member whose mail is stopped gets no receipt; neither does one without a primary workplace who wants it
/// there, or whose branch or kind has no row: the joins drop them, and nobody is told.
wanted_payments payments_of(const rows& members, std::string_view mail_column, const payment_texts& texts)
{
    wanted_payments all;
    for (const auto row : members) {
        const QString place = row.text(mail_column);
        const bool to_workplace = place == QStringLiteral("직장");
        if (!to_workplace && place != QStringLiteral("자택"))
            continue;
        values given = texts.given;
        given.add({"pers_no", row.text("pers_no")});
        all.asked.push_back({to_workplace ? texts.workplace : texts.home, std::move(given)});
        all.to_workplace.push_back(to_workplace);
    }
    return all;
}

/// One search on its way into the queue.
class filling {
public:
    filling(connection& local, const queue_maker& by, const QDateTime& now)
        : all_or_nothing_{local}, queue_{local, by, now}
    {
    }

    void add(const rows& payments, bool to_workplace)
    {
        for (const auto row : payments) {
            QString day = row.text("pers_mem_day");
            if (day.isEmpty())
                day = row.text("pers_mem_b_day");
            const QString post = row.text(to_workplace ? "c_code_post" : "code_post");
            receipt made;
            made.pers_no = row.text("pers_no");
            made.dues_id = row.number("dues_id");
            made.pers_name = row.text("pers_name");
            made.code_post = post.left(3) + u'-' + post.right(3);
            if (to_workplace)
                made.company_name = row.text("company_name");
            made.pers_add = row.text(to_workplace ? "company_add" : "pers_add");
            made.pers_call = row.text("pers_call");
            made.pres_money = row.number("pres_money");
            made.mem_kind = row.text("mem_kind");
            made.lic_no = row.text("lic_no");
            made.branch_name = row.text("branch_name");
            made.code_member = row.number("code_member");
            made.in_date = gapped(day);
            to_workplace ? queue_.add_to_workplace(made) : queue_.add_to_home(made);
            listed_.push_back({made.pers_no, made.pers_name, day});
        }
    }

    listed_receipts finish()
    {
        all_or_nothing_.commit();
        return std::move(listed_);
    }

private:
    transaction all_or_nothing_; // the queue is the workstation's own
    receipt_queue queue_;
    listed_receipts listed_;
};

std::optional<listed_receipts> fill_queue(connection& db, connection& local, const statement& members,
                                          std::string_view mail_column, const payment_texts& texts,
                                          const queue_maker& by, const QDateTime& now, progress* follow,
                                          const std::function<void()>& found_some)
{
    rows found;
    db.read_each(members.text, members.given, found, follow);
    if (found.empty())
        return {};
    found_some();
    const wanted_payments wanted = payments_of(found, mail_column, texts);
    filling queue{local, by, now};
    db.read_many(
        wanted.asked,
        [&](std::size_t place, const rows& payments) { queue.add(payments, wanted.to_workplace[place]); },
        follow);
    return queue.finish();
}

std::string_view members_text(receipt_item by)
{
    switch (by) {
    case receipt_item::name:
        return "select pers_no,get_mail_place from person_m_tbl where pers_name like '%{key}%'";
    case receipt_item::resident_number:
        return "select pers_no,get_mail_place from person_m_tbl where pers_no like '%{key}%'";
    case receipt_item::licence:
        break;
    }
    return "select pers_no,get_mail_place from person_m_tbl where lic_no like '%{key}%'";
}

} // namespace

std::optional<listed_receipts> queue_receipts(connection& db, connection& local,
                                              const member_receipts& wanted, const searcher& by,
                                              progress* follow, const std::function<void()>& found_some)
{
    statement members{std::string{members_text(wanted.item)},
                      {{"key", wanted.key}, {"kind", wanted.code_member}}};
    narrow_to_branch(members.text, members.given, wanted.session_branch, " and code_bran='{session_branch}'");
    members.text += " and code_member='{kind}'";
    const payment_texts payments{std::string{home_text}, std::string{workplace_text}, {}};
    return fill_queue(db, local, members, "get_mail_place", payments, {by.admin_id, wanted.session_branch},
                      by.now, follow, found_some);
}

/// A member with several payments in the period is found once for each of them, and each time gets all of
/// them: two payments are four receipts, three are nine. As in use; must not change.
std::optional<listed_receipts> queue_receipts(connection& db, connection& local,
                                              const period_receipts& wanted, const searcher& by,
                                              progress* follow, const std::function<void()>& found_some)
{
    const bool at_head_office = wanted.place == paid_at::head_office;
    const std::string period = at_head_office ? " and b.pers_mem_day between '{from}' and '{to}'"
                                              : " and b.pers_mem_b_day between '{from}' and '{to}'";
    const values given{{"from", wanted.from}, {"to", wanted.to}};
    statement members{"select a.pers_no as pers_no,a.get_mail_place as get_mail,b.* "
                      "from person_m_tbl a ,dues_b_tbl b where a.pers_no=b.pers_no" +
                          period,
                      given};
    narrow_to_branch(members.text, members.given, wanted.session_branch,
                     " and a.code_bran='{session_branch}'");
    const payment_texts payments{std::string{home_text} + period,
                                 std::string{workplace_in_period_text} + period, given};
    return fill_queue(db, local, members, "get_mail", payments, {by.admin_id, wanted.session_branch}, by.now,
                      follow, found_some);
}

listed_receipts receipts_in_queue(connection& local)
{
    listed_receipts listed;
    for (const auto row : local.read("select pers_no,pers_name,in_date from print_tbl"))
        listed.push_back({row.text("pers_no"), row.text("pers_name"), row.text("in_date").remove(u' ')});
    return listed;
}

rows receipt_member_kinds(connection& db)
{
    return db.read("select code_member,mem_kind from money_member order by code_member asc");
}

} // namespace orvo

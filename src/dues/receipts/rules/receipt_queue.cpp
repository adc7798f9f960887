#include "dues/receipts/rules/receipt_queue.h"

#include <deque>

namespace orvo {

namespace {

constexpr std::string_view home_text = "insert into print_tbl("
                                       "pers_no,dues_id,"
                                       "pers_name,code_post,"
                                       "pers_add,pers_call,"
                                       "pres_money,mem_kind,"
                                       "lic_no,branch_name,"
                                       "code_member,in_date"
                                       ") values ("
                                       "'{pers_no}','{dues_id}',"
                                       "'{pers_name}','{code_post}',"
                                       "'{pers_add}','{pers_call}',"
                                       "'{pres_money}','{mem_kind}',"
                                       "'{lic_no}','{branch_name}',"
                                       "'{code_member}','{in_date}')";

constexpr std::string_view workplace_text = "insert into print_tbl("
                                            "pers_no,dues_id,"
                                            "pers_name,code_post,company_name,"
                                            "pers_add,pers_call,"
                                            "pres_money,mem_kind,"
                                            "lic_no,branch_name,"
                                            "code_member,in_date"
                                            ") values ("
                                            "'{pers_no}','{dues_id}',"
                                            "'{pers_name}','{code_post}','{company_name}',"
                                            "'{pers_add}','{pers_call}',"
                                            "'{pres_money}','{mem_kind}',"
                                            "'{lic_no}','{branch_name}',"
                                            "'{code_member}','{in_date}')";

/// The fields of a row in the order of its insert.
class row_fields {
public:
    void add(const QString& text)
    {
        const QByteArray& bytes = texts_.emplace_back(text.toUtf8());
        fields_.push_back(
            cell::of(std::string_view{bytes.constData(), static_cast<std::size_t>(bytes.size())}));
    }
    void add(qint64 number) { fields_.push_back(cell::of(number)); }
    void write_by(repeated_write& insert) const { insert(fields_); }

private:
    std::deque<QByteArray> texts_; // the cells look into them
    std::vector<cell> fields_;
};

void insert_receipt(repeated_write& insert, const receipt& one, bool with_workplace)
{
    row_fields row;
    row.add(one.pers_no);
    row.add(one.dues_id);
    row.add(one.pers_name);
    row.add(one.code_post);
    if (with_workplace)
        row.add(one.company_name);
    for (const QString& text : {one.pers_add, one.pers_call})
        row.add(text);
    row.add(one.pres_money);
    for (const QString& text : {one.mem_kind, one.lic_no, one.branch_name})
        row.add(text);
    row.add(one.code_member);
    row.add(one.in_date);
    row.write_by(insert);
}

repeated_write emptied(connection& local, const queue_maker& by, const QDateTime& now)
{
    local.write("delete from print_tbl");
    local.write("delete from print_made");
    local.write("insert into print_made(admin_id,session_branch,made_at) values "
                "('{admin_id}','{session_branch}','{made_at}')",
                {{"admin_id", by.admin_id},
                 {"session_branch", by.session_branch},
                 {"made_at", now.toString(Qt::ISODate)}});
    return local.repeat(home_text);
}

} // namespace

receipt_queue::receipt_queue(connection& local, const queue_maker& by, const QDateTime& now)
    : insert_home_{emptied(local, by, now)}, insert_workplace_{local.repeat(workplace_text)}
{
}

void receipt_queue::add_to_home(const receipt& one)
{
    insert_receipt(insert_home_, one, false);
}

void receipt_queue::add_to_workplace(const receipt& one)
{
    insert_receipt(insert_workplace_, one, true);
}

void take_out_members(connection& local, const QStringList& pers_nos)
{
    transaction all_or_nothing{local};
    for (const QString& each : pers_nos)
        local.write("delete from print_tbl where pers_no='{pers_no}'", {{"pers_no", each}});
    all_or_nothing.commit();
}

std::optional<left_queue> queue_left_by(connection& local, const queue_maker& who)
{
    const rows made = local.read("select made_at from print_made where admin_id='{admin_id}' and "
                                 "session_branch='{session_branch}'",
                                 {{"admin_id", who.admin_id}, {"session_branch", who.session_branch}});
    const qint64 size = made.empty() ? 0 : local.number("select count(*) as n from print_tbl");
    if (size == 0)
        return {};
    return left_queue{QDateTime::fromString(made.front().text("made_at"), Qt::ISODate), size};
}

std::vector<receipt> queued_receipts(connection& local, int year_of_printing)
{
    const QString valid_until = QString::number(year_of_printing) + QStringLiteral("-12-31");
    std::vector<receipt> all;
    for (const auto row : local.read("select * from print_tbl"))
        all.push_back({row.text("pers_no"), row.number("dues_id"), row.text("pers_name"),
                       row.text("code_post"), row.text("company_name"), row.text("pers_add"),
                       row.text("pers_call"), row.number("pres_money"), row.text("mem_kind"),
                       row.text("lic_no"), row.text("branch_name"), row.number("code_member"),
                       row.text("in_date"), valid_until});
    return all;
}

} // namespace orvo

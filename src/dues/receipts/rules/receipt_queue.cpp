#include "dues/receipts/rules/receipt_queue.h"

#include <array>

namespace orvo {

namespace {

/// One text for both kinds of address: the name of a workplace is empty in a row with the home address.
constexpr std::string_view insert_text = "insert into print_tbl("
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

repeated_write emptied(connection& local)
{
    local.write("delete from print_tbl");
    return local.repeat(insert_text);
}

} // namespace

receipt_queue::receipt_queue(connection& local) : insert_{emptied(local)} {}

void receipt_queue::add(const receipt& one)
{
    const std::array texts{one.pers_no.toUtf8(),      one.pers_name.toUtf8(), one.code_post.toUtf8(),
                           one.company_name.toUtf8(), one.pers_add.toUtf8(),  one.pers_call.toUtf8(),
                           one.mem_kind.toUtf8(),     one.lic_no.toUtf8(),    one.branch_name.toUtf8(),
                           one.in_date.toUtf8()};
    const auto text = [&](std::size_t at) {
        return cell::of(std::string_view{texts[at].constData(), static_cast<std::size_t>(texts[at].size())});
    };
    const std::array fields{
        text(0), cell::of(one.dues_id),    text(1), text(2), text(3), text(4),
        text(5), cell::of(one.pres_money), text(6), text(7), text(8), cell::of(one.code_member),
        text(9)};
    insert_(fields);
}

void take_out_members(connection& local, const QStringList& pers_nos)
{
    transaction all_or_nothing{local};
    for (const QString& each : pers_nos)
        local.write("delete from print_tbl where pers_no='{pers_no}'", {{"pers_no", each}});
    all_or_nothing.commit();
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

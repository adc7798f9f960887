#include "db/schema/tables.h"

namespace orvo {

using namespace columns;

namespace {

/// Pages through the last search in the order of its rows. An index that held the number and the name would
/// be scanned in their place and bring another order.
table scratch_copy()
{
    return {"person_m_tbl", member_columns(), {}, {{"pers_no"}}};
}

table postal_codes()
{
    return {"zip",
            {text("post", 10), text("do", 40), text("gu", 40), text("dong", 60), text("li", 60),
             text("island", 60), text("fir", 20), text("sec", 20)},
            {},
            {}};
}

table receipt_queue()
{
    return {"print_tbl",
            {text("pers_no", 13), number("dues_id"), text("pers_name", 40), text("code_post", 10),
             text("company_name", 100), text("pers_add", 200), text("pers_call", 40), money("pres_money"),
             text("mem_kind", 40), text("lic_no", 20), text("branch_name", 60), number("code_member"),
             text("in_date", 40)},
            {},
            {{"pers_no"}}};
}

/// Who filled the queue, of which branch, and when: one row, or none.
table receipt_queue_made()
{
    return {"print_made",
            {text("admin_id", unbounded), text("session_branch", unbounded), text("made_at", 30)},
            {},
            {}};
}

/// Who logged in last at this workstation, and of which branch: one row, or none.
table last_login()
{
    return {"last_login", {text("admin_id", unbounded), text("session_branch", unbounded)}, {}, {}};
}

/// Of the ids nothing but their marks: many are passwords in the wrong field.
table wrong_passwords()
{
    return {"wrong_passwords", {text("id_mark", 64), number("times"), text("last_at", 30)}, {"id_mark"}, {}};
}

table recent_words()
{
    return {"recent_words",
            {text("admin_id", 40), number("item"), text("word", 100), text("used_at", 17)},
            {"admin_id", "item", "word"},
            {}};
}

table recent_members()
{
    return {"recent_members",
            {text("admin_id", 40), text("pers_no", 13), text("pers_name", 40), text("used_at", 17)},
            {"admin_id", "pers_no"},
            {}};
}

table drafts()
{
    return {"drafts",
            {text("admin_id", 40), text("form", 40), text("fields", unbounded), text("kept_at", 30)},
            {"admin_id", "form"},
            {}};
}

} // namespace

std::vector<table> local_tables()
{
    std::vector<table> all = code_tables();
    for (table& codes : all)
        codes.doubles = true; // what the server holds twice must not keep a workstation from starting
    for (table& one :
         std::vector<table>{scratch_copy(), postal_codes(), receipt_queue(), receipt_queue_made(),
                            last_login(), wrong_passwords(), recent_words(), recent_members(), drafts()})
        all.push_back(std::move(one));
    return all;
}

} // namespace orvo

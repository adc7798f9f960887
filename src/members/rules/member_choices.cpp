#include "members/rules/member_choices.h"

namespace orvo {

member_choices read_console_choices(connection& local)
{
    return {local.read("select branch_name,code_bran from branch_code"),
            local.read("select big_name,code_big from big_division order by big_name asc"),
            local.read("select school_name,code_school from school order by school_name asc"),
            local.read("select sub_element_name,sub_code from sub_element order by sub_element_name asc"),
            local.read("select * from deposit order by deposit_name asc"),
            local.read("select religion_name,code_religion from religion order by religion_name asc"),
            local.read("select scholar_name,code_scholar from scholarship"),
            local.read("select univer_name,code_univer from univer_degree")};
}

rows read_sections(connection& local, const QString& code_bran, const QString& code_big)
{
    if (code_bran.isEmpty() || code_big.isEmpty() ||
        local.read("select * from branch_code where code_bran={code}", {{"code", code_bran}}).empty() ||
        local.read("select * from big_division where code_big={code}", {{"code", code_big}}).empty())
        return {};
    return local.read("select * from section_code where code_bran={code_bran} and code_big={code_big}",
                      {{"code_bran", code_bran}, {"code_big", code_big}});
}

} // namespace orvo

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

registration_choices read_registration_choices(connection& local)
{
    registration_choices all;
    all.member.branches =
        local.read("select branch_name,code_bran from branch_code order by branch_name asc");
    all.member.divisions = local.read("select big_name,code_big from big_division");
    all.member.schools = local.read("select school_name,code_school from school order by school_name asc");
    all.member.affiliated_bodies = local.read("select sub_element_name,sub_code from sub_element");
    all.receipt_places = local.read("select * from receipt_place");
    all.member.contractors = local.read("select * from deposit order by deposit_name asc");
    all.workplace.job_lines = local.read("select * from job_line");
    all.workplace.job_levels = local.read("select * from job_level");
    all.member.religions =
        local.read("select religion_name,code_religion from religion order by religion_name asc");
    all.member_kinds = local.read("select mem_kind,code_member from money_member order by code_member asc");
    all.workplace.uses = local.read("select * from make_use_of");
    all.member.educations = local.read("select scholar_name,code_scholar from scholarship");
    all.member.degrees = local.read("select univer_name,code_univer from univer_degree");
    return all;
}

workplace_choices read_workplace_choices(connection& local)
{
    workplace_choices all;
    all.uses = local.read("select * from make_use_of");
    all.job_lines = local.read("select * from job_line");
    all.job_levels = local.read("select * from job_level");
    return all;
}

section_choices read_sections(connection& local, const QString& code_bran, const QString& code_big)
{
    const QString no_branch = QStringLiteral("지부를 선택하여 주세요");
    const QString no_division = QStringLiteral("분과를 선택하여 주세요");
    if (code_bran.isEmpty())
        return {{}, no_branch};
    if (local.read("select * from branch_code where code_bran={code}", {{"code", code_bran}}).empty())
        return {{}, no_branch};
    if (code_big.isEmpty() ||
        local.read("select * from big_division where code_big={code}", {{"code", code_big}}).empty())
        return {{}, no_division};
    return {local.read("select * from section_code where code_bran={code_bran} and code_big={code_big}",
                       {{"code_bran", code_bran}, {"code_big", code_big}}),
            {}};
}

} // namespace orvo

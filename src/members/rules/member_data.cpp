#include "members/rules/member_data.h"

namespace orvo {

QString or_zero(const QString& typed)
{
    return typed.isEmpty() ? QStringLiteral("0") : typed;
}

QString flag(bool set)
{
    return set ? QStringLiteral("1") : QStringLiteral("0");
}

QString joined(const std::array<QString, 3>& parts)
{
    return parts[0] + parts[1] + parts[2];
}

std::optional<refusal> check_identity(const member_data& member,
                                      bool (*check_pers_no)(QStringView, QStringView))
{
    if (member.pers_name.isEmpty())
        return refusal{QStringLiteral("이름을 입력하세요"), QStringLiteral("name_txt")};
    if (member.pers_no1.isEmpty() || member.pers_no2.isEmpty())
        return refusal{QStringLiteral("주민증록번호를 입력하세요"), member.pers_no1.isEmpty()
                                                                        ? QStringLiteral("pers_no1_txt")
                                                                        : QStringLiteral("pers_no2_txt")};
    if (!check_pers_no(member.pers_no1, member.pers_no2))
        return refusal{QStringLiteral("바른 주민등록번호를 입력하세요!"), QStringLiteral("pers_no1_txt")};
    return {};
}

std::optional<refusal> check_home_telephone(const member_data& member)
{
    for (std::size_t i = 0; i < member.pers_tel.size(); ++i)
        if (member.pers_tel[i].isEmpty())
            return refusal{QStringLiteral("집 전화번호를 입력하여 주세요"),
                           QStringLiteral("tel%1_txt").arg(i + 1)};
    return {};
}

std::optional<refusal> check_certificate_numbers(const member_data& member)
{
    if (member.lic_kind[5] && member.lic_kind6_no.isEmpty())
        return refusal{QStringLiteral("임상영양사 자격증번호를 입력하세요"), QStringLiteral("lic_kind6_no")};
    if (member.lic_kind[6] && member.lic_kind6_no.isEmpty())
        return refusal{QStringLiteral("급식경영 영양사 자격증번호를 입력하세요"),
                       QStringLiteral("lic_kind6_no")};
    return {};
}

std::vector<column_value> workplace_columns(const QString& pers_no, const workplace_data& workplace,
                                            const QString& today)
{
    return {{"pers_no", pers_no},
            {"company_name", workplace.company_name},
            {"code_part", or_zero(workplace.code_part)},
            {"code_great", workplace.code_great},
            {"code_small", workplace.code_small},
            {"pers_in_date", workplace.pers_in_date},
            {"job_dept", workplace.job_dept},
            {"job_line_code", workplace.job_line_code},
            {"job_level_code", workplace.job_level_code},
            {"code_use", workplace.code_use},
            {"code_post", workplace.code_post},
            {"company_add", workplace.company_add},
            {"company_tel", workplace.company_tel},
            {"company_fax", workplace.company_fax},
            {"company_morning", or_zero(workplace.meals[0])},
            {"company_midday", or_zero(workplace.meals[1])},
            {"company_evening", or_zero(workplace.meals[2])},
            {"company_between", or_zero(workplace.meals[3])},
            {"company_diet", or_zero(workplace.staff[0])},
            {"company_cook", or_zero(workplace.staff[1])},
            {"company_food", or_zero(workplace.staff[2])},
            {"company_meal", workplace.company_meal},
            {"company_sick_bad", workplace.company_sick_bad},
            {"pers_multy", or_zero(workplace.pers_multy)},
            {"join_con", or_zero(workplace.join_con)},
            {"join_cook", or_zero(workplace.join_cook)},
            {"comp_except", workplace.comp_except},
            {"regi_date", today},
            {"pers_out_date", workplace.pers_out_date},
            {"primary_flag", workplace.primary_flag}};
}

} // namespace orvo

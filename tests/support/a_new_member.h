#pragma once

#include "members/rules/registration.h"

namespace orvo {

/// A registration with everything a save can store: paid in full on the spot, a pledge, a workplace.
inline new_member a_new_member()
{
    new_member typed;
    member_data& member = typed.member;
    member.pers_no1 = QStringLiteral("900101");
    member.pers_no2 = QStringLiteral("1234568");
    member.pers_name = QStringLiteral("김영희");
    member.pers_tel = {QStringLiteral("02"), QStringLiteral("1234"), QStringLiteral("5678")};
    member.code_bran = QStringLiteral("10");
    member.code_big = QStringLiteral("20");
    member.code_sect = QStringLiteral("1");
    member.lic_kind6_no = QStringLiteral("제6-1");
    typed.code_member = QStringLiteral("20");
    typed.mem_dues = typed.agree_pay = QStringLiteral("50000");
    typed.pers_mem_day = QStringLiteral("20261101");
    typed.pers_mem_b_day = QStringLiteral("20261102");
    typed.code_receipt = QStringLiteral("1");
    typed.dues_in = QStringLiteral("1000000");
    typed.workplace.company_name = QStringLiteral("한빛초등학교");
    typed.workplace.code_part = QStringLiteral("100");
    typed.workplace.primary_flag = QStringLiteral("1");
    return typed;
}

} // namespace orvo

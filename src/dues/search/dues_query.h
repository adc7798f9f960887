#pragma once

#include "members/rules/member_copy.h"

namespace orvo {

/// The members with a year of dues that was opened or last changed between two days ("yyyymmdd", both
/// included), whatever year it is and whenever it was paid. `incom_flag` is "1" for what is paid and "0" for
/// what is open. A branch operator finds those of the own branch alone. Who has two such years comes twice.
member_query dues_query(const QString& from, const QString& to, const QString& incom_flag,
                        const QString& session_branch);

} // namespace orvo

#pragma once

#include "db/values.h"

#include <QString>

#include <optional>

namespace orvo {

/// The number of a branch as an operator's row holds it: "07" and " 7 " are 7, "00" is 0, head office.
/// Nothing for a text that is no branch's number, be it empty, negative or beyond what a code can be: an
/// operator of such a branch sees nobody.
std::optional<qint32> number_of_branch(const QString& session_branch);

/// Whether what an operator sees is narrowed to a branch.
inline bool is_branch(const QString& session_branch)
{
    return number_of_branch(session_branch) != 0;
}

/// Whether an operator may see members of that branch: head office all of them, a branch its own and those
/// without a branch.
bool sees_members_of(const QString& session_branch, qint64 code_bran);

/// Narrows a query of members to what an operator may see, by a condition with the slot {session_branch}.
void narrow_to_branch(std::string& text, values& given, const QString& session_branch,
                      std::string_view condition);

} // namespace orvo

#include "client/branches.h"

#include <algorithm>

namespace orvo {

std::optional<qint32> number_of_branch(const QString& session_branch)
{
    QStringView digits{session_branch};
    while (digits.startsWith(u' '))
        digits = digits.mid(1);
    while (digits.endsWith(u' '))
        digits.chop(1);
    // The toolkit's reading alone would take a sign and other blanks too, which not every engine does.
    const bool is_plain =
        std::ranges::all_of(digits, [](QChar each) { return each >= u'0' && each <= u'9'; });
    bool fits = false;
    const qint32 number = digits.toInt(&fits);
    return is_plain && fits ? std::optional{number} : std::nullopt;
}

bool sees_members_of(const QString& session_branch, qint64 code_bran)
{
    const auto own = number_of_branch(session_branch);
    return own == 0 || (own && (code_bran == *own || code_bran == 0));
}

void narrow_to_branch(std::string& text, values& given, const QString& session_branch,
                      std::string_view condition)
{
    if (!is_branch(session_branch))
        return;
    if (!number_of_branch(session_branch)) {
        text += " and 1=0";
        return;
    }
    text += condition;
    given.add({"session_branch", session_branch});
}

} // namespace orvo

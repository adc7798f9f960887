#include "base/phone.h"

namespace orvo {

phone_parts cut_phone(QStringView digits)
{
    const qsizetype area = digits.startsWith(u"02") ? 2 : 3;
    phone_parts parts{digits.left(area).toString(), {}, {}};
    const qsizetype behind = digits.size() - area;
    if (behind == 7 || behind == 8) {
        parts.exchange = digits.mid(area, behind - 4).toString();
        parts.line = digits.right(4).toString();
    }
    return parts;
}

phone_parts cut_copied_fax(QStringView digits)
{
    phone_parts parts = cut_phone(digits);
    if (parts.area.size() == 3 && !parts.exchange.isEmpty())
        parts.exchange = digits.mid(2, parts.exchange.size()).toString();
    return parts;
}

phone_parts cut_mobile(QStringView digits)
{
    if (digits.isEmpty())
        return {};
    return {digits.left(3).toString(), digits.mid(3, digits.size() == 10 ? 3 : 4).toString(),
            digits.right(4).toString()};
}

} // namespace orvo

#include "base/dates.h"

namespace orvo {

QString with_hyphens(QStringView stored)
{
    QString shown = stored.toString().insert(std::min<qsizetype>(4, stored.size()), u'-');
    if (stored.size() != 6)
        shown.insert(std::min<qsizetype>(7, shown.size()), u'-');
    return shown;
}

QString stored_date(QDate day)
{
    return day.toString(QStringLiteral("yyyyMMdd"));
}

} // namespace orvo

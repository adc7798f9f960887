#include "base/amount.h"

#include <QLocale>

namespace orvo {

QString with_separators(qint64 amount)
{
    return QLocale{QLocale::Korean, QLocale::SouthKorea}.toString(amount);
}

qint64 whole_part(QStringView text)
{
    const qsizetype point = text.indexOf(u'.');
    return text.left(point < 0 ? text.size() : point).trimmed().toLongLong();
}

} // namespace orvo

#include "base/amount.h"

#include "base/decimal.h"

#include <QLocale>

namespace orvo {

QString with_separators(qint64 amount)
{
    return QLocale{QLocale::Korean, QLocale::SouthKorea}.toString(amount);
}

qint64 whole_part(QStringView text)
{
    bool is_whole = false;
    const qint64 number = text.toLongLong(&is_whole);
    if (is_whole)
        return number;
    const auto read = read_decimal(text.trimmed().toLatin1().toStdString());
    return read ? read->whole : 0;
}

} // namespace orvo

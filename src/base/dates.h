#pragma once

#include <QDate>
#include <QString>

namespace orvo {

/// A stored date "yyyymmdd" as "yyyy-mm-dd", a month "yyyymm" as "yyyy-mm". An empty one gives the bare
/// hyphens
/// "--", by which operators see that a date is missing and not merely hidden.
QString with_hyphens(QStringView stored);

/// "yyyymmdd", the form of every date column.
QString stored_date(QDate day);

} // namespace orvo

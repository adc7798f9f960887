#pragma once

#include "db/connection.h"

#include <QDate>
#include <QString>

#include <optional>

namespace orvo::bench {

inline constexpr qint64 queued_payments = 20'000;

inline QString day_text(QDate day)
{
    return day.toString(QStringLiteral("yyyyMMdd"));
}

/// The last day of the shortest period from that day on that holds so many payments to the head office;
/// nothing where the register has too few.
inline std::optional<QDate> last_day_of_queue(connection& db, QDate from)
{
    for (QDate to = from; to.year() < from.year() + 6; to = to.addDays(1))
        if (db.number("select count(*) as n from person_m_tbl a ,dues_b_tbl b where a.pers_no=b.pers_no "
                      "and b.pers_mem_day between '{from}' and '{to}'",
                      {{"from", day_text(from)}, {"to", day_text(to)}}) >= queued_payments)
            return to;
    return {};
}

} // namespace orvo::bench

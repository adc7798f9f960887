#pragma once

#include "base/typed.h"
#include "ui/controls.h"

#include <QDateTime>

#include <functional>
#include <utility>

namespace orvo {

/// The lists of a date or of a month, to be placed one by one; the form that they are placed in owns them.
///
/// An operator chooses from the lists, or types: a part into its list, or a whole date, as read_date takes
/// it, into any of them; a month and day without a year are of the year that is chosen. "+" is today. Enter
/// or leaving takes what was typed; what cannot be read gives way to what stood there, and a tip says why. A
/// list sends `activated`, with -1 for an emptied one, whenever the operator has changed it.
struct date_group {
    using clock = std::function<QDateTime()>;
    struct choices {
        int first_year = orvo::first_year; ///< earlier years are refused
        bool end_with_an_empty_item = false;
    };

    date_group(const QString& year_name, const QString& month_name, const QString& day_name, clock now,
               choices of);
    date_group(const QString& year_name, const QString& month_name, const QString& day_name, clock now)
        : date_group{year_name, month_name, day_name, std::move(now), choices{}}
    {
    }
    date_group(const QString& year_name, const QString& month_name, clock now);

    code_list* year;
    code_list* month;
    code_list* day; ///< null where the group is of months

    /// What the lists show, one behind the other, with no check of one by another: "20261122", "202611", "22"
    /// where only a day is chosen, empty where nothing is. Takes first what was typed and not yet taken.
    QString stored() const;
    /// Why what was typed last was put back, for a screen that would save without it; empty when asked again.
    QString withdraw_refusal() const;
    /// Shows a date "yyyymmdd" or a month "yyyymm"; parts that no list has are left empty.
    void set(const QString& stored) const;
    void clear() const { set({}); }
    void set_enabled(bool enabled) const;
};

} // namespace orvo

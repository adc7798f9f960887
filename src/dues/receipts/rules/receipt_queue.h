#pragma once

#include "db/connection.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace orvo {

/// A row of the workstation's print queue, ready to be printed: one page.
struct receipt {
    QString pers_no;
    qint64 dues_id = 0;
    QString pers_name;
    QString code_post;    ///< "123-456"
    QString company_name; ///< of a receipt that goes to the workplace
    QString pers_add;     ///< where it goes
    QString pers_call;    ///< the title for the address
    qint64 pres_money = 0;
    QString mem_kind;
    QString lic_no;
    QString branch_name;
    qint64 code_member = 0;
    QString in_date;     ///< "2026    03   15": the gaps are those of year, month and day marks in print
    QString valid_until; ///< of the printed page alone
};

/// Who fills the queue. It is his alone: another operator, or the same one for another branch, may not see
/// whose receipts it holds.
struct queue_maker {
    QString admin_id;
    QString session_branch;
};

/// The queue while a search fills it: empty at first. Stands inside a transaction of the local file.
class receipt_queue {
public:
    receipt_queue(connection& local, const queue_maker& by, const QDateTime& now);
    /// A receipt for the home address, whose workplace stays empty.
    void add_to_home(const receipt& one);
    void add_to_workplace(const receipt& one);

private:
    repeated_write insert_home_;
    repeated_write insert_workplace_;
};

/// Takes receipts out of the queue, by member: all rows of each of them go, however many there are. All or
/// nothing.
void take_out_members(connection& local, const QStringList& pers_nos);

/// A queue that an earlier search left.
struct left_queue {
    QDateTime made_at;
    qint64 size = 0;
};

/// What is left of the one that this operator made; nothing where it is another's, or empty.
std::optional<left_queue> queue_left_by(connection& local, const queue_maker& who);

/// The queue in the order in which it was filled. Membership is stated to be valid to the end of the year of
/// printing, whatever year was paid for.
std::vector<receipt> queued_receipts(connection& local, int year_of_printing);

} // namespace orvo

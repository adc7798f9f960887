#pragma once

#include "dues/receipts/rules/receipt_queue.h"

namespace orvo {

/// A line of the list from which receipts are chosen, one for each row of the queue.
struct listed_receipt {
    QString pers_no;
    QString pers_name;
    QString day; ///< paid to the head office; where that is empty, to the branch
};

using listed_receipts = std::vector<listed_receipt>;

/// What members are searched by, in the order of the list that offers it.
enum class receipt_item { name, resident_number, licence };

struct member_receipts {
    receipt_item item;
    QString key; ///< matched anywhere in the field; an empty one finds all of the kind
    QString code_member;
    QString session_branch; ///< a branch operator finds the members of the own branch
};

/// Places of payment for which receipts are searched by period.
enum class paid_at { head_office = 1, branch = 2 };

struct period_receipts {
    paid_at place;
    QString from; ///< "yyyymmdd", as is `to`; both days are part of it
    QString to;
    QString session_branch;
};

/// Whose search it is, and when.
struct searcher {
    QString admin_id;
    QDateTime now;
};

// Both replace the receipt queue by the payments of the members found, and return what is in it now: empty
// where none of them has a receipt, nothing where no member was found, and the queue is then as it was. So it
// is where the operator ends the search (db_failure, cancelled) or something fails: the queue of the earlier
// search stays, whole. `follow` hears the number of receipts so far; `found_some` is called once there are
// members, before the queue is touched.

/// All payments that the members ever made.
std::optional<listed_receipts> queue_receipts(
    connection& db, connection& local, const member_receipts& wanted, const searcher& by,
    progress* follow = nullptr, const std::function<void()>& found_some = [] {});
/// The payments of the period.
std::optional<listed_receipts> queue_receipts(
    connection& db, connection& local, const period_receipts& wanted, const searcher& by,
    progress* follow = nullptr, const std::function<void()>& found_some = [] {});

/// The lines of the queue as it is.
listed_receipts receipts_in_queue(connection& local);

/// The member kinds that the search offers.
rows receipt_member_kinds(connection& db);

} // namespace orvo

#pragma once

#include "dues/rules/payments.h"
#include "ui/amount_field.h"
#include "ui/date_group.h"

class QLayout;

namespace orvo {

class client;
class enter_walk;

/// A date of a payment. What its lists cannot show of a stored one is kept as long as nobody changes what
/// they do show.
struct payment_date : date_group {
    using date_group::date_group;

    void show(const QString& stored_before);
    void drop();
    bool is_untouched() const { return stored() == shown_; }
    QString text() const { return is_untouched() ? stored_ : stored(); }

private:
    QString stored_;
    QString shown_;
};

/// The fields of a payment. Where it was paid decides which of the two dates it can have.
struct payment_fields {
    explicit payment_fields(const client& c);

    code_list* receipt_cbb;
    payment_date con_in; ///< received by head office
    payment_date b_in;   ///< received by a branch
    amount_field* str_txt;

    QLayout* rows(bool place_is_required) const;
    /// Enter goes from a whole date on to the amount, and from a part of one to the next.
    void chain(enter_walk& walk) const;
    void fill_places(const orvo::rows& places) const;

    /// The date that belongs to the chosen place, and the other one.
    const date_group& chosen_side() const;
    const date_group& other_side() const;
    void drop_other_side();
    /// Lets the date of the chosen place be entered, and the other not; both where none is chosen.
    void enable_by_place() const;

    void show(const payment& line);
    payment read() const;
    /// Why a date that was typed cannot be taken, with the list that it was typed into; empty where it can.
    QString withdraw_refusal(QWidget*& typed_into) const;
    /// A date that ends in the middle, as its lists show it; empty where each is whole or empty.
    QString unfinished_date() const;
};

} // namespace orvo

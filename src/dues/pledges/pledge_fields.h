#pragma once

#include "dues/rules/pledges.h"
#include "ui/amount_field.h"
#include "ui/date_group.h"

namespace orvo {

class client;
class enter_walk;

/// What is typed of an instalment: its amount and its day. The form that they are placed in owns the fields.
struct pledge_fields {
    explicit pledge_fields(const client& c);

    amount_field* str_txt;
    date_group con_in;

    /// Enter walks from the amount through the day, and on as `last` says: to that field, or to the save.
    void chain(enter_walk& walk, QWidget* last = nullptr) const;

    void show(const instalment& paid) const;
    instalment read() const { return {con_in.stored(), str_txt->amount()}; }

    struct refusal {
        QString why; ///< empty where what is typed can be saved
        QWidget* field;
    };
    refusal check() const;
};

} // namespace orvo

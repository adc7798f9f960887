#pragma once

#include "client/client.h"
#include "ui/failures.h"

#include <optional>

namespace orvo {

/// The save of a dialog: begun by a press of its button, and gone on with by the next one where it broke.
class held_save {
public:
    explicit held_save(client& c) : c_{c} {}
    /// Left half way, it is told where it waits.
    ~held_save();
    held_save(const held_save&) = delete;
    held_save& operator=(const held_save&) = delete;

    /// True where all of it is stored. `plan` is asked unless a save is under way. `how`: what becomes of a
    /// failure before anything is stored.
    bool press(failures::policy how, const std::function<planned_save()>& plan);
    /// Whether something of it is stored, or may be.
    bool is_under_way() const { return save_ && save_->is_begun() && !save_->is_over(); }
    bool was_tried() const { return save_.has_value(); }
    /// What there is to say of it then.
    QString state() const;
    const save* get() const { return save_ ? &*save_ : nullptr; }
    /// Makes the next press a save of its own.
    void give_up();

private:
    client& c_;
    std::optional<save> save_;
};

/// Offers to finish a save of that member that broke. Nothing where there is none, or where the operator does
/// not want to.
std::optional<save> broken_save_to_finish(client& c, const QString& pers_no,
                                          std::initializer_list<const save_act*> acts);

} // namespace orvo

#pragma once

#include "ui/desk.h"

#include <optional>
#include <string_view>

class QLineEdit;

namespace orvo {

class code_list;

/// Where an address goes that a lookup found.
struct address_fields {
    QLineEdit* post1; ///< the first three characters of the postal code
    QLineEdit* post2; ///< the last three
    QLineEdit* address;
};

/// A screen or dialog that takes what a picker brings. It stands at the desk under its code as long as it
/// lives; pickers find it by `current_screen`, which can outlive it.
class pick_target {
public:
    pick_target(desk& at, qint16 code) : at_{at}, code_{code} { at_.enter(code_, this); }
    virtual ~pick_target() { at_.leave(code_, this); }
    pick_target(const pick_target&) = delete;
    pick_target& operator=(const pick_target&) = delete;

    /// The list that takes the codes of that table; null where none does.
    virtual code_list* list_for(std::string_view table) = 0;
    virtual std::optional<address_fields> fields_for_address() { return {}; }

private:
    desk& at_;
    qint16 code_;
};

} // namespace orvo

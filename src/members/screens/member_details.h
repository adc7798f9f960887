#pragma once

#include "db/connection.h"
#include "members/rules/member_record.h"
#include "members/screens/member_fields.h"

#include <QWidget>

namespace orvo {

/// The fields of one member as the console shows them.
class member_details : public QWidget {
public:
    member_details(client& c, desk& at);

    /// Empties every field, so that no piece of the member shown before is left.
    void clear();
    void show_member(const rows::row& member);
    void show_web_identity(const web_identity& login);

    member_fields fields;

private:
    void arrange();
    void choose_codes(const rows::row& member);
    void show_numbers(const rows::row& member);
};

} // namespace orvo

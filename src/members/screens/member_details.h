#pragma once

#include "db/connection.h"
#include "members/rules/member_record.h"
#include "members/screens/member_fields.h"

#include <QWidget>

class QLabel;

namespace orvo {

/// The fields of one member as the console shows them.
class member_details : public QWidget {
public:
    member_details(client& c, desk& at);

    /// Empties every field, so that no piece of the member shown before is left.
    void clear();
    void show_member(const rows::row& member);
    void show_web_identity(const web_identity& login);

    /// The list that takes a picker's hits. It holds nothing else then, and is filled again with the next
    /// member: a code that it has not would look as if he had none.
    code_list* list_for(std::string_view table);

    member_fields fields;
    /// Says what stays behind where the number is another than the member's.
    QLabel* number_line;

private:
    client& c_;
    QString pers_no_; ///< of the member on show
    bool are_narrowed_ = false;

    void fill_lists();
    void look_at_number();
    void arrange();
    void choose_codes(const rows::row& member);
    void show_numbers(const rows::row& member);
};

} // namespace orvo

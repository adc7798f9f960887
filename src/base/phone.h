#pragma once

#include <QString>

namespace orvo {

struct phone_parts {
    QString area;
    QString exchange;
    QString line;

    bool operator==(const phone_parts&) const = default;
};

/// Cuts a telephone or fax number, stored as digits without separators, into the three fields of a form.
/// Seoul's "02" is the one area code of two digits. A number whose length fits no pattern yields its area
/// code alone.
phone_parts cut_phone(QStringView digits);

/// Cuts the fax number of a workplace that is copied for another member. Behind an area code of three digits
/// the exchange begins with the code's last digit: it is another member's number, and looks it, until the
/// operator has typed the right one.
phone_parts cut_copied_fax(QStringView digits);

/// Cuts a mobile number: always three digits in front and the last four behind.
phone_parts cut_mobile(QStringView digits);

} // namespace orvo

#pragma once

#include <QString>

#include <optional>

namespace orvo {

// What an operator types, read as people write it: half or full width, with or without signs between the
// digits. Where two readings are possible there is none: the text is refused with a sentence that says what
// to type.

/// What a typed number is of.
enum class amount_kind {
    won,
    signed_won,       ///< with a minus in front where it is paid back
    ten_thousand_won, ///< "3500", "3500만" and "3,500만원" are one
    count             ///< of people or meals: digits alone, with or without separators
};

/// A whole number in the unit of its kind, or a refusal; neither where nothing is typed.
struct typed_amount {
    std::optional<qint64> number;
    QString refusal;
};

/// "30000", "30,000", "₩30,000", "3만 원", "1억2000만", "2천만"; up to what a column of 32 bits holds in won.
typed_amount read_amount(QStringView typed, amount_kind kind = amount_kind::won);

enum class date_part { year, month, day };

inline constexpr int first_year = 1970;
inline constexpr int last_year = 2050;

/// The parts as the register writes them, "2026", "03", "09". A part that was not typed is empty.
struct typed_date {
    QString year;
    QString month;
    QString day;
    QString refusal;
};

/// "20261122", "2026-11-22", "2026. 11. 22.", "2026년 11월 22일"; "11.22" is of `bare_year`,
/// "2026-11" has no day, four digits are a year. One or two digits are the part `alone`, and refused where
/// that is the year. Days are not checked against the month, as the register holds such dates. Years before
/// `first` are refused.
typed_date read_date(QStringView typed, int bare_year, date_part alone = date_part::year,
                     int first = first_year);

/// The same for months: "202611", "2026-11", "2026.11", "2026년 11월".
typed_date read_month(QStringView typed, date_part alone = date_part::year);

} // namespace orvo

#pragma once

#include <QStringView>

#include <string_view>

namespace orvo {

/// The thirteenth digit of a resident registration number whose first twelve are given as ASCII digits.
char resident_check_digit(std::string_view first_twelve);

// The two member screens check a number differently, and both ways are the association's: what the
// registration lets in is as it is on the applicant's paper, while the console, where numbers are corrected,
// looks at the birthday as well. Both take six and seven ASCII digits; anything else is no number.

namespace registration {

/// Whether the digits add up.
bool check_pers_no(QStringView first, QStringView second);

} // namespace registration

namespace console {

/// Whether month and day are possible and the digits add up. Days are not checked against the month. One
/// member's number, which was issued although its digits do not add up, passes as it is.
bool check_pers_no(QStringView first, QStringView second);

} // namespace console

} // namespace orvo

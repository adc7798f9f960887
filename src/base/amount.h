#pragma once

#include <QString>

namespace orvo {

/// "1234567" as "1,234,567": whole won, points or counts, never decimals.
QString with_separators(qint64 amount);

/// The whole part of a number that a column holds as text: "1200.00" and "1.2e+03" are 1200,
/// an empty or other text is 0.
qint64 whole_part(QStringView text);

} // namespace orvo

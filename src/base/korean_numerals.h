#pragma once

#include <QString>

namespace orvo {

/// Whole won as receipts state them so that no digit can be added: 50,000 is "일금 오만원정". Each digit is
/// written out, the one before 십, 백 and 천 as well, which is the form that offices ask for. Nothing is
/// "일금 영원정"; an amount that was taken back begins with "마이너스".
QString in_korean_numerals(qint64 won);

} // namespace orvo

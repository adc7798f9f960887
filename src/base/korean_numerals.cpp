#include "base/korean_numerals.h"

namespace orvo {

namespace {

/// A number from 1 to 9999.
QString four_digits(quint64 number)
{
    static const QString digits = QStringLiteral("일이삼사오육칠팔구");
    static const QString places = QStringLiteral("천백십");
    QString text;
    quint64 place_value = 1000;
    for (int place = 0; place < 4; ++place, place_value /= 10) {
        const auto digit = static_cast<int>(number / place_value % 10);
        if (digit == 0)
            continue;
        text += digits[digit - 1];
        if (place < 3)
            text += places[place];
    }
    return text;
}

} // namespace

QString in_korean_numerals(qint64 won)
{
    static const QString thousands = QStringLiteral(" 만억조경"); // each ten thousand times the one before
    // The smallest number has no positive counterpart of its kind.
    quint64 rest = won < 0 ? 0 - static_cast<quint64>(won) : static_cast<quint64>(won);
    QString text;
    for (int place = 0; rest > 0; ++place, rest /= 10000) {
        if (rest % 10000 == 0)
            continue;
        QString part = four_digits(rest % 10000);
        if (place > 0)
            part += thousands[place];
        text.prepend(part);
    }
    if (text.isEmpty())
        text = QStringLiteral("영");
    return QStringLiteral("일금 %1%2원정").arg(won < 0 ? QStringLiteral("마이너스 ") : QString{}, text);
}

} // namespace orvo

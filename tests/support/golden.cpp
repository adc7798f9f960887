#include "support/golden.h"

#include <QFile>

#include <algorithm>

namespace orvo {

QStringList golden_block(const QString& file, const QString& act)
{
    QFile golden{QStringLiteral(GOLDEN_FOLDER "/") + file};
    const QStringList lines =
        golden.open(QIODevice::ReadOnly) ? QString::fromUtf8(golden.readAll()).split(u'\n') : QStringList{};
    const qsizetype head = lines.indexOf(QStringLiteral("# ") + act);
    if (head < 0)
        return {QStringLiteral("(%1 has no act %2)").arg(golden.fileName(), act)};
    QStringList block;
    for (qsizetype i = head + 1; i < lines.size() && !lines[i].startsWith(QLatin1String("# ")); ++i)
        if (!lines[i].isEmpty())
            block << lines[i];
    return block;
}

QString first_difference(const QStringList& wanted, const QStringList& arrived)
{
    const QString nothing = QStringLiteral("(nothing)");
    for (qsizetype i = 0; i < std::max(wanted.size(), arrived.size()); ++i) {
        const QString want = wanted.value(i, nothing);
        const QString came = arrived.value(i, nothing);
        if (want == came)
            continue;
        const auto apart = std::mismatch(want.begin(), want.end(), came.begin(), came.end()).first;
        const qsizetype from = std::max<qsizetype>(0, apart - want.begin() - 30);
        return QStringLiteral("line %1, from character %2:\n wanted  [%3]\n arrived [%4]")
            .arg(QString::number(i + 1), QString::number(from + 1), want.mid(from), came.mid(from));
    }
    return {};
}

} // namespace orvo

#include "client/system_log.h"

#include <QFile>

namespace orvo {

void write_system_log(const program_folder& folder, const QDateTime& now, const QString& text)
{
    QFile log{folder.file(QStringLiteral("SystemLog.txt"))};
    if (!log.open(QIODevice::Append | QIODevice::Text))
        return;
    log.write(
        (now.toString(QStringLiteral("MM/dd/yy HH:mm:ss")) + QStringLiteral(" - ") + text + u'\n').toUtf8());
}

} // namespace orvo

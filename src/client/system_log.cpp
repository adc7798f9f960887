#include "client/system_log.h"

#include "base/for_owner_alone.h"

#include <QFile>

namespace orvo {

void write_system_log(const program_folder& folder, const QDateTime& now, const QString& text)
{
    const for_owner_alone its_texts; // names and numbers of members
    QFile log{folder.file(QStringLiteral("SystemLog.txt"))};
    if (!log.open(QIODevice::Append | QIODevice::Text))
        return;
    log.write(
        (now.toString(QStringLiteral("MM/dd/yy HH:mm:ss")) + QStringLiteral(" - ") + text + u'\n').toUtf8());
}

} // namespace orvo

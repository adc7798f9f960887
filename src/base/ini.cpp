#include "base/ini.h"

#include <QFile>
#include <QTextStream>

namespace orvo {

std::optional<QString> ini_value(const QString& path, QStringView section, QStringView key)
{
    QFile file{path};
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QTextStream lines{&file};
    bool inside = false;
    for (QString line; lines.readLineInto(&line);) {
        const QStringView text = QStringView{line}.trimmed();
        if (text.startsWith(u';'))
            continue;
        if (text.startsWith(u'[')) {
            const QStringView name = text.mid(1, text.indexOf(u']') - 1).trimmed();
            inside = name.compare(section, Qt::CaseInsensitive) == 0;
            continue;
        }
        const qsizetype equals = text.indexOf(u'=');
        if (!inside || equals < 0 || text.left(equals).trimmed().compare(key, Qt::CaseInsensitive) != 0)
            continue;
        QStringView value = text.mid(equals + 1).trimmed();
        const bool quoted = value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
                            value.back() == value.front();
        return (quoted ? value.mid(1, value.size() - 2) : value).toString();
    }
    return {};
}

} // namespace orvo

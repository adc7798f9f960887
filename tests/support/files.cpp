#include "support/files.h"

#include "base/for_owner_alone.h"

#include <QDir>
#include <QFileInfo>

#include <sys/stat.h>

#include <stdexcept>

namespace orvo {

void write_file(const QString& path, const QByteArray& content)
{
    const for_owner_alone all_of_it;
    QDir{}.mkpath(QFileInfo{path}.path());
    QFile file{path};
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        throw std::runtime_error{"cannot write " + path.toStdString()};
}

QByteArray content_of(const QString& path)
{
    QFile file{path};
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray{};
}

int mode_of(const QString& path)
{
    struct stat found {};
    return ::stat(qUtf8Printable(path), &found) == 0 ? static_cast<int>(found.st_mode & 0777) : 0;
}

} // namespace orvo

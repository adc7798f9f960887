#include "support/files.h"

#include <QDir>
#include <QFileInfo>

#include <stdexcept>

namespace orvo {

void write_file(const QString& path, const QByteArray& content)
{
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
    const QFile::Permissions all = QFile::permissions(path);
    int mode = 0;
    for (const auto& [right, bit] : {std::pair{QFile::ReadOwner, 0400},
                                     {QFile::WriteOwner, 0200},
                                     {QFile::ExeOwner, 0100},
                                     {QFile::ReadGroup, 040},
                                     {QFile::WriteGroup, 020},
                                     {QFile::ExeGroup, 010},
                                     {QFile::ReadOther, 04},
                                     {QFile::WriteOther, 02},
                                     {QFile::ExeOther, 01}})
        mode |= all.testFlag(right) ? bit : 0;
    return mode;
}

} // namespace orvo

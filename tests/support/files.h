#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

namespace orvo {

/// Makes the file's folder too. Throws where either cannot be written.
void write_file(const QString& path, const QByteArray& content);

/// Nothing where there is no file.
QByteArray content_of(const QString& path);

/// The rights of a file as chmod takes them.
int mode_of(const QString& path);

inline constexpr QFile::Permissions read_only = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup |
                                                QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;

} // namespace orvo

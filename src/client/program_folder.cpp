#include "client/program_folder.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace orvo {

namespace {

bool can_write_in(const QString& folder)
{
    // Permissions alone do not tell: a mount can be read-only, and the superuser is asked nothing.
    QTemporaryFile probe{folder + QStringLiteral("/.probe-XXXXXX")};
    return probe.open();
}

/// The templates' files go with the rights of their owner alone: the configuration will hold the server's
/// password.
void fill_from_templates(const QString& folder)
{
    const QDir templates{QCoreApplication::applicationDirPath() + QStringLiteral("/../share/orvo/home")};
    QDirIterator files{templates.path(), QDir::Files, QDirIterator::Subdirectories};
    while (files.hasNext()) {
        const QString source = files.next();
        const QString target = folder + u'/' + templates.relativeFilePath(source);
        QDir{}.mkpath(QFileInfo{target}.path());
        if (QFile::copy(source, target))
            QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner);
    }
}

} // namespace

program_folder open_program_folder(const QString& path)
{
    QDir{}.mkpath(path);
    return {QDir{path}.absolutePath(), can_write_in(path)};
}

program_folder find_program_folder()
{
    const QString named = qEnvironmentVariable("ORVO_HOME");
    if (!named.isEmpty())
        return open_program_folder(named);
    const QString beside = QCoreApplication::applicationDirPath();
    if (QFileInfo::exists(beside + QStringLiteral("/conf")))
        return open_program_folder(beside);
    const QString own =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/orvo");
    const bool first_use = !QFileInfo::exists(own);
    const program_folder folder = open_program_folder(own);
    if (first_use)
        fill_from_templates(folder.path);
    return folder;
}

} // namespace orvo

#include "client/program_folder.h"

#include "base/for_owner_alone.h"

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

} // namespace

void fill_from_templates(const program_folder& folder)
{
    const for_owner_alone all_of_it; // the configuration will hold the server's password
    const QDir templates{QCoreApplication::applicationDirPath() + QStringLiteral("/../share/orvo/home")};
    QDirIterator files{templates.path(), QDir::Files, QDirIterator::Subdirectories};
    while (files.hasNext()) {
        QFile source{files.next()};
        QFile target{folder.file(templates.relativeFilePath(source.fileName()))};
        QDir{}.mkpath(QFileInfo{target}.path());
        // Not copied as it is: a copy has the rights of what it is made from.
        if (source.open(QIODevice::ReadOnly) && target.open(QIODevice::WriteOnly | QIODevice::NewOnly))
            target.write(source.readAll());
    }
}

program_folder open_program_folder(const QString& path)
{
    const for_owner_alone all_of_it;
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
        fill_from_templates(folder);
    return folder;
}

} // namespace orvo

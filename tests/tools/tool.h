#pragma once

#include "support/engines.h"
#include "support/files.h"
#include "support/test_register.h"

#include <QProcess>

namespace orvo {

struct outcome {
    int code = -1;
    QByteArray output;
    QByteArray errors;
};

/// Runs the tool as an administrator does. `command` is its command line behind the folder.
inline outcome run_tool(const QString& home, const QString& command, const QByteArray& input = {})
{
    QProcess tool;
    tool.start(QStringLiteral(ORVO_DB_PROGRAM),
               QStringList{"--home", home} + command.split(u' ', Qt::SkipEmptyParts));
    tool.write(input);
    tool.closeWriteChannel();
    if (!tool.waitForFinished(60000) || tool.exitStatus() != QProcess::NormalExit)
        return {};
    return {tool.exitCode(), tool.readAllStandardOutput(), tool.readAllStandardError()};
}

/// Writes the configuration of a program folder.
inline void point_at(const QString& home, const server_address& server)
{
    write_file(home + "/conf/connection.ini",
               QStringLiteral("[SERVER]\nengine=%1\nhost=%2\nport=%3\nuser=%4\npassword=%5\n"
                              "database=%6\nmail_database=%7\ntls=prefer\n")
                   .arg(QLatin1String{name_of(server.kind)}, server.host, QString::number(server.port),
                        server.user, server.password, server.name, server.mail_name)
                   .toUtf8());
}

} // namespace orvo

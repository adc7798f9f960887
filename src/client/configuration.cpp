#include "client/configuration.h"

#include "base/ini.h"

#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace orvo {

namespace {

constexpr qsizetype longest_value = 255;

const QString connection_file = QStringLiteral("connection.ini");

/// What stands for a key that is missing or empty.
QString or_else(const QString& value, const QString& otherwise)
{
    return value.isEmpty() || value == QLatin1String("Default") ? otherwise : value;
}

QString server_value(const program_folder& folder, const QString& key, const QString& otherwise = {})
{
    return or_else(read_conf_value(folder, connection_file, QStringLiteral("server"), key), otherwise);
}

std::chrono::seconds seconds_of(const program_folder& folder, const QString& key, int otherwise)
{
    const int value = server_value(folder, key).toInt();
    return std::chrono::seconds{value > 0 ? value : otherwise};
}

[[noreturn]] void refuse_value(const char* key, const QString& value)
{
    throw db_failure{failure_kind::other,
                     QStringLiteral("conf/connection.ini의 %1 값 \"%2\"을(를) 알 수 없습니다.")
                         .arg(QLatin1String{key}, value)};
}

engine engine_of(const QString& name)
{
    if (const auto known = engine_named(name))
        return *known;
    refuse_value("engine", name);
}

/// A word that is misspelt must not leave the line without what it was to demand.
QString tls_of(const QString& word)
{
    for (const char* known : {"verify", "require", "prefer", "disable"})
        if (word == QLatin1String{known})
            return word;
    refuse_value("tls", word);
}

} // namespace

QString read_conf_value(const program_folder& folder, const QString& file, const QString& section,
                        const QString& key)
{
    const auto found = ini_value(folder.file(QStringLiteral("conf/") + file), section.toUpper(), key);
    QString value = found.value_or(QStringLiteral("Default")).left(longest_value);
    value.remove(QChar{u'\0'});
    return value;
}

QString default_mail_domain(const program_folder& folder)
{
    return or_else(read_conf_value(folder, QStringLiteral("association.ini"), QStringLiteral("mail"),
                                   QStringLiteral("domain")),
                   QStringLiteral("association.example"));
}

server_address read_server_address(const program_folder& folder)
{
    server_address server;
    server.kind =
        engine_of(server_value(folder, QStringLiteral("engine"), QStringLiteral("embedded")).toLower());
    server.folder = folder.path;
    server.host = server_value(folder, QStringLiteral("host"), QStringLiteral("localhost"));
    server.port = server_value(folder, QStringLiteral("port")).toInt();
    server.user = server_value(folder, QStringLiteral("user"));
    server.password = server_value(folder, QStringLiteral("password"));
    server.name = server_value(folder, QStringLiteral("database"), QStringLiteral("orvo_db"));
    server.mail_name = server_value(folder, QStringLiteral("mail_database"), QStringLiteral("orvo_mail"));
    server.tls = tls_of(server_value(folder, QStringLiteral("tls"), QStringLiteral("prefer")).toLower());
    if (const QString root = server_value(folder, QStringLiteral("tls_root")); !root.isEmpty())
        server.tls_root = QDir{folder.file(QStringLiteral("conf"))}.absoluteFilePath(root);
    server.driver = server_value(folder, QStringLiteral("driver"));
    server.connect_timeout = seconds_of(folder, QStringLiteral("connect_timeout"), 15);
    server.statement_timeout = seconds_of(folder, QStringLiteral("statement_timeout"), 30);
    server.file_timeout = server.statement_timeout;
    return server;
}

std::vector<weakness> weaknesses_of(const program_folder& folder)
{
    std::vector<weakness> found;
    const QFileInfo file{folder.file(QStringLiteral("conf/") + connection_file)};
#ifdef Q_OS_UNIX
    // An administrator's own file is handed to its users by its group.
    const auto of_others = file.ownerId() == ::getuid() ? QFile::ReadGroup | QFile::ReadOther
                                                        : QFile::Permissions{QFile::ReadOther};
    if (file.permissions() & of_others)
        found.push_back(weakness::readable_by_others);
#endif
    if (read_server_address(folder).kind != engine::embedded &&
        server_value(folder, QStringLiteral("tls")).isEmpty())
        found.push_back(weakness::no_tls);
    return found;
}

} // namespace orvo

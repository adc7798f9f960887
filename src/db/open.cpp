#include "db/open.h"

#include "db/odbc_driver.h"
#include "db/postgresql_driver.h"
#include "db/sqlite_driver.h"

namespace orvo {

std::optional<engine> engine_named(const QString& name)
{
    if (name == QLatin1String("embedded"))
        return engine::embedded;
    if (name == QLatin1String("postgresql"))
        return engine::postgresql;
    if (name == QLatin1String("sqlserver"))
        return engine::sqlserver;
    return {};
}

QString in_words(const server_address& server)
{
    switch (server.kind) {
    case engine::postgresql:
        return QStringLiteral("PostgreSQL ") + server.host;
    case engine::sqlserver:
        return QStringLiteral("SQL Server ") + server.host;
    case engine::embedded:
        break;
    }
    return QStringLiteral("내장 DB");
}

QString trusted_authorities(const server_address& server)
{
    return server.tls_root.isEmpty() ? QStringLiteral("/etc/ssl/certs/ca-certificates.crt") : server.tls_root;
}

QString file_of(const server_address& server, database which)
{
    switch (which) {
    case database::server:
        return server.folder + QStringLiteral("/orvo_db.sqlite");
    case database::mail:
        return server.folder + QStringLiteral("/orvo_mail.sqlite");
    case database::local:
        break;
    }
    return server.folder + QStringLiteral("/orvo.mdb");
}

connection make_connection(const server_address& server, database which, file_use use)
{
    if (which == database::local || server.kind == engine::embedded)
        return connection{make_sqlite_driver(file_of(server, which), which, use, server.file_timeout)};
    if (server.kind == engine::sqlserver)
        return connection{make_odbc_driver(server, which)};
    return connection{make_postgresql_driver(server, which)};
}

} // namespace orvo

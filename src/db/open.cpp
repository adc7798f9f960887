#include "db/open.h"

#include "db/odbc_driver.h"
#include "db/postgresql_driver.h"
#include "db/sqlite_driver.h"

namespace orvo {

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
        return connection{make_sqlite_driver(file_of(server, which), which, use)};
    if (server.kind == engine::sqlserver)
        return connection{make_odbc_driver(server, which)};
    return connection{make_postgresql_driver(server, which)};
}

} // namespace orvo

#include "db/open.h"

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
    if (server.kind == engine::postgresql)
        return connection{make_postgresql_driver(server, which)};
    throw db_failure{failure_kind::other,
                     QStringLiteral("이 프로그램에는 SQL Server 접속 기능이 들어 있지 않습니다.")};
}

} // namespace orvo

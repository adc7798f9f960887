#pragma once

#include "db/connection.h"

#include <QString>

#include <chrono>
#include <optional>

namespace orvo {

/// Where a server is and how to speak to it.
struct server_address {
    engine kind = engine::embedded;
    QString folder; ///< of the files of the embedded engine
    QString host;
    int port = 0;
    QString user;
    QString password;
    QString name;      ///< of the register
    QString mail_name; ///< of the mail queue
    QString tls;       ///< "verify", "require", "prefer" or "disable"
    QString
        tls_root;   ///< for "verify": the file of the authorities that are trusted; the system's where empty
    QString driver; ///< of ODBC, for SQL Server: its name there, or its file
    std::chrono::seconds connect_timeout{15};
    std::chrono::seconds statement_timeout{30};
    std::chrono::seconds file_timeout{
        30}; ///< how long another program may hold a file of the embedded engine
};

/// The engine of that name in a configuration: "embedded", "postgresql", "sqlserver"; nothing for another.
std::optional<engine> engine_named(const QString& name);
/// The engine and its server in an operator's words.
QString in_words(const server_address& server);

enum class file_use { existing, create };

/// A connection that is not open yet. `create` makes a missing file of the embedded engine.
connection make_connection(const server_address& server, database which, file_use use = file_use::existing);

/// The file of the authorities by which "verify" knows the server.
QString trusted_authorities(const server_address& server);

/// The file of a database of the embedded engine; the local file's on every engine.
QString file_of(const server_address& server, database which);

} // namespace orvo

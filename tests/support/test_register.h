#pragma once

#include "client/client.h"
#include "support/postgresql_databases.h"
#include "support/scripted_prompts.h"
#include "support/tds_server.h"

#include <QTemporaryDir>

#include <optional>

namespace orvo {

/// A program folder of its own with the three databases, complete and empty. On PostgreSQL the server's two
/// stand on the test run's server, on SQL Server behind a server of its own. They go when it goes,
/// connections or not.
class test_register {
public:
    explicit test_register(engine kind);
    ~test_register();
    test_register(const test_register&) = delete;
    test_register& operator=(const test_register&) = delete;

    const server_address& address() const { return address_; }
    program_folder folder() const { return open_program_folder(home_.path()); }
    /// One of the databases, opened.
    connection connect(database which = database::server, line_watch* watch = nullptr) const;
    /// The server of its own that stands for SQL Server; on no other engine.
    tds_server& sql_server() const { return *server_; }

private:
    QTemporaryDir home_;
    server_address address_;
    std::optional<postgresql_databases::pair> databases_;
    std::optional<QTemporaryDir> server_home_;
    std::unique_ptr<tds_server> server_;
};

/// The clock of tests: 2026-11-22 10:00:00, a Sunday.
QDateTime test_clock();

/// A client on a register of its own with its connections open, as it is behind the login of head office.
struct running_client {
    explicit running_client(engine kind);

    test_register its_register;
    scripted_prompts say;
    client c;
};

} // namespace orvo

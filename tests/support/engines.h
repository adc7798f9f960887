#pragma once

#include "db/open.h"

#include <QTest>

#include <array>
#include <optional>

namespace orvo {

inline constexpr std::array engines{engine::embedded, engine::postgresql, engine::sqlserver};

const char* name_of(engine kind);

/// Where the test run's PostgreSQL server is, by ORVO_TEST_POSTGRESQL ("host=... port=... user=..."); nothing
/// without it. The address names no database.
std::optional<server_address> postgresql_server();

/// Whether this test run can use an engine. The test command always starts a PostgreSQL server; a single test
/// that is started by hand may be without. SQL Server's part is taken by a server of the test's own.
bool is_at_hand(engine kind);

/// The rows of a test whose body runs on every engine: one column, `kind`, fetched by FETCH_ENGINE.
void engines_under_test();

} // namespace orvo

/// First in the body of a test that runs on every engine.
#define FETCH_ENGINE(kind)                                                                                   \
    QFETCH(orvo::engine, kind);                                                                              \
    if (!orvo::is_at_hand(kind))                                                                             \
    QSKIP("ORVO_TEST_POSTGRESQL names no server; scripts/with_postgresql.sh starts one")

#pragma once

#include "db/driver.h"
#include "db/open.h"

#include <sql.h>
#include <sqlext.h>

#include <chrono>
#include <functional>
#include <memory>

namespace orvo {

/// What ODBC holds of one line; whoever lets go of it last frees it.
struct odbc_handles {
    SQLHENV environment = SQL_NULL_HENV;
    SQLHDBC line = SQL_NULL_HDBC;
    SQLHSTMT statement = SQL_NULL_HSTMT;

    odbc_handles() = default;
    ~odbc_handles();
    odbc_handles(const odbc_handles&) = delete;
    odbc_handles& operator=(const odbc_handles&) = delete;

    /// Throws what ODBC says of the call that failed: the server's own words and number before the driver's;
    /// unanswered where the server said nothing.
    [[noreturn]] void fail() const;
    void check(SQLRETURN result) const
    {
        if (!SQL_SUCCEEDED(result))
            fail();
    }
};

/// The line to a server behind ODBC, whose calls block: they are made in a thread beside, so that the wait
/// can be watched and ended. A call that does not even end when it is told to is left alone with its line.
class odbc_line {
public:
    odbc_line(server_address server, database where) : server_{std::move(server)}, where_{where} {}

    void open(const driver::tick& waiting);
    void close() { handles_.reset(); }
    /// The open line's; throws line_break where there is none.
    odbc_handles& raw() const;

    /// Makes a call beside this thread. What the call uses must be its own. Throws what the call throws,
    /// and failure_kind::cancelled where the tick ended it.
    void beside(std::function<void(odbc_handles&)> call, const driver::tick& waiting);

private:
    server_address server_;
    database where_;
    std::shared_ptr<odbc_handles> handles_;

    void make_call(std::function<void(odbc_handles&)> call, const driver::tick& waiting,
                   std::chrono::seconds longest, bool is_statement);
};

} // namespace orvo

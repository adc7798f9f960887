#pragma once

#include "db/driver.h"
#include "db/open.h"

#include <libpq-fe.h>

#include <chrono>
#include <memory>

namespace orvo {

struct result_clearer {
    void operator()(PGresult* result) const { PQclear(result); }
};
using result_handle = std::unique_ptr<PGresult, result_clearer>;

/// Asks the tick; throws failure_kind::cancelled where it says no.
void go_on(const driver::tick& waiting);

/// The line to a PostgreSQL server. All waiting is done here, on the socket, so that it can be watched and
/// ended: each wait asks the tick some 30 times a second and throws failure_kind::cancelled where it says no.
class postgresql_line {
public:
    postgresql_line(server_address server, database where) : server_{std::move(server)}, where_{where} {}
    ~postgresql_line() { close(); }
    postgresql_line(const postgresql_line&) = delete;
    postgresql_line& operator=(const postgresql_line&) = delete;

    void open(const driver::tick& waiting);
    void close();
    PGconn* raw() const { return line_; }

    /// Notices a line that broke while nothing was under way, so that no statement is sent into it.
    void expect_alive();
    /// Takes the answer of a libpq call that sends; a 0 is a line that broke before anything was sent.
    void sent(int result) const;
    void flush(const driver::tick& waiting);
    /// Null behind the last one of a statement. What failed before tells why a line ends.
    result_handle next_result(const driver::tick& waiting, const PGresult* failed = nullptr);
    /// Reads what is left of a statement, so that the line is free for the next one. Returns what failed.
    result_handle finish(const driver::tick& waiting);
    /// Reads what is left of a pipeline, up to its end, and leaves it. Returns what failed first: its
    /// statements are committed at its end alone, behind their own good answers.
    result_handle end_pipeline(const driver::tick& waiting, const PGresult* failed = nullptr);
    /// Leaves the statements under way: has the server give them up, and reads what is left of them. A line
    /// on which that does not come to its end at once is closed.
    void leave();
    /// Throws what a result, or the line where there is none, says of a failure.
    [[noreturn]] void fail(const PGresult* result);

private:
    server_address server_;
    database where_;
    PGconn* line_ = nullptr;

    [[noreturn]] void fail_to_open();
    std::chrono::steady_clock::time_point longest_silence() const;
    bool wait_for_socket(short events, const driver::tick& waiting,
                         std::chrono::steady_clock::time_point deadline);
};

} // namespace orvo

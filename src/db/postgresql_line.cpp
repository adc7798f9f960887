#include "db/postgresql_line.h"

#include <QFile>
#include <QRegularExpression>

#include <poll.h>

#include <array>
#include <cerrno>
#include <future>
#include <string_view>
#include <thread>

namespace orvo {

using std::chrono::steady_clock;

namespace {

QString message_of(const char* raw)
{
    return QString::fromUtf8(raw).trimmed();
}

failure_kind kind_of(std::string_view state)
{
    if (state == "28P01" || state == "28000" || state == "3D000")
        return failure_kind::login_refused;
    if (state == "22003" || state == "22001")
        return failure_kind::overflow;
    if (state == "23505")
        return failure_kind::duplicate;
    if (state == "22P02")
        return failure_kind::conversion;
    if (state == "57014")
        return failure_kind::timed_out;
    if (state == "53100")
        return failure_kind::disk_full;
    return failure_kind::other;
}

/// Nobody can do anything meanwhile.
constexpr std::chrono::seconds longest_leaving{1};

/// What libpq is told, by its own words.
std::vector<std::pair<const char*, QByteArray>> settings_of(const server_address& server, database where)
{
    const qint64 milliseconds = qint64{server.statement_timeout.count()} * 1000;
    std::vector<std::pair<const char*, QByteArray>> settings{
        {"host", server.host.toUtf8()},
        {"port", QByteArray::number(server.port ? server.port : 5432)},
        {"user", server.user.toUtf8()},
        {"password", server.password.toUtf8()},
        {"dbname", (where == database::mail ? server.mail_name : server.name).toUtf8()},
        {"client_encoding", "UTF8"},
        {"application_name", "orvo"},
        {"options", "-c statement_timeout=" + QByteArray::number(milliseconds)}};
    if (server.tls != QLatin1String("verify")) {
        settings.emplace_back("sslmode", server.tls.isEmpty() ? QByteArray{"prefer"} : server.tls.toUtf8());
    } else {
        settings.emplace_back("sslmode", "verify-full");
        settings.emplace_back("sslrootcert", QFile::encodeName(trusted_authorities(server)));
        settings.emplace_back("gssencmode", "disable"); // in its place nobody would show a certificate
    }
    return settings;
}

/// The server ends the line, and says so instead of carrying the statement out.
bool ends_line(std::string_view state)
{
    return state == "57P01" || state == "57P02" || state == "57P03" || state == "57P05";
}

} // namespace

void go_on(const driver::tick& waiting)
{
    if (!waiting())
        throw db_failure{failure_kind::cancelled, QStringLiteral("cancelled")};
}

void postgresql_line::fail(const PGresult* result)
{
    const char* state = result ? PQresultErrorField(result, PG_DIAG_SQLSTATE) : nullptr;
    const QString text = message_of(result ? PQresultErrorMessage(result) : PQerrorMessage(line_));
    const std::string_view code = state ? state : "";
    const QString told = QString::fromLatin1(state);
    if (ends_line(code))
        throw line_break{text, false, told};
    if (PQstatus(line_) == CONNECTION_BAD || code.empty())
        throw line_break{text, true, told};
    throw db_failure{kind_of(code), text, {}, told};
}

void postgresql_line::fail_to_open()
{
    // No result holds the server's code here. Told to be verbose, libpq puts it before the server's words,
    // which are in a language of the server's own, and the place in the server's source behind them.
    static const QRegularExpression code{QStringLiteral(":  ([0-9A-Z]{5}): ")};
    static const QRegularExpression place{QStringLiteral("\n\\S+:  \\w+, \\S+:\\d+")};
    QString text = message_of(PQerrorMessage(line_));
    const QString told = code.match(text).captured(1);
    const std::string state = told.toStdString();
    const bool refused = kind_of(state) == failure_kind::login_refused ||
                         state == "42501" || // no right to the database
                         PQconnectionNeedsPassword(line_);
    text.replace(code, QStringLiteral(":  ")).remove(place);
    close();
    if (refused)
        throw db_failure{failure_kind::login_refused, text, {}, told};
    throw line_break{text, false, told};
}

/// False when the deadline has passed. The tick may end the waiting by an exception (cancelled).
bool postgresql_line::wait_for_socket(short events, const driver::tick& waiting,
                                      steady_clock::time_point deadline)
{
    while (true) {
        pollfd socket{PQsocket(line_), events, 0};
        const int ready = ::poll(&socket, 1, 30);
        if (ready > 0 || (ready < 0 && errno != EINTR))
            return true;
        go_on(waiting);
        if (steady_clock::now() > deadline)
            return false;
    }
}

void postgresql_line::open(const driver::tick& waiting)
{
    close();
    const auto settings = settings_of(server_, where_);
    std::vector<const char*> keys;
    std::vector<const char*> given;
    for (const auto& [key, value] : settings) {
        keys.push_back(key);
        given.push_back(value.constData());
    }
    keys.push_back(nullptr);
    given.push_back(nullptr);
    const auto deadline = steady_clock::now() + server_.connect_timeout;
    line_ = PQconnectStartParams(keys.data(), given.data(), 0);
    if (!line_ || PQstatus(line_) == CONNECTION_BAD)
        fail_to_open();
    PQsetNoticeProcessor(
        line_, [](void*, const char*) {}, nullptr);
    PQsetErrorVerbosity(line_, PQERRORS_VERBOSE);
    try {
        for (auto state = PGRES_POLLING_WRITING; state != PGRES_POLLING_OK; state = PQconnectPoll(line_)) {
            if (state == PGRES_POLLING_FAILED)
                fail_to_open();
            if (!wait_for_socket(state == PGRES_POLLING_READING ? POLLIN : POLLOUT, waiting, deadline))
                throw line_break{QStringLiteral("the server does not answer"), false};
        }
    } catch (const db_failure&) {
        close();
        throw;
    }
    PQsetErrorVerbosity(line_, PQERRORS_DEFAULT);
    PQsetnonblocking(line_, 1);
}

void postgresql_line::close()
{
    PQfinish(line_);
    line_ = nullptr;
}

void postgresql_line::sent(int result) const
{
    if (!result)
        throw line_break{message_of(PQerrorMessage(line_)), false};
}

void postgresql_line::expect_alive()
{
    if (!line_)
        throw line_break{QStringLiteral("the server is not connected"), false};
    pollfd socket{PQsocket(line_), POLLIN, 0};
    if (::poll(&socket, 1, 0) > 0 && !PQconsumeInput(line_))
        throw line_break{message_of(PQerrorMessage(line_)), false};
    if (PQstatus(line_) == CONNECTION_BAD)
        throw line_break{message_of(PQerrorMessage(line_)), false};
}

/// The server ends a statement at its time-out; a server that does not even do that is gone.
steady_clock::time_point postgresql_line::longest_silence() const
{
    return steady_clock::now() + server_.statement_timeout + std::chrono::seconds{5};
}

void postgresql_line::flush(const driver::tick& waiting)
{
    const auto deadline = longest_silence();
    while (true) {
        const int left = PQflush(line_);
        if (left < 0)
            fail(nullptr);
        if (left == 0)
            return;
        if (!wait_for_socket(POLLIN | POLLOUT, waiting, deadline))
            throw line_break{QStringLiteral("the server does not answer"), true};
        PQconsumeInput(line_);
    }
}

result_handle postgresql_line::next_result(const driver::tick& waiting, const PGresult* failed)
{
    const auto deadline = longest_silence();
    while (PQisBusy(line_)) {
        if (!wait_for_socket(POLLIN, waiting, deadline))
            throw line_break{QStringLiteral("the server does not answer"), true};
        if (!PQconsumeInput(line_))
            fail(failed);
    }
    return result_handle{PQgetResult(line_)};
}

void postgresql_line::leave()
{
    // The server closes the line of such an order when it has passed it on. On a line that stalls it does
    // not.
    std::packaged_task<void()> order{[whom = PQgetCancel(line_)] {
        std::array<char, 256> reason;
        PQcancel(whom, reason.data(), static_cast<int>(reason.size()));
        PQfreeCancel(whom);
    }};
    const std::future<void> passed_on = order.get_future();
    std::thread{std::move(order)}.detach();
    const auto deadline = steady_clock::now() + longest_leaving;
    const driver::tick in_time = [deadline] { return steady_clock::now() < deadline; };
    try {
        if (PQpipelineStatus(line_) == PQ_PIPELINE_OFF)
            finish(in_time);
        else
            end_pipeline(in_time);
        // An order still on its way would hit the next statement.
        if (passed_on.wait_until(deadline) == std::future_status::ready)
            return;
    } catch (const db_failure&) {
        // The line is not worth the wait.
    }
    close();
}

result_handle postgresql_line::end_pipeline(const driver::tick& waiting, const PGresult* failed)
{
    result_handle first;
    // Each statement's answers end with an empty result; the pipeline's with one that says so.
    while (PQstatus(line_) == CONNECTION_OK) {
        result_handle result = next_result(waiting, failed);
        const ExecStatusType status = result ? PQresultStatus(result.get()) : PGRES_COMMAND_OK;
        if (status == PGRES_PIPELINE_SYNC)
            break;
        if (status == PGRES_FATAL_ERROR && !failed) {
            first = std::move(result);
            failed = first.get();
        }
        go_on(waiting);
    }
    if (PQstatus(line_) != CONNECTION_OK || !PQexitPipelineMode(line_))
        fail(failed);
    return first;
}

result_handle postgresql_line::finish(const driver::tick& waiting)
{
    result_handle failed;
    while (PQstatus(line_) == CONNECTION_OK) {
        result_handle result = next_result(waiting, failed.get());
        if (!result)
            break;
        if (PQresultStatus(result.get()) == PGRES_FATAL_ERROR && !failed)
            failed = std::move(result);
        go_on(waiting);
    }
    if (PQstatus(line_) != CONNECTION_OK)
        fail(failed.get());
    return failed;
}

} // namespace orvo

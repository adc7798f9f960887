#include "db/postgresql_driver.h"

#include <libpq-fe.h>
#include <poll.h>

#include <cerrno>
#include <charconv>
#include <unordered_map>

namespace orvo {

using std::chrono::steady_clock;

namespace {

constexpr Oid oid_text = 25;
constexpr Oid oid_int8 = 20;

struct result_clearer {
    void operator()(PGresult* result) const { PQclear(result); }
};
using result_handle = std::unique_ptr<PGresult, result_clearer>;

QString message_of(const char* raw)
{
    return QString::fromUtf8(raw).trimmed();
}

failure_kind kind_of(std::string_view state)
{
    if (state == "28P01" || state == "28000" || state == "3D000" || state == "42501")
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

/// The server ends the line, and says so instead of carrying the statement out.
bool ends_line(std::string_view state)
{
    return state == "57P01" || state == "57P02" || state == "57P03";
}

/// One row in the text form of COPY.
void append_copy_line(std::string& lines, const std::vector<cell>& row)
{
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (i > 0)
            lines += '\t';
        if (row[i].is == cell::kind::number) {
            lines += std::to_string(row[i].number);
            continue;
        }
        for (char c : row[i].text) {
            if (c == '\t' || c == '\n' || c == '\r' || c == '\\')
                lines += '\\';
            lines += c == '\t' ? 't' : c == '\n' ? 'n' : c == '\r' ? 'r' : c;
        }
    }
    lines += '\n';
}

class postgresql_driver : public driver {
public:
    postgresql_driver(server_address server, database where) : server_{std::move(server)}, where_{where} {}
    ~postgresql_driver() override { postgresql_driver::close(); }

    engine kind() const override { return engine::postgresql; }
    database where() const override { return where_; }
    void open(const tick& waiting) override;
    void close() override;
    qint64 run(const ready_statement& text, const std::vector<bound_value>& bound, row_sink* sink, bool large,
               const tick& waiting) override;
    void run_again(const ready_statement& text, std::span<const cell> fields) override;
    void direct(const std::string& sql) override;
    void load(std::string_view table, const std::vector<std::string_view>& columns,
              const std::function<bool(std::vector<cell>&)>& next) override;

private:
    server_address server_;
    database where_;
    PGconn* line_ = nullptr;
    std::unordered_map<const ready_statement*, std::string> prepared_;

    [[noreturn]] void fail(const PGresult* result);
    [[noreturn]] void fail_to_open();
    bool wait_for_socket(short events, const tick& waiting, steady_clock::time_point deadline);
    void expect_line();
    void flush(const tick& waiting);
    result_handle next_result(const tick& waiting);
    void finish(const tick& waiting);
    void cancel();
    void sent(int result) const;
    const std::string& prepared(const ready_statement& text, const tick& waiting);
    void send(const ready_statement& text, const std::vector<const char*>& fields, const tick& waiting);
    qint64 collect(row_sink* sink, const tick& waiting);
    void put_copy_data(std::string& lines, const tick& waiting);
    bool hand_on(const PGresult* result, row_sink& sink, bool& begun, std::vector<cell>& row);
};

steady_clock::time_point forever() { return steady_clock::time_point::max(); }

void postgresql_driver::fail(const PGresult* result)
{
    const char* state = result ? PQresultErrorField(result, PG_DIAG_SQLSTATE) : nullptr;
    const QString text = message_of(result ? PQresultErrorMessage(result) : PQerrorMessage(line_));
    const std::string_view code = state ? state : "";
    if (ends_line(code))
        throw line_break{text, false};
    if (PQstatus(line_) == CONNECTION_BAD || code.empty())
        throw line_break{text, true};
    throw db_failure{kind_of(code), text};
}

void postgresql_driver::fail_to_open()
{
    // libpq hands no code on for a refused login, but the server's words follow the code it sent.
    const QString text = message_of(PQerrorMessage(line_));
    const bool refused = text.contains(QLatin1String("authentication failed")) ||
                         text.contains(QLatin1String("no password supplied")) ||
                         text.contains(QLatin1String("does not exist"));
    close();
    if (refused)
        throw db_failure{failure_kind::login_refused, text};
    throw line_break{text, false};
}

/// False when the deadline has passed. The tick may end the waiting by an exception (cancelled).
bool postgresql_driver::wait_for_socket(short events, const tick& waiting, steady_clock::time_point deadline)
{
    while (true) {
        pollfd socket{PQsocket(line_), events, 0};
        const int ready = ::poll(&socket, 1, 30);
        if (ready > 0 || (ready < 0 && errno != EINTR))
            return true;
        if (!waiting())
            throw db_failure{failure_kind::cancelled, QStringLiteral("cancelled")};
        if (steady_clock::now() > deadline)
            return false;
    }
}

void postgresql_driver::open(const tick& waiting)
{
    close();
    const QByteArray host = server_.host.toUtf8();
    const QByteArray port = QByteArray::number(server_.port ? server_.port : 5432);
    const QByteArray user = server_.user.toUtf8();
    const QByteArray password = server_.password.toUtf8();
    const QByteArray name = (where_ == database::mail ? server_.mail_name : server_.name).toUtf8();
    const QByteArray tls = server_.tls.isEmpty() ? QByteArray{"prefer"} : server_.tls.toUtf8();
    const QByteArray options =
        "-c statement_timeout=" + QByteArray::number(qint64{server_.statement_timeout.count()} * 1000);
    const char* keys[] = {"host",    "port",            "user",             "password", "dbname",
                          "sslmode", "client_encoding", "application_name", "options",  nullptr};
    const char* given[] = {host.constData(), port.constData(), user.constData(), password.constData(), name.constData(),
                           tls.constData(),  "UTF8",           "orvo",           options.constData(),  nullptr};
    const auto deadline = steady_clock::now() + server_.connect_timeout;
    line_ = PQconnectStartParams(keys, given, 0);
    if (!line_ || PQstatus(line_) == CONNECTION_BAD)
        fail_to_open();
    PQsetNoticeProcessor(
        line_, [](void*, const char*) {}, nullptr);
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
    PQsetnonblocking(line_, 1);
}

void postgresql_driver::close()
{
    prepared_.clear();
    PQfinish(line_);
    line_ = nullptr;
}

void postgresql_driver::sent(int result) const
{
    if (!result)
        throw line_break{message_of(PQerrorMessage(line_)), false};
}

/// Notices a line that broke while nothing was under way, so that no statement is sent into it.
void postgresql_driver::expect_line()
{
    if (!line_)
        throw line_break{QStringLiteral("the server is not connected"), false};
    pollfd socket{PQsocket(line_), POLLIN, 0};
    if (::poll(&socket, 1, 0) > 0 && !PQconsumeInput(line_))
        throw line_break{message_of(PQerrorMessage(line_)), false};
    if (PQstatus(line_) == CONNECTION_BAD)
        throw line_break{message_of(PQerrorMessage(line_)), false};
}

void postgresql_driver::flush(const tick& waiting)
{
    while (true) {
        const int left = PQflush(line_);
        if (left < 0)
            fail(nullptr);
        if (left == 0)
            return;
        wait_for_socket(POLLIN | POLLOUT, waiting, forever());
        PQconsumeInput(line_);
    }
}

result_handle postgresql_driver::next_result(const tick& waiting)
{
    // The server ends a statement at its time-out; a server that does not even do that is gone.
    const auto deadline = steady_clock::now() + server_.statement_timeout + std::chrono::seconds{5};
    while (PQisBusy(line_)) {
        if (!wait_for_socket(POLLIN, waiting, deadline))
            throw line_break{QStringLiteral("the server does not answer"), true};
        if (!PQconsumeInput(line_))
            fail(nullptr);
    }
    return result_handle{PQgetResult(line_)};
}

void postgresql_driver::cancel()
{
    char reason[256];
    if (PGcancel* order = PQgetCancel(line_)) {
        PQcancel(order, reason, sizeof reason);
        PQfreeCancel(order);
    }
}

/// Reads what is left of a statement, so that the line is free for the next one.
void postgresql_driver::finish(const tick& waiting)
{
    while (PQstatus(line_) == CONNECTION_OK && next_result(waiting)) {
    }
}

const std::string& postgresql_driver::prepared(const ready_statement& text, const tick& waiting)
{
    std::string& name = prepared_[&text];
    if (!name.empty())
        return name;
    std::vector<Oid> types;
    for (const parameter& each : text.parameters)
        types.push_back(each.is_number() ? oid_int8 : oid_text);
    const std::string fresh = "s" + std::to_string(prepared_.size());
    sent(PQsendPrepare(line_, fresh.c_str(), text.sql.c_str(), static_cast<int>(types.size()), types.data()));
    flush(waiting);
    const result_handle result = next_result(waiting);
    if (PQresultStatus(result.get()) != PGRES_COMMAND_OK) {
        prepared_.erase(&text);
        if (!result || PQstatus(line_) == CONNECTION_BAD)
            throw line_break{message_of(PQerrorMessage(line_)), false};
        finish(waiting);
        fail(result.get());
    }
    finish(waiting);
    return name = fresh;
}

void postgresql_driver::send(const ready_statement& text, const std::vector<const char*>& fields,
                             const tick& waiting)
{
    expect_line();
    const std::string& name = prepared(text, waiting);
    sent(PQsendQueryPrepared(line_, name.c_str(), static_cast<int>(fields.size()), fields.data(), nullptr,
                             nullptr, 0));
}

bool postgresql_driver::hand_on(const PGresult* result, row_sink& sink, bool& begun, std::vector<cell>& row)
{
    const int count = PQnfields(result);
    if (!begun) {
        column_names names;
        for (int i = 0; i < count; ++i)
            names.emplace_back(PQfname(result, i));
        sink.begin(names);
        row.resize(static_cast<std::size_t>(count));
        begun = true;
    }
    const int rows = PQntuples(result);
    for (int r = 0; r < rows; ++r) {
        for (int i = 0; i < count; ++i) {
            const auto size = static_cast<std::size_t>(PQgetlength(result, r, i));
            row[static_cast<std::size_t>(i)] =
                size == 0 && PQgetisnull(result, r, i)
                    ? cell{}
                    : cell::of(std::string_view{PQgetvalue(result, r, i), size});
        }
        if (!sink.take(row))
            return false;
    }
    return true;
}

qint64 postgresql_driver::collect(row_sink* sink, const tick& waiting)
{
    const tick patient = [] { return true; };
    qint64 written = 0;
    bool begun = false;
    std::vector<cell> row;
    int since_tick = 0;
    bool answered = false;
    try {
        while (const result_handle result = next_result(waiting)) {
            const ExecStatusType status = PQresultStatus(result.get());
            if (status == PGRES_COMMAND_OK) {
                written = QByteArray{PQcmdTuples(result.get())}.toLongLong();
            } else if (status == PGRES_TUPLES_OK || status == PGRES_SINGLE_TUPLE) {
                if (sink && !hand_on(result.get(), *sink, begun, row)) {
                    cancel();
                    finish(patient);
                    return written;
                }
                if (++since_tick == 64) {
                    since_tick = 0;
                    if (!waiting())
                        throw db_failure{failure_kind::cancelled, QStringLiteral("cancelled")};
                }
            } else {
                answered = true;
                fail(result.get());
            }
        }
    } catch (const line_break&) {
        throw;
    } catch (...) {
        if (!answered) // the operator's wish or the sink's failure: the server is still at it
            cancel();
        finish(patient);
        throw;
    }
    return written;
}

qint64 postgresql_driver::run(const ready_statement& text, const std::vector<bound_value>& bound, row_sink* sink,
                              bool large, const tick& waiting)
{
    std::vector<std::string> numbers(bound.size());
    std::vector<const char*> fields(bound.size());
    for (std::size_t i = 0; i < bound.size(); ++i) {
        if (const auto* number = std::get_if<std::int64_t>(&bound[i]))
            fields[i] = (numbers[i] = std::to_string(*number)).c_str();
        else
            fields[i] = std::get<std::string>(bound[i]).c_str();
    }
    send(text, fields, waiting);
    if (large)
        PQsetSingleRowMode(line_);
    flush(waiting);
    return collect(sink, waiting);
}

void postgresql_driver::run_again(const ready_statement& text, std::span<const cell> given)
{
    const tick patient = [] { return true; };
    std::vector<std::string> texts;
    texts.reserve(given.size());
    std::vector<const char*> fields;
    for (const cell& field : given) {
        texts.push_back(field.is == cell::kind::number ? std::to_string(field.number) : std::string{field.text});
        fields.push_back(texts.back().c_str());
    }
    send(text, fields, patient);
    flush(patient);
    collect(nullptr, patient);
}

void postgresql_driver::direct(const std::string& sql)
{
    const tick patient = [] { return true; };
    expect_line();
    sent(PQsendQuery(line_, sql.c_str()));
    flush(patient);
    collect(nullptr, patient);
}

void postgresql_driver::load(std::string_view table, const std::vector<std::string_view>& columns,
                             const std::function<bool(std::vector<cell>&)>& next)
{
    const tick patient = [] { return true; };
    std::string names;
    for (std::string_view column : columns)
        names.append(names.empty() ? "" : ",").append(column);
    expect_line();
    sent(PQsendQuery(line_, ("copy " + std::string{table} + " (" + names + ") from stdin").c_str()));
    flush(patient);
    const result_handle started = next_result(patient);
    if (PQresultStatus(started.get()) != PGRES_COPY_IN) {
        finish(patient);
        fail(started.get());
    }
    try {
        std::string lines;
        std::vector<cell> row;
        while (row.clear(), next(row)) {
            append_copy_line(lines, row);
            if (lines.size() > 1 << 16)
                put_copy_data(lines, patient);
        }
        put_copy_data(lines, patient);
    } catch (...) {
        // What was sent is given up, and the line is free for the next statement.
        PQputCopyEnd(line_, "given up");
        finish(patient);
        throw;
    }
    sent(PQputCopyEnd(line_, nullptr) == 1);
    flush(patient);
    collect(nullptr, patient);
}

void postgresql_driver::put_copy_data(std::string& lines, const tick& waiting)
{
    int taken = 0;
    while ((taken = PQputCopyData(line_, lines.data(), static_cast<int>(lines.size()))) == 0)
        flush(waiting); // its buffer is full until the server has read some of it
    if (taken < 0)
        fail(nullptr);
    flush(waiting);
    lines.clear();
}

} // namespace

std::unique_ptr<driver> make_postgresql_driver(const server_address& server, database where)
{
    return std::make_unique<postgresql_driver>(server, where);
}

} // namespace orvo

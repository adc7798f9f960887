#include "db/postgresql_driver.h"

#include "db/postgresql_line.h"

#include <array>
#include <unordered_map>

namespace orvo {

namespace {

constexpr Oid oid_text = 25;
constexpr Oid oid_int8 = 20;

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
    postgresql_driver(const server_address& server, database where) : line_{server, where}, where_{where} {}

    engine kind() const override { return engine::postgresql; }
    database where() const override { return where_; }
    void open(const tick& waiting) override;
    void close() override;
    qint64 run(const ready_statement& text, const std::vector<bound_value>& bound, row_sink* sink, bool large,
               const tick& waiting) override;
    void read_together(std::span<const statement_run> reads, const tick& waiting) override
    {
        run_in_one_wait(reads, waiting);
    }
    void run_again(const ready_statement& text, std::span<const cell> fields) override;
    void direct(const std::string& sql) override;
    void load(std::string_view table, const std::vector<std::string_view>& columns,
              const std::function<bool(std::vector<cell>&)>& next) override;

private:
    postgresql_line line_;
    database where_;
    std::unordered_map<const ready_statement*, std::string> prepared_; ///< by name
    int next_name_ = 0;

    qint64 run_in_one_wait(std::span<const statement_run> all, const tick& waiting);
    void send_pipelined(const statement_run& one, std::vector<const ready_statement*>& fresh);
    qint64 collect_pipelined(const statement_run& one, bool is_fresh, result_handle& failed,
                             const tick& waiting);
    qint64 collect(row_sink* sink, const tick& waiting);
    void put_copy_data(std::string& lines, const tick& waiting);
    bool hand_on(const PGresult* result, row_sink& sink, bool& begun, std::vector<cell>& row);
};

void postgresql_driver::open(const tick& waiting)
{
    close();
    line_.open(waiting);
}

void postgresql_driver::close()
{
    prepared_.clear();
    line_.close();
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
        while (const result_handle result = line_.next_result(waiting)) {
            const ExecStatusType status = PQresultStatus(result.get());
            if (status == PGRES_COMMAND_OK) {
                written = QByteArray{PQcmdTuples(result.get())}.toLongLong();
            } else if (status == PGRES_TUPLES_OK || status == PGRES_SINGLE_TUPLE) {
                if (sink && !hand_on(result.get(), *sink, begun, row)) {
                    line_.cancel();
                    line_.finish(patient);
                    return written;
                }
                if (++since_tick == 64) {
                    since_tick = 0;
                    if (!waiting())
                        throw db_failure{failure_kind::cancelled, QStringLiteral("cancelled")};
                }
            } else {
                answered = true;
                line_.fail(result.get());
            }
        }
    } catch (const line_break&) {
        throw;
    } catch (...) {
        if (!answered) // the operator's wish or the sink's failure: the server is still at it
            line_.cancel();
        line_.finish(patient);
        throw;
    }
    return written;
}

namespace {

/// The values of one statement as libpq takes them.
class text_fields {
public:
    explicit text_fields(const std::vector<bound_value>& bound)
        : numbers_(bound.size()), fields_(bound.size())
    {
        for (std::size_t i = 0; i < bound.size(); ++i) {
            if (const auto* number = std::get_if<std::int64_t>(&bound[i]))
                fields_[i] = (numbers_[i] = std::to_string(*number)).c_str();
            else
                fields_[i] = std::get<std::string>(bound[i]).c_str();
        }
    }

    const char* const* data() const { return fields_.data(); }
    int count() const { return static_cast<int>(fields_.size()); }

private:
    std::vector<std::string> numbers_;
    std::vector<const char*> fields_;
};

std::vector<Oid> types_of(const ready_statement& text)
{
    std::vector<Oid> types;
    for (const parameter& each : text.parameters)
        types.push_back(each.is_number() ? oid_int8 : oid_text);
    return types;
}

} // namespace

/// A large result is asked for rarely, and not prepared; of the others one that is not prepared yet is
/// prepared and run in one wait.
qint64 postgresql_driver::run(const ready_statement& text, const std::vector<bound_value>& bound,
                              row_sink* sink, bool large, const tick& waiting)
{
    const auto known = prepared_.find(&text);
    if (!large && known == prepared_.end())
        return run_in_one_wait(std::array{statement_run{&text, bound, sink}}, waiting);
    const text_fields fields{bound};
    line_.expect_alive();
    if (large) {
        const std::vector<Oid> types = types_of(text);
        line_.sent(PQsendQueryParams(line_.raw(), text.sql.c_str(), fields.count(), types.data(),
                                     fields.data(), nullptr, nullptr, 0));
        PQsetSingleRowMode(line_.raw());
    } else {
        line_.sent(PQsendQueryPrepared(line_.raw(), known->second.c_str(), fields.count(), fields.data(),
                                       nullptr, nullptr, 0));
    }
    line_.flush(waiting);
    return collect(sink, waiting);
}

void postgresql_driver::send_pipelined(const statement_run& one, std::vector<const ready_statement*>& fresh)
{
    auto [known, is_new] = prepared_.try_emplace(one.text);
    if (is_new) {
        fresh.push_back(one.text);
        known->second = "s" + std::to_string(next_name_++);
        const std::vector<Oid> types = types_of(*one.text);
        line_.sent(PQsendPrepare(line_.raw(), known->second.c_str(), one.text->sql.c_str(),
                                 static_cast<int>(types.size()), types.data()));
    }
    const text_fields fields{one.bound};
    line_.sent(PQsendQueryPrepared(line_.raw(), known->second.c_str(), fields.count(), fields.data(), nullptr,
                                   nullptr, 0));
}

/// Takes the answers of one statement; behind a failure the server passes the others over.
qint64 postgresql_driver::collect_pipelined(const statement_run& one, bool is_fresh, result_handle& failed,
                                            const tick& waiting)
{
    qint64 written = 0;
    bool begun = false;
    std::vector<cell> row;
    for (int answers = is_fresh ? 2 : 1; answers > 0; --answers) {
        const bool is_preparing = answers == 2;
        while (result_handle result = line_.next_result(waiting)) {
            const ExecStatusType status = PQresultStatus(result.get());
            if (status == PGRES_TUPLES_OK && one.sink)
                hand_on(result.get(), *one.sink, begun, row);
            else if (status == PGRES_COMMAND_OK && !is_preparing)
                written = QByteArray{PQcmdTuples(result.get())}.toLongLong();
            else if (status == PGRES_FATAL_ERROR && !failed)
                failed = std::move(result);
        }
        if (PQstatus(line_.raw()) == CONNECTION_BAD)
            line_.fail(nullptr);
    }
    return written;
}

qint64 postgresql_driver::run_in_one_wait(std::span<const statement_run> all, const tick& waiting)
{
    line_.expect_alive();
    std::vector<const ready_statement*> fresh;
    PQenterPipelineMode(line_.raw());
    const auto forget_fresh = [&] {
        for (const ready_statement* each : fresh)
            prepared_.erase(each);
    };
    result_handle failed;
    qint64 written = 0;
    try {
        std::vector<bool> is_fresh;
        for (const statement_run& each : all) {
            const std::size_t before = fresh.size();
            send_pipelined(each, fresh);
            is_fresh.push_back(fresh.size() > before);
        }
        line_.sent(PQpipelineSync(line_.raw()));
        line_.flush(waiting);
        for (std::size_t i = 0; i < all.size(); ++i)
            written = collect_pipelined(all[i], is_fresh[i], failed, waiting);
    } catch (const line_break&) {
        forget_fresh();
        throw;
    } catch (...) { // the operator's wish or the sink's failure: the server is still at it
        forget_fresh();
        line_.cancel();
        line_.end_pipeline([] { return true; });
        throw;
    }
    line_.end_pipeline(waiting);
    if (failed) {
        forget_fresh();
        line_.fail(failed.get());
    }
    return written;
}

void postgresql_driver::run_again(const ready_statement& text, std::span<const cell> given)
{
    std::vector<bound_value> bound;
    for (const cell& field : given)
        if (field.is == cell::kind::number)
            bound.emplace_back(field.number);
        else
            bound.emplace_back(std::string{field.text});
    run(text, bound, nullptr, false, [] { return true; });
}

void postgresql_driver::direct(const std::string& sql)
{
    const tick patient = [] { return true; };
    line_.expect_alive();
    line_.sent(PQsendQuery(line_.raw(), sql.c_str()));
    line_.flush(patient);
    collect(nullptr, patient);
}

void postgresql_driver::load(std::string_view table, const std::vector<std::string_view>& columns,
                             const std::function<bool(std::vector<cell>&)>& next)
{
    const tick patient = [] { return true; };
    std::string names;
    for (std::string_view column : columns)
        names.append(names.empty() ? "" : ",").append(column);
    line_.expect_alive();
    line_.sent(
        PQsendQuery(line_.raw(), ("copy " + std::string{table} + " (" + names + ") from stdin").c_str()));
    line_.flush(patient);
    const result_handle started = line_.next_result(patient);
    if (PQresultStatus(started.get()) != PGRES_COPY_IN) {
        line_.finish(patient);
        line_.fail(started.get());
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
        PQputCopyEnd(line_.raw(), "given up");
        line_.finish(patient);
        throw;
    }
    line_.sent(PQputCopyEnd(line_.raw(), nullptr) == 1);
    line_.flush(patient);
    collect(nullptr, patient);
}

void postgresql_driver::put_copy_data(std::string& lines, const tick& waiting)
{
    int taken = 0;
    while ((taken = PQputCopyData(line_.raw(), lines.data(), static_cast<int>(lines.size()))) == 0)
        line_.flush(waiting); // its buffer is full until the server has read some of it
    if (taken < 0)
        line_.fail(nullptr);
    line_.flush(waiting);
    lines.clear();
}

} // namespace

std::unique_ptr<driver> make_postgresql_driver(const server_address& server, database where)
{
    return std::make_unique<postgresql_driver>(server, where);
}

} // namespace orvo

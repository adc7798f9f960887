#include "db/postgresql_pipeline.h"

#include "db/postgresql_values.h"

#include <optional>

namespace orvo {

namespace {

constexpr int rows_between_ticks = 64;

/// Statements that go out together, and what comes of them.
class pipeline {
public:
    pipeline(postgresql_line& line, prepared_names& names, const driver::tick& waiting)
        : line_{line}, names_{names}, waiting_{waiting}
    {
    }

    void run(std::span<const statement_run> all);

    qint64 written() const { return written_; }
    /// Whether a prepared statement is not what it was: its table has changed, or the server has forgotten
    /// it.
    bool is_stale() const;
    void throw_failed();

private:
    postgresql_line& line_;
    prepared_names& names_;
    const driver::tick& waiting_;
    std::vector<const ready_statement*> fresh_;
    qint64 written_ = 0;
    result_handle failed_;
    const ready_statement* failed_text_ = nullptr; ///< null where all of them failed together, at the commit

    const PGresult* failed() const { return failed_.get(); }
    int send(const statement_run& one);
    bool collect(const statement_run& one, int answers);
    void forget_fresh();
};

/// Returns how many answers will come. A large result is asked for rarely, and not prepared. The server's
/// limit would count the time in which its rows are read, so it is taken off as far as the pipeline's end; a
/// silence too long is noticed here.
int pipeline::send(const statement_run& one)
{
    const std::vector<Oid> types = types_of(*one.text);
    const text_fields fields{one.bound};
    const char* sql = one.text->sql.c_str();
    if (one.large) {
        line_.sent(PQsendQueryParams(line_.raw(), "select set_config('statement_timeout','0',true)", 0,
                                     nullptr, nullptr, nullptr, nullptr, 0));
        line_.sent(PQsendQueryParams(line_.raw(), sql, fields.count(), types.data(), fields.data(), nullptr,
                                     nullptr, 0));
        return 2;
    }
    const char* name = names_.find(*one.text);
    const bool is_fresh = !name;
    if (is_fresh) {
        fresh_.push_back(one.text);
        name = names_.add(*one.text);
        line_.sent(PQsendPrepare(line_.raw(), name, sql, fields.count(), types.data()));
    }
    line_.sent(PQsendQueryPrepared(line_.raw(), name, fields.count(), fields.data(), nullptr, nullptr, 0));
    return is_fresh ? 2 : 1;
}

/// Takes the answers of one statement; behind a failure the server passes the others over. False where the
/// sink has enough.
bool pipeline::collect(const statement_run& one, int answers)
{
    std::optional<row_feeder> feeder;
    if (one.sink)
        feeder.emplace(*one.sink);
    for (; answers > 0; --answers) {
        const bool is_preparing = answers == 2;
        if (one.large && !is_preparing)
            PQsetSingleRowMode(line_.raw());
        int since_tick = 0;
        while (result_handle result = line_.next_result(waiting_, failed())) {
            const ExecStatusType status = PQresultStatus(result.get());
            if (status == PGRES_FATAL_ERROR && !failed_) {
                failed_ = std::move(result);
                failed_text_ = one.text;
            } else if (status == PGRES_COMMAND_OK && !is_preparing) {
                written_ = QByteArray{PQcmdTuples(result.get())}.toLongLong();
            } else if ((status == PGRES_TUPLES_OK || status == PGRES_SINGLE_TUPLE) && !is_preparing &&
                       feeder && !feeder->hand_on(result.get())) {
                return false;
            }
            if (++since_tick % rows_between_ticks == 0)
                go_on(waiting_);
        }
        if (PQstatus(line_.raw()) == CONNECTION_BAD)
            line_.fail(failed());
    }
    return true;
}

void pipeline::forget_fresh()
{
    for (const ready_statement* each : fresh_)
        names_.forget(each);
}

void pipeline::run(std::span<const statement_run> all)
{
    line_.sent(PQenterPipelineMode(line_.raw())); // refused where an earlier answer is still to come
    try {
        std::vector<int> answers;
        for (const statement_run& each : all)
            answers.push_back(send(each));
        line_.sent(PQpipelineSync(line_.raw()));
        line_.flush(waiting_);
        for (std::size_t i = 0; i < all.size(); ++i)
            if (!collect(all[i], answers[i])) {
                forget_fresh();
                return line_.leave();
            }
        result_handle at_commit = line_.end_pipeline(waiting_, failed());
        if (at_commit)
            failed_ = std::move(at_commit);
    } catch (const line_break&) {
        throw;      // and whoever closes the line forgets all names
    } catch (...) { // the operator's wish or the sink's failure: the server is still at it
        forget_fresh();
        line_.leave();
        throw;
    }
    if (failed_)
        forget_fresh();
}

void pipeline::throw_failed()
{
    if (!failed_)
        return;
    try {
        line_.fail(failed());
    } catch (db_failure& failure) {
        if (failed_text_)
            failure.name(QString::fromStdString(failed_text_->text));
        throw;
    }
}

bool pipeline::is_stale() const
{
    const char* state = failed_text_ ? PQresultErrorField(failed(), PG_DIAG_SQLSTATE) : nullptr;
    const std::string_view code = state ? state : "";
    return code == "0A000" || code == "26000";
}

} // namespace

qint64 run_in_one_wait(postgresql_line& line, prepared_names& names, std::span<const statement_run> all,
                       const driver::tick& waiting)
{
    line.expect_alive();
    std::optional<pipeline> sent;
    sent.emplace(line, names, waiting).run(all);
    // Nothing is carried out then. Within a transaction all that came before is lost as well.
    if (sent->is_stale() && PQtransactionStatus(line.raw()) == PQTRANS_IDLE) {
        for (const statement_run& each : all)
            names.forget(each.text);
        sent.emplace(line, names, waiting).run(all);
    }
    sent->throw_failed();
    return sent->written();
}

} // namespace orvo

#include "db/postgresql_pipeline.h"

#include "db/postgresql_values.h"

namespace orvo {

namespace {

void send_pipelined(postgresql_line& line, prepared_names& names, const statement_run& one,
                    std::vector<const ready_statement*>& fresh)
{
    const char* name = names.find(*one.text);
    if (!name) {
        fresh.push_back(one.text);
        name = names.add(*one.text);
        const std::vector<Oid> types = types_of(*one.text);
        line.sent(PQsendPrepare(line.raw(), name, one.text->sql.c_str(), static_cast<int>(types.size()),
                                types.data()));
    }
    const text_fields fields{one.bound};
    line.sent(PQsendQueryPrepared(line.raw(), name, fields.count(), fields.data(), nullptr, nullptr, 0));
}

/// Takes the answers of one statement; behind a failure the server passes the others over.
qint64 collect_pipelined(postgresql_line& line, const statement_run& one, bool is_fresh,
                         result_handle& failed, const driver::tick& waiting)
{
    qint64 written = 0;
    for (int answers = is_fresh ? 2 : 1; answers > 0; --answers) {
        const bool is_preparing = answers == 2;
        while (result_handle result = line.next_result(waiting, failed.get())) {
            const ExecStatusType status = PQresultStatus(result.get());
            if (status == PGRES_TUPLES_OK && one.sink)
                row_feeder{*one.sink}.hand_on(result.get());
            else if (status == PGRES_COMMAND_OK && !is_preparing)
                written = QByteArray{PQcmdTuples(result.get())}.toLongLong();
            else if (status == PGRES_FATAL_ERROR && !failed)
                failed = std::move(result);
        }
        if (PQstatus(line.raw()) == CONNECTION_BAD)
            line.fail(failed.get());
    }
    return written;
}

} // namespace

qint64 run_in_one_wait(postgresql_line& line, prepared_names& names, std::span<const statement_run> all,
                       const driver::tick& waiting)
{
    line.expect_alive();
    std::vector<const ready_statement*> fresh;
    line.sent(PQenterPipelineMode(line.raw())); // refused where an earlier answer is still to come
    const auto forget_fresh = [&] {
        for (const ready_statement* each : fresh)
            names.forget(each);
    };
    result_handle failed;
    qint64 written = 0;
    try {
        std::vector<bool> is_fresh;
        for (const statement_run& each : all) {
            const std::size_t before = fresh.size();
            send_pipelined(line, names, each, fresh);
            is_fresh.push_back(fresh.size() > before);
        }
        line.sent(PQpipelineSync(line.raw()));
        line.flush(waiting);
        for (std::size_t i = 0; i < all.size(); ++i)
            written = collect_pipelined(line, all[i], is_fresh[i], failed, waiting);
    } catch (const line_break&) {
        forget_fresh();
        throw;
    } catch (...) { // the operator's wish or the sink's failure: the server is still at it
        forget_fresh();
        line.leave();
        throw;
    }
    line.end_pipeline(waiting, failed.get());
    if (failed) {
        forget_fresh();
        line.fail(failed.get());
    }
    return written;
}

} // namespace orvo

#include "db/postgresql_driver.h"

#include "db/postgresql_line.h"
#include "db/postgresql_pipeline.h"
#include "db/postgresql_values.h"

#include <array>

namespace orvo {

namespace {

bool patient()
{
    return true;
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
    postgresql_driver(const server_address& server, database where) : line_{server, where}, where_{where} {}

    engine kind() const override { return engine::postgresql; }
    database where() const override { return where_; }
    void open(const tick& waiting) override;
    void close() override;
    qint64 run(const ready_statement& text, const std::vector<bound_value>& bound, row_sink* sink, bool large,
               const tick& waiting) override;
    void run_together(std::span<const statement_run> all, const tick& waiting) override
    {
        run_in_one_wait(line_, prepared_, all, waiting);
    }
    /// What goes out between two syncs is one transaction.
    std::size_t most_written_together() const override { return most_together(); }
    void write_together(std::span<const statement_run> all, const tick& waiting) override
    {
        run_together(all, waiting);
    }
    void direct(const std::string& sql) override;
    void load(std::string_view table, const std::vector<std::string_view>& columns,
              const std::function<bool(std::vector<cell>&)>& next) override;

private:
    postgresql_line line_;
    database where_;
    prepared_names prepared_;

    void send(const std::string& sql);
    void collect();
    void put_copy_data(std::string& lines);
};

void postgresql_driver::open(const tick& waiting)
{
    close();
    line_.open(waiting);
}

void postgresql_driver::close()
{
    prepared_ = {};
    line_.close();
}

/// Sends a text without values by itself.
void postgresql_driver::send(const std::string& sql)
{
    line_.expect_alive();
    line_.sent(PQsendQuery(line_.raw(), sql.c_str()));
    line_.flush(patient);
}

void postgresql_driver::collect()
{
    if (const result_handle failed = line_.finish(patient))
        line_.fail(failed.get());
}

qint64 postgresql_driver::run(const ready_statement& text, const std::vector<bound_value>& bound,
                              row_sink* sink, bool large, const tick& waiting)
{
    return run_in_one_wait(line_, prepared_, std::array{statement_run{&text, bound, sink, large}}, waiting);
}

void postgresql_driver::direct(const std::string& sql)
{
    // The server takes the commit of a transaction that has failed for a wish to undo it, and is content.
    const bool is_undone = sql == "commit" && PQtransactionStatus(line_.raw()) == PQTRANS_INERROR;
    send(sql);
    collect();
    if (is_undone)
        throw db_failure{failure_kind::other, QStringLiteral("the transaction had failed and was undone")};
}

void postgresql_driver::load(std::string_view table, const std::vector<std::string_view>& columns,
                             const std::function<bool(std::vector<cell>&)>& next)
{
    std::string names;
    for (std::string_view column : columns)
        names.append(names.empty() ? "" : ",").append(column);
    send("copy " + std::string{table} + " (" + names + ") from stdin");
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
                put_copy_data(lines);
        }
        put_copy_data(lines);
    } catch (...) {
        // What was sent is given up, and the line is free for the next statement.
        PQputCopyEnd(line_.raw(), "given up");
        line_.finish(patient);
        throw;
    }
    line_.sent(PQputCopyEnd(line_.raw(), nullptr) == 1);
    line_.flush(patient);
    collect();
}

void postgresql_driver::put_copy_data(std::string& lines)
{
    int taken = 0;
    while ((taken = PQputCopyData(line_.raw(), lines.data(), static_cast<int>(lines.size()))) == 0)
        line_.flush(patient); // its buffer is full until the server has read some of it
    if (taken < 0)
        line_.fail(nullptr);
    line_.flush(patient);
    lines.clear();
}

} // namespace

std::unique_ptr<driver> make_postgresql_driver(const server_address& server, database where)
{
    return std::make_unique<postgresql_driver>(server, where);
}

} // namespace orvo

#include "db/odbc_driver.h"

#include "db/odbc_result.h"

namespace orvo {

namespace {

using std::chrono::steady_clock;

/// SQL Server takes no more in one insert.
constexpr int rows_of_an_insert = 1000;
/// How long a line may lie idle before it is asked whether it still holds: longer than between the statements
/// of one save, shorter than the pause of an operator.
constexpr std::chrono::seconds trusted_silence{1};
/// Nobody can do anything meanwhile.
constexpr std::chrono::seconds longest_leaving{1};

bool patient()
{
    return true;
}

class odbc_driver : public driver {
public:
    odbc_driver(const server_address& server, database where) : line_{server, where}, where_{where} {}

    engine kind() const override { return engine::sqlserver; }
    database where() const override { return where_; }
    void open(const tick& waiting) override;
    void close() override { line_.close(); }
    qint64 run(const ready_statement& text, const std::vector<bound_value>& bound, row_sink* sink, bool large,
               const tick& waiting) override;
    std::size_t most_together() const override { return 100; }
    void run_together(std::span<const statement_run> all, const tick& waiting) override;
    void direct(const std::string& sql) override;
    void load(std::string_view table, const std::vector<std::string_view>& columns,
              const std::function<bool(std::vector<cell>&)>& next) override;

private:
    odbc_line line_;
    database where_;
    steady_clock::time_point answered_;

    void expect_alive(const tick& waiting);
    void carry_out(const std::string& sql, const tick& waiting = patient);
    void let_go();
};

void odbc_driver::open(const tick& waiting)
{
    line_.open(waiting);
    answered_ = steady_clock::now();
}

/// ODBC cannot tell a line that broke while nothing was under way. What must not be sent twice would go into
/// it and be in doubt.
void odbc_driver::expect_alive(const tick& waiting)
{
    if (steady_clock::now() - answered_ < trusted_silence)
        return;
    try {
        carry_out("select 1", waiting);
    } catch (const line_break& lost) {
        throw line_break{lost.text(), false, lost.code()};
    } catch (const unanswered& failure) {
        throw db_failure{failure}; // it is this read that was not answered
    }
}

qint64 odbc_driver::run(const ready_statement& text, const std::vector<bound_value>& bound, row_sink* sink,
                        bool, const tick& waiting)
{
    if (!text.repeatable)
        expect_alive(waiting);
    const auto answer = std::make_shared<odbc_result>();
    try {
        line_.beside([answer, sql = text.filled(bound)](odbc_handles& on) { answer->begin(on, sql); },
                     waiting);
        while (!sink || answer->hand_on(*sink)) {
            if (answer->is_over()) {
                answered_ = steady_clock::now();
                return answer->written();
            }
            if (!waiting())
                throw db_failure{failure_kind::cancelled, QStringLiteral("cancelled")};
            line_.beside([answer](odbc_handles& on) { answer->next(on); }, waiting);
        }
    } catch (const line_break&) {
        throw;
    } catch (...) {
        let_go();
        throw;
    }
    let_go();
    return 0;
}

/// One batch, each text in it as it stands. Whether one that fails ends the batch is the server's affair:
/// what comes behind the first failure is not looked at.
void odbc_driver::run_together(std::span<const statement_run> all, const tick& waiting)
{
    std::string batch;
    for (const statement_run& each : all)
        batch.append(batch.empty() ? "" : ";").append(each.text->filled(each.bound));
    const auto answer = std::make_shared<odbc_result>(true);
    std::size_t at = 0;
    try {
        line_.beside([answer, batch](odbc_handles& on) { answer->begin(on, batch); }, waiting);
        while (!answer->is_over()) {
            if (at == all.size())
                throw db_failure{failure_kind::other, QStringLiteral("more results than reads")};
            answer->hand_on(*all[at].sink);
            at += answer->ends_a_read();
            if (!waiting())
                throw db_failure{failure_kind::cancelled, QStringLiteral("cancelled")};
            line_.beside([answer](odbc_handles& on) { answer->next(on); }, waiting);
        }
        if (at != all.size())
            throw db_failure{failure_kind::other, QStringLiteral("fewer results than reads")};
        answered_ = steady_clock::now();
    } catch (const line_break&) {
        throw;
    } catch (db_failure& failure) {
        failure.name(QString::fromStdString(all[std::min(at, all.size() - 1)].text->text));
        let_go();
        throw;
    }
}

/// Leaves the rest of a result with the server. A line that is not free at once is closed.
void odbc_driver::let_go()
{
    const auto deadline = steady_clock::now() + longest_leaving;
    try {
        line_.beside([](odbc_handles& on) { odbc_result::let_go(on); },
                     [deadline] { return steady_clock::now() < deadline; });
    } catch (const db_failure&) {
        line_.close(); // which the next statement meets
    }
}

void odbc_driver::carry_out(const std::string& sql, const tick& waiting)
{
    const auto carry = [sql](odbc_handles& on) {
        odbc_result answer;
        for (answer.begin(on, sql); !answer.is_over(); answer.next(on)) {
        }
    };
    line_.beside(carry, waiting);
    answered_ = steady_clock::now();
}

void odbc_driver::direct(const std::string& sql)
{
    carry_out(sql == "begin" ? "begin transaction" : sql);
}

void odbc_driver::load(std::string_view table, const std::vector<std::string_view>& columns,
                       const std::function<bool(std::vector<cell>&)>& next)
{
    std::string head = "insert into " + std::string{table} + " (";
    for (std::string_view column : columns)
        head.append(head.ends_with('(') ? "" : ",").append(column);
    head += ") values ";
    carry_out("begin transaction");
    try {
        std::vector<cell> fields;
        bool more = true;
        while (more) {
            std::string sql = head;
            int rows = 0;
            while (rows < rows_of_an_insert && (fields.clear(), more = next(fields))) {
                sql += rows++ == 0 ? "(" : ",(";
                for (const cell& field : fields) {
                    if (field.is == cell::kind::number) {
                        sql += std::to_string(field.number);
                    } else {
                        sql += '\'';
                        append_doubled(sql, field.text);
                        sql += '\'';
                    }
                    sql += ',';
                }
                sql.back() = ')';
            }
            if (rows > 0)
                carry_out(sql);
        }
        carry_out("commit");
    } catch (...) {
        try {
            carry_out("rollback");
        } catch (const db_failure&) {
            line_.close(); // with which the server undoes it by itself
        }
        throw;
    }
}

} // namespace

std::unique_ptr<driver> make_odbc_driver(const server_address& server, database where)
{
    return std::make_unique<odbc_driver>(server, where);
}

} // namespace orvo

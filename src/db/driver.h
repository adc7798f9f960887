#pragma once

#include "db/cell.h"
#include "db/dialect.h"
#include "db/engine.h"
#include "db/failure.h"

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace orvo {

/// What came of a failed statement: whether the engine can have carried it out although it said nothing.
struct line_break : db_failure {
    line_break(QString text, bool was_sent, QString code = {})
        : db_failure{failure_kind::line_lost, std::move(text), {}, std::move(code)}, may_have_run{was_sent}
    {
    }
    explicit line_break(const db_failure& failure, bool was_sent = false)
        : db_failure{failure}, may_have_run{was_sent}
    {
    }
    bool may_have_run;
};

/// The client's own side gave a statement up that was sent, and the line stands: the engine can have carried
/// it out although it did not say so.
struct unanswered : db_failure {
    using db_failure::db_failure;
};

/// A statement on its way, and where its rows go.
struct statement_run {
    const ready_statement* text;
    std::vector<bound_value> bound;
    row_sink* sink = nullptr;
    bool large = false; ///< to be fetched row by row
};

/// One engine, thinly: open, run a ready statement, hand its rows on, report failures in the engine's own
/// words. Throws line_break where the line is lost, unanswered where nobody knows what came of the statement,
/// db_failure for all else.
class driver {
public:
    /// Asked some 30 times a second while a statement runs; false ends it.
    using tick = std::function<bool()>;

    virtual ~driver() = default;
    virtual engine kind() const = 0;
    virtual database where() const = 0;
    virtual void open(const tick& waiting) = 0;
    virtual void close() = 0;

    /// Runs a statement; rows go to the sink, where there is one. Returns the number of rows written. `large`
    /// fetches row by row. Throws failure_kind::cancelled where the tick ended it.
    virtual qint64 run(const ready_statement& statement, const std::vector<bound_value>& bound,
                       row_sink* sink, bool large, const tick& waiting) = 0;
    /// False while the statement under way waits for another program that holds the file: nothing of it is
    /// done yet, so that even a write can be ended.
    virtual bool has_begun() const { return true; }
    /// How many statements run_together takes at the most.
    virtual std::size_t most_together() const { return 500; }
    /// Reads that do not depend on each other's rows, in their order. A failure names the one that failed.
    virtual void run_together(std::span<const statement_run> all, const tick& waiting)
    {
        for (const statement_run& each : all)
            try {
                if (!waiting())
                    throw db_failure{failure_kind::cancelled, QStringLiteral("cancelled")};
                run(*each.text, each.bound, each.sink, each.large, waiting);
            } catch (db_failure& failure) {
                failure.name(QString::fromStdString(each.text->text));
                throw;
            }
    }
    /// How many statements write_together takes at the most.
    virtual std::size_t most_written_together() const { return 1; }
    /// Writes of which all are stored or none. A failure names the one that failed.
    virtual void write_together(std::span<const statement_run> all, const tick& waiting)
    {
        driver::run_together(all, waiting); // no more than one
    }
    /// As run, for a statement that runs many times in a row: the fields as they come, no rows, no waiting.
    virtual void run_again(const ready_statement& statement, std::span<const cell> fields)
    {
        std::vector<bound_value> bound;
        for (std::size_t i = 0; i < fields.size(); ++i)
            if (fields[i].is != cell::kind::number)
                bound.emplace_back(std::string{fields[i].text});
            else if (statement.parameters[i].is_number())
                bound.emplace_back(fields[i].number);
            else
                bound.emplace_back(std::to_string(fields[i].number));
        run(statement, bound, nullptr, false, [] { return true; });
    }
    /// A text of the engine's own.
    virtual void direct(const std::string& sql) = 0;
    virtual void load(std::string_view table, const std::vector<std::string_view>& columns,
                      const std::function<bool(std::vector<cell>&)>& next) = 0;
};

/// Has something written that no watch waits for. A line that breaks is closed: what is behind a stall must
/// not meet the answer that is still to come.
template <typename act>
void write_past_the_watch(driver& way, act&& sent)
{
    try {
        sent();
    } catch (const line_break& lost) {
        way.close();
        if (lost.may_have_run)
            throw lost.in_doubt();
        throw;
    } catch (const unanswered& failure) {
        throw failure.in_doubt();
    }
}

} // namespace orvo

#include "db/connection.h"

#include "db/driver.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_map>

namespace orvo {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

/// Hands rows on and knows how many there were.
class counting_sink : public row_sink {
public:
    counting_sink(row_sink* to, qint64& count) : to_{to}, count_{count} {}

    void begin(const column_names& names) override
    {
        count_ = 0;
        if (to_)
            to_->begin(names);
    }
    bool take(std::span<const cell> row) override
    {
        ++count_;
        try {
            return !to_ || to_->take(row);
        } catch (const line_break& elsewhere) {
            // The line that broke is the one behind the sink: to reopen this one would not mend it.
            throw db_failure{failure_kind::other, elsewhere.text(), elsewhere.statement(), elsewhere.code()};
        }
    }

private:
    row_sink* to_;
    qint64& count_;
};

/// One statement at a time; tells the watch when it is over.
class busy_guard {
public:
    busy_guard(bool& busy, line_watch* watch) : busy_{busy}, watch_{watch}
    {
        if (busy_)
            throw std::logic_error{"a statement runs on this connection already"};
        busy_ = true;
    }
    ~busy_guard()
    {
        busy_ = false;
        if (watch_)
            watch_->done_waiting();
    }

private:
    bool& busy_;
    line_watch* watch_;
};

struct text_hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
};

} // namespace

struct connection::known {
    struct forms {
        ready_statement plain;
        std::unique_ptr<ready_statement> letters; // where `like` has a way of its own for letters with case
    };
    std::unordered_map<std::string, forms, text_hash, std::equal_to<>> statements;
    bool in_transaction = false;
};

connection::connection(std::unique_ptr<driver> way, line_watch* watch)
    : way_{std::move(way)}, watch_{watch}, known_{std::make_unique<known>()}
{
}

connection::~connection() = default;
connection::connection(connection&&) noexcept = default;

engine connection::kind() const
{
    return way_->kind();
}

void connection::open()
{
    const auto started = steady_clock::now();
    struct wait_guard {
        line_watch* watch;
        ~wait_guard()
        {
            if (watch)
                watch->done_waiting();
        }
    } const guard{watch_};
    try {
        way_->open([this, started] {
            const auto waited = std::chrono::duration_cast<milliseconds>(steady_clock::now() - started);
            return !watch_ || watch_->keep_waiting(waited, true);
        });
        up_ = true;
    } catch (const db_failure&) {
        up_ = false;
        throw;
    }
}

void connection::reopen()
{
    close();
    open();
}

void connection::close()
{
    known_->in_transaction = false;
    up_ = false;
    way_->close();
}

const ready_statement& connection::ready(std::string_view text, const values& given)
{
    auto found = known_->statements.find(text);
    if (found == known_->statements.end()) {
        const statement_text statement{text};
        known::forms made{translate(statement, text, kind(), way_->where(), false), nullptr};
        if (has_letter_variant(statement, kind()))
            made.letters =
                std::make_unique<ready_statement>(translate(statement, text, kind(), way_->where(), true));
        found = known_->statements.emplace(text, std::move(made)).first;
    }
    const known::forms& forms = found->second;
    if (!forms.letters)
        return forms.plain;
    for (const parameter& each : forms.plain.parameters)
        for (const literal_piece& piece : each.pieces)
            if (has_cased_letter(piece.is_slot ? given.of(piece.text) : piece.text))
                return *forms.letters;
    return forms.plain;
}

void connection::ask_and_reopen(const db_failure& lost)
{
    db_failure why = lost;
    while (true) {
        if (!watch_ || known_->in_transaction || !watch_->try_again(why))
            throw db_failure{why};
        try {
            reopen();
            return;
        } catch (const db_failure& again) {
            why = again;
            why.name(lost.statement());
        }
    }
}

std::size_t connection::chunk_size(std::span<const query> queries, std::size_t most)
{
    constexpr std::size_t most_bytes = 1 << 20;
    std::size_t count = 0;
    std::size_t bytes = 0;
    while (count < std::min(queries.size(), most) && (count == 0 || bytes < most_bytes)) {
        bytes += queries[count].text.size();
        for (const values::value& each : queries[count].given)
            bytes += each.text.size();
        ++count;
    }
    return count;
}

void connection::persist(const sending& what, progress* follow, const qint64& so_far,
                         const std::function<void(const driver::tick&)>& act)
{
    const busy_guard guard{busy_, watch_};
    const QString name = QString::fromStdString(what.first.text);
    const bool is_read = what.first.what == verb::select;
    // What is sent without an answer may be stored, whatever comes of the tries behind it. A transaction
    // whose line is gone is undone.
    const bool can_be_in_doubt = !is_read && !known_->in_transaction;
    bool in_doubt = false;
    while (true) {
        const auto started = steady_clock::now();
        auto asked = started;
        const driver::tick waiting = [&] {
            const auto now = steady_clock::now();
            if (now - asked < milliseconds{30})
                return true;
            asked = now;
            const auto waited = std::chrono::duration_cast<milliseconds>(now - started);
            const bool can_end = is_read || !way_->has_begun();
            if (follow)
                return follow->go_on(so_far) || !can_end;
            return !watch_ || watch_->keep_waiting(waited, can_end) || !can_end;
        };
        try {
            act(waiting);
            up_ = true;
            return;
        } catch (line_break& lost) {
            // A line that only stalled still owes an answer, which the next statement would take for its own.
            way_->close();
            up_ = false;
            lost.name(name);
            in_doubt = in_doubt || (lost.may_have_run && can_be_in_doubt);
            if (in_doubt && !what.repeatable)
                throw lost.in_doubt();
            try {
                ask_and_reopen(lost);
            } catch (const db_failure& given_up) {
                if (in_doubt)
                    throw given_up.in_doubt();
                throw;
            }
        } catch (db_failure& failure) {
            failure.name(name);
            if (in_doubt || (dynamic_cast<const unanswered*>(&failure) && can_be_in_doubt))
                throw failure.in_doubt();
            throw;
        }
    }
}

qint64 connection::run(const ready_statement& text, const values& given, row_sink* sink, progress* follow,
                       bool large)
{
    const std::vector<bound_value> bound = text.bind(given);
    qint64 so_far = 0;
    qint64 written = 0;
    counting_sink counted{sink, so_far};
    persist({text, text.repeatable}, follow, so_far, [&](const driver::tick& waiting) {
        so_far = 0;
        written = way_->run(text, bound, text.what == verb::select ? &counted : nullptr, large, waiting);
    });
    return written;
}

std::vector<rows> connection::run_together(std::span<const query> queries, progress* follow, qint64 so_far)
{
    std::vector<rows> results(queries.size());
    std::vector<statement_run> runs;
    for (std::size_t i = 0; i < queries.size(); ++i) {
        const ready_statement& text = ready(queries[i].text, queries[i].given);
        runs.push_back({&text, text.bind(queries[i].given), &results[i]});
    }
    persist({*runs.front().text, true}, follow, so_far,
            [&](const driver::tick& waiting) { way_->run_together(runs, waiting); });
    return results;
}

std::vector<rows> connection::read_together(std::initializer_list<query> queries)
{
    return run_together({queries.begin(), queries.end()}, nullptr, 0);
}

void connection::read_many(std::span<const query> queries,
                           const std::function<void(std::size_t place, rows found)>& take, progress* follow)
{
    qint64 so_far = 0;
    for (std::size_t begin = 0; begin < queries.size();) {
        const std::size_t count = chunk_size(queries.subspan(begin), way_->most_together());
        std::vector<rows> found = run_together(queries.subspan(begin, count), follow, so_far);
        for (std::size_t i = 0; i < count; ++i) {
            so_far += static_cast<qint64>(found[i].size());
            take(begin + i, std::move(found[i]));
        }
        begin += count;
    }
}

std::size_t connection::most_written_together() const
{
    return way_->most_written_together();
}

void connection::write_together(std::span<const query> queries, progress* follow)
{
    if (queries.size() > way_->most_written_together())
        throw std::logic_error{"more writes than the engine stores together"};
    std::vector<statement_run> runs;
    bool repeatable = true;
    for (const query& each : queries) {
        const ready_statement& text = ready(each.text, each.given);
        runs.push_back({&text, text.bind(each.given)});
        repeatable = repeatable && text.repeatable;
    }
    persist({*runs.front().text, repeatable}, follow, 0,
            [&](const driver::tick& waiting) { way_->write_together(runs, waiting); });
}

rows connection::read(std::string_view text, const values& given)
{
    rows result;
    run(ready(text, given), given, &result, nullptr, false);
    return result;
}

void connection::read_each(std::string_view text, const values& given, row_sink& sink, progress* follow)
{
    run(ready(text, given), given, &sink, follow, true);
}

qint64 connection::number(std::string_view text, const values& given)
{
    const rows found = read(text, given);
    return found.empty() ? 0 : found.front().number(found.columns().front());
}

qint64 connection::write(std::string_view text, const values& given)
{
    return run(ready(text, given), given, nullptr, nullptr, false);
}

repeated_write connection::repeat(std::string_view text)
{
    return {*way_, ready(text, {})};
}

void connection::direct(const std::string& text)
{
    write_past_the_watch(*way_, [&] { way_->direct(text); });
}

void connection::load(std::string_view table, const std::vector<std::string_view>& columns,
                      const std::function<bool(std::vector<cell>&)>& next)
{
    write_past_the_watch(*way_, [&] { way_->load(table, columns, next); });
}

transaction::transaction(connection& on) : on_{on}
{
    on_.direct("begin");
    on_.known_->in_transaction = true;
}

transaction::~transaction()
{
    if (!open_)
        return;
    on_.known_->in_transaction = false;
    try {
        on_.direct("rollback");
    } catch (const db_failure&) {
        // The engine undoes an unfinished transaction by itself when the line or the file is gone.
    }
}

void transaction::commit()
{
    on_.direct("commit");
    on_.known_->in_transaction = false;
    open_ = false;
}

} // namespace orvo

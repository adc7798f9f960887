#include "client/batch_run.h"

#include <algorithm>
#include <set>
#include <stdexcept>

namespace orvo {

namespace {

/// Rows that are read ahead at the most.
constexpr qint64 most_rows = 500;

/// Hears of statements, and tells of rows.
class row_progress : public progress {
public:
    row_progress(progress* to, const qint64& position) : to_{to}, position_{position} {}
    bool go_on(qint64) override { return !to_ || to_->go_on(position_); }

private:
    progress* to_;
    const qint64& position_;
};

void expect_patience(progress& follow)
{
    if (!follow.go_on(0))
        throw db_failure{failure_kind::cancelled, QStringLiteral("cancelled")};
}

} // namespace

batch_run::batch_run(connection& db, qint64 count, std::function<batch_row(qint64)> row_at)
    : db_{db}, count_{count}, row_at_{std::move(row_at)}
{
}

void batch_run::carry_out(progress* follow)
{
    row_progress of_rows{follow, position_};
    try {
        if (unanswered_ > 0)
            look_for_traces(of_rows);
        while (!is_over()) {
            expect_patience(of_rows);
            if (chunk_.empty())
                plan_chunk(of_rows);
            write_chunk(of_rows);
        }
    } catch (const db_failure& failure) {
        throw failure.within(report());
    }
}

void batch_run::plan_chunk(progress& follow)
{
    std::deque<planned_row> chunk;
    std::vector<batch_row> rows_of_chunk;
    std::set<std::string> held;
    std::vector<connection::query> reads;
    for (qint64 at = position_; at < std::min(count_, position_ + most_rows); ++at) {
        batch_row row = row_at_(at);
        // The row reads or writes what one before it writes, which is not stored yet.
        if (std::ranges::any_of(row.keys, [&](const std::string& key) { return held.contains(key); }))
            break;
        held.insert(row.keys.begin(), row.keys.end());
        std::ranges::copy(row.reads, std::back_inserter(reads));
        rows_of_chunk.push_back(std::move(row));
    }
    std::vector<rows> found(reads.size());
    db_.read_many(
        reads, [&](std::size_t place, rows its) { found[place] = std::move(its); }, &follow);
    std::span<const rows> rest{found};
    for (batch_row& row : rows_of_chunk) {
        chunk.push_back({std::move(row.name), row.writes(rest.first(row.reads.size()))});
        rest = rest.subspan(row.reads.size());
    }
    chunk_ = std::move(chunk);
    mark_done(0);
}

std::vector<const batch_write*> batch_run::missing(std::size_t most) const
{
    std::vector<const batch_write*> first;
    for (const planned_row& row : chunk_)
        for (std::size_t i = row.done; i < row.writes.size() && first.size() < most; ++i)
            first.push_back(&row.writes[i]);
    return first;
}

void batch_run::write_chunk(progress& follow)
{
    std::size_t alone = 0; // are sent one by one, behind a failure of all of them
    while (!chunk_.empty()) {
        const std::size_t most = alone > 0 ? 1 : db_.most_written_together();
        std::vector<connection::query> queries;
        for (const batch_write* each : missing(most))
            queries.push_back(each->sent);
        const std::size_t count = connection::chunk_size(queries, most);
        try {
            send(std::span{queries}.first(count), follow);
            alone -= alone > 0;
        } catch (const db_failure& failure) {
            using enum failure_kind;
            if (count == 1 || failure.kind() == outcome_unknown || failure.kind() == line_lost)
                throw;
            // None of them is stored; what stays stored is what each by itself leaves.
            alone = count;
        }
        if (!chunk_.empty() && chunk_.front().done == 0)
            expect_patience(follow);
    }
}

void batch_run::send(std::span<const connection::query> queries, progress& follow)
{
    try {
        db_.write_together(queries, &follow);
    } catch (const db_failure& failure) {
        if (failure.kind() != failure_kind::outcome_unknown)
            throw;
        unanswered_ = queries.size();
        return look_for_traces(follow);
    }
    mark_done(queries.size());
}

void batch_run::mark_done(std::size_t writes)
{
    for (planned_row& row : chunk_) {
        const std::size_t of_row = std::min(writes, row.writes.size() - row.done);
        row.done += of_row;
        writes -= of_row;
    }
    while (!chunk_.empty() && chunk_.front().done == chunk_.front().writes.size()) {
        stored_ += !chunk_.front().writes.empty();
        ++position_;
        chunk_.pop_front();
    }
}

void batch_run::look_for_traces(progress& follow)
{
    const std::vector<const batch_write*> sent = missing(unanswered_);
    std::vector<connection::query> traces;
    for (const batch_write* each : sent)
        if (each->trace)
            traces.push_back(*each->trace);
    if (traces.size() < sent.size()) {
        qint64 last = position_;
        std::size_t writes = 0;
        for (const planned_row& row : chunk_)
            if ((writes += row.writes.size() - row.done) < unanswered_)
                ++last;
        doubt_ = rows_in_doubt{position_, last};
        throw db_failure{failure_kind::outcome_unknown, QStringLiteral("the answer was lost")};
    }
    std::size_t stored = 0;
    db_.read_many(
        traces, [&](std::size_t place, const rows& found) { stored += place == stored && !found.empty(); },
        &follow);
    unanswered_ = 0;
    mark_done(stored);
}

void batch_run::settle_doubt(bool stored)
{
    if (stored)
        mark_done(unanswered_);
    unanswered_ = 0;
    doubt_.reset();
}

void batch_run::leave_out_row()
{
    if (unanswered_ > 0)
        throw std::logic_error{"a row of a run is left out before it is known what is stored"};
    if (chunk_.empty()) { // it broke at a read
        ++position_;
        return;
    }
    chunk_.front().writes.resize(chunk_.front().done);
    mark_done(0);
}

QString batch_run::place(qint64 row) const
{
    const auto ahead = static_cast<std::size_t>(row - position_);
    return QStringLiteral("%1번째(%2)")
        .arg(row + 1)
        .arg(ahead < chunk_.size() ? chunk_[ahead].name : row_at_(row).name);
}

QString batch_run::report() const
{
    const QString stored = QStringLiteral("%1명 저장").arg(stored_);
    if (is_over())
        return stored;
    if (!doubt_)
        return QStringLiteral("%1, %2에서 중단").arg(stored, place(position_));
    const QString from = place(doubt_->first);
    return doubt_->first == doubt_->last ? QStringLiteral("%1, %2의 저장 여부를 알 수 없음").arg(stored, from)
                                         : QStringLiteral("%1, %2부터 %3까지 저장 여부를 알 수 없음")
                                               .arg(stored, from, place(doubt_->last));
}

} // namespace orvo

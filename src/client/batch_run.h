#pragma once

#include "db/question.h"

#include <deque>
#include <functional>
#include <optional>
#include <vector>

namespace orvo {

/// A write of a run over rows, and how it is found again whose answer was lost: a read that brings a row
/// exactly where the write is stored. Without one the operator is asked.
struct batch_write {
    connection::query sent;
    std::optional<connection::query> trace = {};
};

/// One row of a run: a member to be renewed, a letter to be queued.
struct batch_row {
    QString name; ///< by which the operator knows it
    /// What it reads and writes, as "2026 9001011234568": two rows that share one do not go out together.
    std::vector<std::string> keys;
    /// What its writes are made from; none depends on another.
    std::vector<connection::query> reads = {};
    /// Its writes in their order, from the rows of its reads; none where it is passed over.
    std::function<std::vector<batch_write>(std::span<const rows> found)> writes;
};

/// A run over many rows, of any number of writes each. It is no transaction: what was stored stays, as if the
/// statements had been sent one by one, and a run that broke or was stopped goes on behind that. Where the
/// engine can, they go out in chunks.
class batch_run {
public:
    /// `row_at` makes the rows from 0 to `count`, in order, and again after a failure.
    batch_run(connection& db, qint64 count, std::function<batch_row(qint64)> row_at);

    /// The rest of the rows. The progress hears how many rows are done; where it says so, the run stops
    /// between two of them (failure_kind::cancelled). Throws db_failure that tells how far the run has come;
    /// carrying out once more goes on there. Where nobody can tell what became of some rows, see doubt().
    void carry_out(progress* follow = nullptr);

    /// Rows from the first that are done, stored or passed over.
    qint64 position() const { return position_; }
    qint64 stored() const { return stored_; } ///< rows of which something was written
    bool is_over() const { return position_ == count_; }

    /// Rows that were sent and not answered, and which leave no trace to be looked for: until settle_doubt
    /// has told what became of them, the run does not go on.
    struct rows_in_doubt {
        qint64 first, last;
    };
    const std::optional<rows_in_doubt>& doubt() const { return doubt_; }
    /// The operator has looked: all of them are stored, or none.
    void settle_doubt(bool stored);
    /// Leaves out what is missing of the row at which the run broke. Not for rows that may be stored.
    void leave_out_row();

    /// How far it has come: "37명 저장, 38번째(김영희)에서 중단".
    QString report() const;

private:
    struct planned_row {
        QString name;
        std::vector<batch_write> writes;
        std::size_t done = 0; ///< of the writes
    };

    connection& db_;
    const qint64 count_;
    const std::function<batch_row(qint64)> row_at_;
    qint64 position_ = 0;
    qint64 stored_ = 0;
    std::deque<planned_row> chunk_; ///< from position_ on, read and not yet stored
    std::size_t unanswered_ = 0;    ///< writes that were sent, from the first that is not done
    std::optional<rows_in_doubt> doubt_;

    void plan_chunk(progress& follow);
    std::vector<const batch_write*> missing(std::size_t most) const;
    void write_chunk(progress& follow);
    void send(std::span<const connection::query> queries, progress& follow);
    void mark_done(std::size_t writes);
    void look_for_traces(progress& follow);
    QString place(qint64 row) const;
};

} // namespace orvo

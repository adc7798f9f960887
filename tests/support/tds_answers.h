#pragma once

#include "db/connection.h"
#include "support/tds_batch.h"

#include <atomic>
#include <functional>

namespace orvo {

/// Answers the batches of one line from one database of the embedded engine.
class tds_answers {
public:
    /// No more than that many rows are sent on all lines together, where it is not negative; then the line is
    /// cut.
    tds_answers(tds_line& line, connection base, std::atomic<int>& rows_left);

    /// Puts the tokens of the answer on the line; the end of the answer is the caller's.
    void answer(const QString& batch);
    /// A request of the transaction manager.
    void answer_transaction(std::string_view message);
    void answer_with(const tds_error& error);

private:
    tds_line& line_;
    connection base_;
    std::atomic<int>& rows_left_;
    int depth_ = 0; ///< of transactions: only the outermost is stored or undone

    void or_answer_failure(const std::function<void()>& act);
    void run(const QString& batch);
    void run_statements(const QStringList& statements);
    void run_statement(const std::vector<slotted_batch>& rows, bool more_to_come);
    qint64 write(const std::vector<slotted_batch>& rows);
    void begin();
    void end_transaction(bool commits);
};

} // namespace orvo

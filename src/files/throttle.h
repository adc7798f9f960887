#pragma once

#include "db/connection.h"

#include <ctime>

namespace orvo {

/// Asks a progress, which may be none, some 30 times a second, however long a row takes.
class throttle {
public:
    explicit throttle(progress* follow) : follow_{follow}, asked_at_{now()} {}

    /// Behind each row, with the rows so far. Throws db_failure where the operator has ended it.
    void step(qint64 rows)
    {
        if (follow_ == nullptr || now() - asked_at_ < 33)
            return;
        if (!follow_->go_on(rows))
            throw db_failure{failure_kind::cancelled, QStringLiteral("취소했습니다.")};
        asked_at_ = now();
    }

private:
    progress* follow_;
    qint64 asked_at_;

    /// In milliseconds. The coarse clock costs a tenth of the other, which a list of short rows would feel.
    static qint64 now()
    {
        timespec at{};
        clock_gettime(CLOCK_MONOTONIC_COARSE, &at);
        return qint64{at.tv_sec} * 1000 + at.tv_nsec / 1'000'000;
    }
};

} // namespace orvo

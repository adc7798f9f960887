#pragma once

#include "db/connection.h"

#include <QElapsedTimer>

namespace orvo {

/// Asks a progress, which may be none, some 30 times a second.
class pace {
public:
    explicit pace(progress* follow) : follow_{follow} { since_.start(); }

    /// Behind each row, with the rows so far. Throws db_failure where the operator has ended it.
    void step(qint64 rows)
    {
        if (follow_ == nullptr || rows % 128 != 0 || since_.elapsed() < 33)
            return;
        since_.restart();
        if (!follow_->go_on(rows))
            throw db_failure{failure_kind::cancelled, QStringLiteral("취소했습니다.")};
    }

private:
    progress* follow_;
    QElapsedTimer since_;
};

} // namespace orvo

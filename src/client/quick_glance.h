#pragma once

#include "db/connection.h"

namespace orvo {

/// While it stands, reads on that connection are worth no question and no long wait: without a line, or
/// behind a slow one, they fail.
class quick_glance : public line_watch {
public:
    explicit quick_glance(connection& on) : on_{on}, before_{on.watch()} { on_.set_watch(this); }
    ~quick_glance() override { on_.set_watch(before_); }
    quick_glance(const quick_glance&) = delete;
    quick_glance& operator=(const quick_glance&) = delete;

    bool try_again(const db_failure&) override { return false; }
    bool keep_waiting(std::chrono::milliseconds waited, bool) override
    {
        return waited < std::chrono::milliseconds{500};
    }

private:
    connection& on_;
    line_watch* before_;
};

} // namespace orvo

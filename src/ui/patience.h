#pragma once

#include "client/prompts.h"
#include "db/connection.h"

#include <memory>

namespace orvo {

class wait_sign;

/// Sits before the connections of the running program: shows a sign where a statement takes over a second,
/// and asks what to do where the line is lost.
class patience : public line_watch {
public:
    explicit patience(prompts& say);
    ~patience() override;

    bool try_again(const db_failure& lost) override;
    bool keep_waiting(std::chrono::milliseconds waited, bool can_end) override;
    void done_waiting() override;

private:
    prompts& say_;
    std::unique_ptr<wait_sign> sign_;
};

} // namespace orvo

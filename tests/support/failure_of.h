#pragma once

#include "db/failure.h"

#include <functional>
#include <stdexcept>

namespace orvo {

/// What failed in an act. That nothing did is the test's failure: std::logic_error.
inline db_failure caught(const std::function<void()>& act)
{
    try {
        act();
    } catch (const db_failure& failure) {
        return failure;
    }
    throw std::logic_error{"nothing failed"};
}

/// How the database failed in an act.
inline failure_kind failure_of(const std::function<void()>& act)
{
    return caught(act).kind();
}

} // namespace orvo

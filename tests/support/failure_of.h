#pragma once

#include "db/failure.h"

#include <functional>
#include <stdexcept>

namespace orvo {

/// How the database failed in an act. That it did not fail at all is the test's failure: std::logic_error.
inline failure_kind failure_of(const std::function<void()>& act)
{
    try {
        act();
    } catch (const db_failure& failure) {
        return failure.kind();
    }
    throw std::logic_error{"nothing failed"};
}

} // namespace orvo

#pragma once

#include <stdexcept>

namespace orvo::setup {

/// Something that is not done because it would be wrong.
struct refusal : std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace orvo::setup

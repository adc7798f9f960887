#pragma once

#include <chrono>

namespace orvo::bench {

double milliseconds_of(const auto& work)
{
    const auto started = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - started).count();
}

} // namespace orvo::bench

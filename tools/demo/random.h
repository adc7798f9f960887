#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace orvo::demo {

/// Pseudo-random numbers that are the same on every machine. A stream belongs to one concern and one item of
/// it, so that what a concern draws for a member never moves what another concern or another member gets.
class random_stream {
public:
    random_stream(std::uint64_t seed, std::string_view concern, std::uint64_t item = 0);

    std::uint64_t next();
    int below(int bound);           ///< from 0; the bound is not reached
    int between(int low, int high); ///< both are reached
    bool chance(int per_mille) { return below(1000) < per_mille; }
    /// An index, each as likely as its weight.
    std::size_t weighted(std::span<const int> weights);

    template <typename List>
    const auto& pick(const List& from)
    {
        return from[static_cast<std::size_t>(below(static_cast<int>(std::size(from))))];
    }

private:
    std::uint64_t state_;
};

} // namespace orvo::demo

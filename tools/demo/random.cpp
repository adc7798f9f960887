#include "demo/random.h"

#include <numeric>

namespace orvo::demo {

namespace {

std::uint64_t mixed(std::uint64_t value)
{
    value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9u;
    value = (value ^ (value >> 27)) * 0x94d049bb133111ebu;
    return value ^ (value >> 31);
}

constexpr std::uint64_t golden = 0x9e3779b97f4a7c15u;

} // namespace

random_stream::random_stream(std::uint64_t seed, std::string_view concern, std::uint64_t item)
    : state_{mixed(seed + golden)}
{
    for (const char letter : concern)
        state_ = mixed(state_ ^ static_cast<unsigned char>(letter)) + golden;
    state_ = mixed(state_ ^ mixed(item + golden));
}

std::uint64_t random_stream::next()
{
    return mixed(state_ += golden);
}

int random_stream::below(int bound)
{
    return static_cast<int>(((next() >> 32) * static_cast<std::uint64_t>(bound)) >> 32);
}

int random_stream::between(int low, int high)
{
    return low + below(high - low + 1);
}

std::size_t random_stream::weighted(std::span<const int> weights)
{
    int rest = below(std::accumulate(weights.begin(), weights.end(), 0));
    std::size_t index = 0;
    while (rest >= weights[index])
        rest -= weights[index++];
    return index;
}

} // namespace orvo::demo

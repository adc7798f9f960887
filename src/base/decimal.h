#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvo {

/// A number that an engine prints: "50000", "50000.00", "5e+04".
struct decimal {
    std::int64_t whole = 0; ///< without what stands behind the point
    bool is_whole = true;   ///< nothing but noughts stand there
};

/// Nothing where the text is no such number, or its whole part is beyond 64 bits.
std::optional<decimal> read_decimal(std::string_view text);

/// The shortest text that is read as that number again, without an exponent: "87.5", "50000".
std::string plain_text(double number);

} // namespace orvo

#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace orvo {

/// A text as it was before a column of a fixed width filled it up.
constexpr std::string_view without_padding(std::string_view text)
{
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

/// How a text is read where it meets a number.
constexpr std::string_view without_blanks(std::string_view text)
{
    const std::size_t from = text.find_first_not_of(' ');
    return from == std::string_view::npos ? std::string_view{} : without_padding(text.substr(from));
}

/// One field on its way between an engine and a statement. The bytes belong to the engine and are good until
/// the next row is asked for.
struct cell {
    enum class kind : std::uint8_t { null, number, text };

    kind is = kind::null;
    std::int64_t number = 0;
    std::string_view text; ///< UTF-8

    static cell of(std::int64_t value) { return {kind::number, value, {}}; }
    static cell of(std::string_view value) { return {kind::text, 0, value}; }
    cell unpadded() const { return text.ends_with(' ') ? of(without_padding(text)) : *this; }
};

using column_names = std::vector<std::string_view>;

/// Takes the rows of a statement as they come.
class row_sink {
public:
    virtual ~row_sink() = default;
    /// Before the first row, and once more with each new try after the line was lost: what came before is
    /// void then.
    virtual void begin(const column_names& names) = 0;
    /// False ends the reading.
    virtual bool take(std::span<const cell> row) = 0;
};

} // namespace orvo

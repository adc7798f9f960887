#pragma once

#include <string>
#include <string_view>

namespace orvo {

/// Follows what a client says to a PostgreSQL server, as far as to know where a statement is sent.
class postgresql_messages {
public:
    /// How many statements end in the next bytes of the line.
    int statements_in(std::string_view bytes);

private:
    std::string unread_;
    bool started_ = false;
};

} // namespace orvo

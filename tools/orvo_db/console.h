#pragma once

#include <QString>

#include <stdexcept>
#include <string_view>

namespace orvo::tool {

enum exit_code { done = 0, failed = 1, misused = 2 };

/// The command was not given as it must be.
struct usage_error : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// What the tool could not do, in a sentence.
struct tool_failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Standard output: what was asked for. Throws tool_failure where it cannot be written.
void print(std::string_view text);
/// All of it is written when this returns.
void finish_output();
/// Standard error: a line on what goes on.
void note(const std::string& text);

/// Follows a long work on standard error, where someone is likely to read it.
class progress_line {
public:
    explicit progress_line(bool verbose);
    ~progress_line() { close(); }
    progress_line(const progress_line&) = delete;
    progress_line& operator=(const progress_line&) = delete;

    void show(std::string_view what, qint64 count, bool all);
    void close();

private:
    bool on_terminal_;
    bool verbose_;
    bool open_ = false;
};

} // namespace orvo::tool

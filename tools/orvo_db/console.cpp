#include "orvo_db/console.h"

#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

namespace orvo::tool {

namespace {

bool is_terminal(FILE* stream)
{
#ifdef Q_OS_WIN
    return _isatty(_fileno(stream)) != 0;
#else
    return isatty(fileno(stream)) != 0;
#endif
}

[[noreturn]] void output_failed()
{
    throw tool_failure{"the output could not be written"};
}

} // namespace

void print(std::string_view text)
{
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size())
        output_failed();
}

void finish_output()
{
    if (std::fflush(stdout) != 0)
        output_failed();
}

void note(const std::string& text)
{
    std::fprintf(stderr, "orvo_db: %s\n", text.c_str());
}

progress_line::progress_line(bool verbose) : on_terminal_{is_terminal(stderr)}, verbose_{verbose} {}

void progress_line::show(std::string_view what, qint64 count, bool all)
{
    const int width = static_cast<int>(what.size());
    if (on_terminal_) {
        std::fprintf(stderr, "\r\033[K%.*s: %lld", width, what.data(), static_cast<long long>(count));
        open_ = true;
        if (verbose_ && all)
            close();
    } else if (verbose_ && all) {
        std::fprintf(stderr, "%.*s: %lld\n", width, what.data(), static_cast<long long>(count));
    }
}

void progress_line::close()
{
    if (open_)
        std::fputs(verbose_ ? "\n" : "\r\033[K", stderr);
    open_ = false;
}

} // namespace orvo::tool

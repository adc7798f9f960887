#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>

extern char** environ;

/// Usage: bench_spawn TIMES CLIENT BARE_WINDOW
/// Starts the two programs by turns and prints, for the table, the milliseconds from the start of the process
/// to what the program tells of its first painting, and its peak of memory.

namespace {

double now()
{
    timespec time;
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

void give_up(const char* what)
{
    std::fprintf(stderr, "bench_spawn: %s\n", what);
    std::exit(1);
}

struct start {
    double took = 0;
    double peak = 0;
};

start start_once(char* path)
{
    int line[2];
    if (pipe(line) != 0)
        give_up("no pipe");
    posix_spawn_file_actions_t wiring;
    posix_spawn_file_actions_init(&wiring);
    posix_spawn_file_actions_adddup2(&wiring, line[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&wiring, line[0]);
    posix_spawn_file_actions_addclose(&wiring, line[1]);
    char* arguments[] = {path, nullptr};
    pid_t child = 0;
    const double started = now();
    if (posix_spawn(&child, path, &wiring, nullptr, arguments, environ) != 0)
        give_up(path);
    posix_spawn_file_actions_destroy(&wiring);
    close(line[1]);
    char text[256] = {};
    std::size_t size = 0;
    for (ssize_t got; (got = read(line[0], text + size, sizeof text - 1 - size)) > 0;)
        size += static_cast<std::size_t>(got);
    close(line[0]);
    int status = 0;
    waitpid(child, &status, 0);
    double painted = 0;
    start result;
    if (status != 0 || std::sscanf(text, "%lf %lf", &painted, &result.peak) != 2)
        give_up(path);
    result.took = painted - started;
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4)
        give_up("TIMES CLIENT BARE_WINDOW");
    const char* const who[] = {"client", "floor"};
    for (int i = 0; i <= std::atoi(argv[1]); ++i)
        for (int which = 0; which < 2; ++which) {
            const start one = start_once(argv[2 + which]);
            if (i == 0)
                continue; // from a cold disk
            std::printf("embedded 0 start %s 0 %.3f\n", who[which], one.took);
            if (which == 1)
                std::printf("embedded 0 peak floor 0 %.3f\n", one.peak);
        }
    return 0;
}

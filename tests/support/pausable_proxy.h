#pragma once

#include "db/open.h"

#include <atomic>
#include <list>
#include <memory>
#include <mutex>
#include <thread>

namespace orvo {

/// Stands on the loopback interface between a client and its PostgreSQL server and is the bad line that a
/// test needs. It runs in threads of its own, since a client waits for its answers in the test's.
class pausable_proxy {
public:
    /// Takes new lines to the server of that address from the start.
    explicit pausable_proxy(const server_address& server);
    ~pausable_proxy();
    pausable_proxy(const pausable_proxy&) = delete;
    pausable_proxy& operator=(const pausable_proxy&) = delete;

    /// The server's address with the proxy in its place.
    const server_address& address() const { return through_; }

    void cut_lines();
    /// Nobody is there: new lines are refused. Lines that stand are cut.
    void refuse();
    /// New lines are taken, but nothing is said on them.
    void keep_silent();
    void resume();

    /// Lets the statement of that number from now on (1 is the next) reach the server and be carried out, and
    /// cuts its line in place of the answer.
    void cut_in_place_of_answer(int statement);
    /// Cuts the line after that many bytes more of answers.
    void cut_after(int bytes);

    /// How many statements were sent to the server.
    int statements() const { return statements_; }
    /// How many lines were taken.
    int lines() const { return taken_; }

private:
    struct line;

    server_address server_;
    server_address through_;
    int listener_ = -1;
    std::thread doorman_;
    std::mutex guard_; // of lines_
    std::list<std::unique_ptr<line>> lines_;
    std::atomic<bool> silent_ = false;
    std::atomic<int> statements_ = 0;
    std::atomic<int> taken_ = 0;
    std::atomic<int> doomed_statement_ = -1;
    std::atomic<int> bytes_left_ = -1;

    void listen_on(int port);
    void take_lines(int listener);
    void stop_listening();
    void carry_up(line& each);
    void carry_down(line& each);
};

} // namespace orvo

#pragma once

#include "db/open.h"

#include <QByteArray>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <list>
#include <thread>

namespace orvo {

/// Stands on the loopback interface between a client and its PostgreSQL server and is the bad line that a
/// test needs. It runs in a thread of its own, since a client waits for its answers in the test's.
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
    void keep_silent() { silent_ = true; }
    /// Statements reach the server and are carried out; their answers come when the proxy resumes.
    void hold_answers() { held_ = true; }
    /// New lines get these bytes for an answer to their first words, and are cut.
    void answer_with(const QByteArray& bytes);
    void resume();
    /// A slow line: from now on every answer comes that much later.
    void delay_answers(std::chrono::milliseconds by) { delay_ = by.count(); }

    /// Lets the statement of that number from now on (1 is the next) reach the server and be carried out, and
    /// cuts its line in place of the answer.
    void cut_in_place_of_answer(int statement) { doomed_statement_ = statements_ + statement; }
    /// Cuts the line after that many bytes more of answers.
    void cut_after(int bytes) { bytes_left_ = bytes; }

    /// How many statements were sent to the server.
    int statements() const { return statements_; }
    /// How often the client waited for the server: statements that went out together are one wait.
    int waits() const { return waits_; }

private:
    struct line;

    const int server_port_;
    server_address through_;
    int listener_ = -1;
    std::list<line> lines_;
    QByteArray answer_;
    std::atomic<bool> ends_ = false;
    std::atomic<std::packaged_task<void()>*> order_ = nullptr;
    std::atomic<bool> silent_ = false;
    std::atomic<bool> held_ = false;
    std::atomic<int> statements_ = 0;
    std::atomic<int> waits_ = 0;
    std::atomic<std::int64_t> delay_ = 0; ///< milliseconds
    std::atomic<int> doomed_statement_ = -1;
    std::atomic<int> bytes_left_ = -1;
    std::thread carrier_;

    void listen();
    void run();
    /// Has something done between two looks at the lines.
    void in_its_thread(const std::function<void()>& act);
    void take_line();
    /// False where the line is to be cut.
    bool carry_up(line& each);
    bool carry_down(line& each);
};

} // namespace orvo

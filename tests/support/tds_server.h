#pragma once

#include "db/open.h"
#include "support/tds_tokens.h"

#include <QStringList>

#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

namespace orvo {

/// Stands on the loopback interface for the association's SQL Server: speaks TDS 7.4 with FreeTDS, and
/// answers from files of the embedded engine through the client's own dialect. It is what a test needs of a
/// bad server too. Each line has a thread of its own.
class tds_server {
public:
    /// Answers from the files in that address's folder. Its user and password are those that the server
    /// takes, where they are given.
    explicit tds_server(const server_address& files);
    ~tds_server();
    tds_server(const tds_server&) = delete;
    tds_server& operator=(const tds_server&) = delete;

    /// Where the server is and how it takes one in; the folder stays that of the files.
    const server_address& address() const { return address_; }

    /// The batches that arrived, in their order, but for those that only set a line up.
    QStringList batches() const;
    /// The same, and the journal begins anew.
    QStringList take_batches();
    /// How many batches arrived since the server stands.
    int statements() const;
    /// Calls of procedures, which are all refused: a client that prepares or scrolls makes them.
    int refused_calls() const { return refused_calls_; }

    /// Logins end in an error from now on.
    void refuse_logins();
    void refuse_logins(const tds_error& error);
    void cut_lines();
    /// Nobody is there: new lines are refused. Lines that stand are cut.
    void refuse();
    /// Lines are taken and batches written down, but nothing is done and nothing said.
    void keep_silent() { silent_ = true; }
    /// Batches are written down and not answered; only the client's wish to stop is.
    void keep_busy() { busy_ = true; }
    /// Batches are carried out, and answered when the client wishes to stop.
    void hold_answers() { held_ = true; }
    /// Takes logins, lines and batches again. What was not answered stays so.
    void resume();

    /// Carries the batch of that number from now on (1 is the next) out, and cuts its line in place of the
    /// answer.
    void cut_in_place_of_answer(int statement = 1);
    /// Answers the batch of that number from now on with an error, and does nothing of it.
    void answer_with(const tds_error& error, int statement = 1);
    /// Cuts the line after that many bytes more of answers, or rows.
    void cut_after(int bytes) { bytes_left_ = bytes; }
    void cut_after_rows(int rows) { rows_left_ = rows; }

private:
    struct line;

    server_address address_;
    int listener_ = -1;
    std::thread door_;
    std::list<std::unique_ptr<line>> lines_; // the door's and, under the mutex, everybody's
    mutable std::mutex mutex_;
    QStringList batches_;
    int statements_ = 0;
    int doomed_statement_ = -1;
    std::map<int, tds_error> errors_; // by the batch's number
    std::optional<tds_error> login_error_;
    std::atomic<int> refused_calls_ = 0;
    std::atomic<bool> silent_ = false;
    std::atomic<bool> busy_ = false;
    std::atomic<bool> held_ = false;
    std::atomic<int> bytes_left_ = -1;
    std::atomic<int> rows_left_ = -1;

    void listen();
    void stop_listening();
    void take_lines();
    void serve(line& each);
    void serve_message(line& each, const tds_line::message& message);
    void log_in(line& each, std::string_view message);
    void take_batch(line& each, const QString& batch);
};

} // namespace orvo

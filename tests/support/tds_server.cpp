#include "support/tds_server.h"

#include "support/tds_answers.h"
#include "support/tds_batch.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <system_error>

namespace orvo {

namespace {

constexpr std::size_t most_lines = 64;

int checked(int result)
{
    if (result < 0)
        throw std::system_error{errno, std::generic_category()};
    return result;
}

tds_error login_failed(const QString& user)
{
    return {18456, QStringLiteral("Login failed for user '%1'.").arg(user), 14, 1};
}

} // namespace

struct tds_server::line {
    line(int socket, std::atomic<int>& bytes_left) : way{socket, bytes_left} {}
    ~line()
    {
        way.cut();
        if (thread.joinable())
            thread.join();
    }
    line(const line&) = delete;
    line& operator=(const line&) = delete;

    tds_line way;
    std::optional<tds_answers> answers; // of a client that is logged in
    std::atomic<bool> is_over = false;
    std::thread thread;
};

tds_server::tds_server(const server_address& files) : address_{files}
{
    address_.kind = engine::sqlserver;
    address_.host = QStringLiteral("127.0.0.1");
    address_.port = 0;
    address_.name = QStringLiteral("orvo_db");
    address_.mail_name = QStringLiteral("orvo_mail");
    if (address_.user.isEmpty())
        address_.user = QStringLiteral("administrator");
    if (address_.password.isEmpty())
        address_.password = QStringLiteral("p;w}d={'");
    listen();
}

tds_server::~tds_server()
{
    refuse();
}

void tds_server::listen()
{
    listener_ = checked(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const int yes = 1;
    checked(::setsockopt(listener_, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes));
    sockaddr_in own{};
    own.sin_family = AF_INET;
    own.sin_port = htons(static_cast<in_port_t>(address_.port));
    own.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof own;
    checked(::bind(listener_, reinterpret_cast<const sockaddr*>(&own), size));
    checked(::listen(listener_, 16));
    checked(::getsockname(listener_, reinterpret_cast<sockaddr*>(&own), &size));
    address_.port = ntohs(own.sin_port);
    door_ = std::thread{[this] { take_lines(); }};
}

void tds_server::stop_listening()
{
    if (listener_ < 0)
        return;
    ::shutdown(listener_, SHUT_RDWR);
    door_.join();
    ::close(std::exchange(listener_, -1));
}

void tds_server::take_lines()
{
    while (true) {
        const int client = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        if (client < 0)
            return;
        const int yes = 1;
        ::setsockopt(client, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
        const std::lock_guard guard{mutex_};
        std::erase_if(lines_, [](const auto& each) { return each->is_over.load(); });
        if (lines_.size() == most_lines) {
            ::close(client);
            continue;
        }
        line& taken = *lines_.emplace_back(std::make_unique<line>(client, bytes_left_));
        taken.thread = std::thread{[this, &taken] { serve(taken); }};
    }
}

void tds_server::serve(line& each)
{
    try {
        while (const auto message = each.way.read())
            serve_message(each, *message);
    } catch (const std::exception& failure) {
        qWarning("a line of the test's server ends: %s", failure.what());
    }
    each.answers.reset(); // what it left open is undone at once
    each.way.cut();
    each.is_over = true;
}

void tds_server::serve_message(line& each, const tds_line::message& message)
{
    if (silent_ && message.type != tds_type::batch)
        return;
    switch (message.type) {
    case tds_type::prelogin:
        each.way.put(prelogin_answer());
        break;
    case tds_type::login:
        log_in(each, message.content);
        break;
    case tds_type::attention:
        each.way.put(done_token(done_with_attention));
        break;
    case tds_type::batch: {
        const std::string_view batch = behind_headers(message.content);
        return take_batch(each, text_at(batch, 0, batch.size() / 2));
    }
    case tds_type::transaction:
        if (each.answers)
            each.answers->answer_transaction(message.content);
        break;
    case tds_type::call:
        ++refused_calls_;
        if (each.answers)
            each.answers->answer_with({2812, QStringLiteral("Could not find stored procedure.")});
        break;
    default:
        each.way.cut();
        return;
    }
    each.way.end();
}

void tds_server::log_in(line& each, std::string_view message)
{
    const tds_login login = read_login(message);
    std::optional<tds_error> refusal;
    {
        const std::lock_guard guard{mutex_};
        refusal = login_error_;
    }
    if (!refusal && (login.user != address_.user || login.password != address_.password))
        refusal = login_failed(login.user);
    const bool is_mail = login.database == address_.mail_name;
    if (!refusal && !is_mail && login.database != address_.name)
        refusal = {4060,
                   QStringLiteral("Cannot open database \"%1\" requested by the login. The login failed.")
                       .arg(login.database),
                   11};
    if (refusal) {
        each.way.put(error_token(*refusal));
        each.way.put(done_token(done_with_error));
        return;
    }
    server_address files = address_;
    files.kind = engine::embedded;
    connection base = make_connection(files, is_mail ? database::mail : database::server);
    base.open();
    each.answers.emplace(each.way, std::move(base), rows_left_);
    each.way.put(login_tokens(login));
    each.way.set_packet_size(static_cast<std::size_t>(login.packet_size));
}

void tds_server::take_batch(line& each, const QString& batch)
{
    if (!each.answers) {
        each.way.cut();
        return;
    }
    std::optional<tds_error> error;
    const bool is_journaled = kind_of_batch(batch) != batch_kind::setting;
    if (is_journaled) {
        const std::lock_guard guard{mutex_};
        batches_.append(batch);
        if (++statements_ == doomed_statement_)
            each.way.doom();
        if (const auto found = errors_.extract(statements_))
            error = found.mapped();
    }
    if (silent_ || (busy_ && is_journaled))
        return;
    if (error)
        each.answers->answer_with(*error);
    else
        each.answers->answer(batch);
    if (silent_ || (held_ && is_journaled))
        return;
    if (each.way.is_interrupted())
        each.way.put(done_token(done_with_attention));
    each.way.end();
}

QStringList tds_server::batches() const
{
    const std::lock_guard guard{mutex_};
    return batches_;
}

QStringList tds_server::take_batches()
{
    const std::lock_guard guard{mutex_};
    return std::exchange(batches_, {});
}

int tds_server::statements() const
{
    const std::lock_guard guard{mutex_};
    return statements_;
}

void tds_server::refuse_logins()
{
    refuse_logins(login_failed(address_.user));
}

void tds_server::refuse_logins(const tds_error& error)
{
    const std::lock_guard guard{mutex_};
    login_error_ = error;
}

void tds_server::cut_in_place_of_answer(int statement)
{
    const std::lock_guard guard{mutex_};
    doomed_statement_ = statements_ + statement;
}

void tds_server::answer_with(const tds_error& error, int statement)
{
    const std::lock_guard guard{mutex_};
    errors_.emplace(statements_ + statement, error);
}

void tds_server::cut_lines()
{
    std::list<std::unique_ptr<line>> cut;
    {
        const std::lock_guard guard{mutex_};
        cut.swap(lines_);
        for (const auto& each : cut)
            each->way.cut();
    }
    // Their threads end outside the lock, which they may be waiting for.
}

void tds_server::refuse()
{
    stop_listening();
    cut_lines();
}

void tds_server::resume()
{
    silent_ = false;
    busy_ = false;
    held_ = false;
    {
        const std::lock_guard guard{mutex_};
        login_error_.reset();
    }
    if (listener_ < 0)
        listen();
}

} // namespace orvo

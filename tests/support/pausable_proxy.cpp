#include "support/pausable_proxy.h"

#include "support/postgresql_messages.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <system_error>

namespace orvo {

namespace {

int checked(int result)
{
    if (result < 0)
        throw std::system_error{errno, std::generic_category()};
    return result;
}

sockaddr_in loopback(int port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<in_port_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

int new_socket()
{
    return checked(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
}

/// False where the line is cut.
bool send_all(int to, const char* bytes, std::size_t size)
{
    for (std::size_t done = 0; done < size;) {
        const ssize_t sent = ::send(to, bytes + done, size - done, MSG_NOSIGNAL);
        if (sent <= 0)
            return false;
        done += static_cast<std::size_t>(sent);
    }
    return true;
}

} // namespace

struct pausable_proxy::line {
    line(int from_client, int to_server) : client{from_client}, server{to_server} {}
    ~line()
    {
        cut();
        for (std::thread* each : {&up, &down})
            if (each->joinable())
                each->join();
        ::close(client);
        if (server >= 0)
            ::close(server);
    }
    line(const line&) = delete;
    line& operator=(const line&) = delete;

    void cut() const
    {
        ::shutdown(client, SHUT_RDWR);
        if (server >= 0)
            ::shutdown(server, SHUT_RDWR);
    }

    const int client;
    const int server; // -1 where nothing is said
    std::atomic<bool> answer_is_doomed = false;
    std::thread up;
    std::thread down;
};

pausable_proxy::pausable_proxy(const server_address& server) : server_{server}, through_{server}
{
    listen_on(0);
    sockaddr_in address{};
    socklen_t size = sizeof address;
    checked(::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size));
    through_.port = ntohs(address.sin_port);
}

pausable_proxy::~pausable_proxy()
{
    stop_listening();
    const std::lock_guard lock{guard_};
    lines_.clear();
}

void pausable_proxy::listen_on(int port)
{
    const int listener = new_socket();
    const int yes = 1;
    checked(::setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes));
    const sockaddr_in address = loopback(port);
    checked(::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address));
    checked(::listen(listener, 16));
    listener_ = listener;
    doorman_ = std::thread{[this, listener] { take_lines(listener); }};
}

void pausable_proxy::stop_listening()
{
    if (listener_ < 0)
        return;
    ::shutdown(listener_, SHUT_RDWR);
    doorman_.join();
    ::close(std::exchange(listener_, -1));
}

void pausable_proxy::take_lines(int listener)
{
    const int yes = 1;
    while (true) {
        const int client = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (client < 0)
            return;
        ++taken_;
        int server = -1;
        if (!silent_) {
            server = new_socket();
            const sockaddr_in address = loopback(server_.port);
            if (::connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address) < 0) {
                ::close(server);
                ::close(client);
                continue;
            }
            for (const int each : {client, server})
                ::setsockopt(each, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
        }
        auto fresh = std::make_unique<line>(client, server);
        if (server >= 0) {
            fresh->up = std::thread{[this, &each = *fresh] { carry_up(each); }};
            fresh->down = std::thread{[this, &each = *fresh] { carry_down(each); }};
        }
        const std::lock_guard lock{guard_};
        lines_.push_back(std::move(fresh));
    }
}

void pausable_proxy::carry_up(line& each)
{
    std::array<char, 65536> bytes;
    postgresql_messages messages;
    ssize_t got = 0;
    while ((got = ::recv(each.client, bytes.data(), bytes.size(), 0)) > 0) {
        const std::string_view chunk{bytes.data(), static_cast<std::size_t>(got)};
        for (int left = messages.statements_in(chunk); left > 0; --left)
            if (++statements_ == doomed_statement_)
                each.answer_is_doomed = true;
        if (!send_all(each.server, chunk.data(), chunk.size()))
            break;
    }
    each.cut();
}

void pausable_proxy::carry_down(line& each)
{
    std::array<char, 65536> bytes;
    ssize_t got = 0;
    while ((got = ::recv(each.server, bytes.data(), bytes.size(), 0)) > 0) {
        // A write is answered when it is stored, so the first byte of the answer says that the server has
        // done it.
        if (each.answer_is_doomed)
            break;
        auto size = static_cast<int>(got);
        const int left = bytes_left_;
        const bool is_last = left >= 0 && size >= left;
        if (is_last)
            size = left;
        if (left >= 0)
            bytes_left_ = is_last ? -1 : left - size;
        if (!send_all(each.client, bytes.data(), static_cast<std::size_t>(size)) || is_last)
            break;
    }
    each.cut();
}

void pausable_proxy::cut_lines()
{
    const std::lock_guard lock{guard_};
    lines_.clear();
}

void pausable_proxy::refuse()
{
    stop_listening();
    cut_lines();
}

void pausable_proxy::keep_silent()
{
    silent_ = true;
}

void pausable_proxy::resume()
{
    silent_ = false;
    if (listener_ < 0)
        listen_on(through_.port);
}

void pausable_proxy::cut_in_place_of_answer(int statement)
{
    doomed_statement_ = statements_ + statement;
}

void pausable_proxy::cut_after(int bytes)
{
    bytes_left_ = bytes;
}

} // namespace orvo

#include "support/pausable_proxy.h"

#include <QtEndian>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <system_error>

namespace orvo {

namespace {

constexpr quint32 start_up = 196608;

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

bool send_all(int to, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t sent = ::send(to, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

} // namespace

struct pausable_proxy::line {
    line(int from_client, int to_server) : client{from_client}, server{to_server} {}
    ~line()
    {
        ::close(client);
        ::close(server);
    }
    line(const line&) = delete;
    line& operator=(const line&) = delete;

    struct counts {
        int statements = 0;
        int waits = 0;
    };

    /// How many statements end in the next bytes from the client, and how often it asks for all answers.
    counts count_in(std::string_view bytes)
    {
        unread += bytes;
        counts found;
        // A message is a letter, the length of what follows with the length itself, and its content; those
        // before the start-up is over come without the letter.
        for (std::size_t letter = started; unread.size() >= letter + 4; letter = started) {
            const std::size_t size = letter + qFromBigEndian<quint32>(unread.data() + letter);
            if (unread.size() < size)
                break;
            if (!started)
                started = qFromBigEndian<quint32>(unread.data() + 4) == start_up;
            else if (unread.front() == 'E')
                ++found.statements;
            else if (unread.front() == 'S')
                ++found.waits;
            else if (unread.front() == 'Q')
                ++found.statements, ++found.waits;
            unread.erase(0, size);
        }
        return found;
    }

    const int client;
    const int server; // -1 where nothing is said
    std::string unread;
    bool started = false;
    bool answer_is_doomed = false;
    bool answer_is_due = false; // of a question that no byte has answered yet
};

pausable_proxy::pausable_proxy(const server_address& server) : server_port_{server.port}, through_{server}
{
    through_.port = 0;
    listen();
    carrier_ = std::thread{[this] { run(); }};
}

pausable_proxy::~pausable_proxy()
{
    refuse();
    ends_ = true;
    carrier_.join();
}

void pausable_proxy::listen()
{
    listener_ = new_socket();
    const int yes = 1;
    checked(::setsockopt(listener_, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes));
    sockaddr_in address = loopback(through_.port);
    socklen_t size = sizeof address;
    checked(::bind(listener_, reinterpret_cast<const sockaddr*>(&address), size));
    checked(::listen(listener_, 16));
    checked(::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size));
    through_.port = ntohs(address.sin_port);
}

void pausable_proxy::run()
{
    while (!ends_) {
        std::vector<pollfd> all{{listener_, POLLIN, 0}}; // one of -1 is passed over
        for (const line& each : lines_)
            for (const int end : {each.client, each.server})
                all.push_back({each.server < 0 || (held_ && end == each.server) ? -1 : end, POLLIN, 0});
        ::poll(all.data(), all.size(), 2);
        if (auto* order = order_.exchange(nullptr)) {
            (*order)();
            continue;
        }
        std::size_t next = 1;
        for (auto each = lines_.begin(); each != lines_.end(); next += 2) {
            const bool stands =
                (!all[next].revents || carry_up(*each)) && (!all[next + 1].revents || carry_down(*each));
            each = stands ? std::next(each) : lines_.erase(each);
        }
        if (all[0].revents)
            take_line();
    }
}

void pausable_proxy::in_its_thread(const std::function<void()>& act)
{
    std::packaged_task<void()> order{act};
    std::future<void> done = order.get_future();
    order_ = &order;
    done.get();
}

void pausable_proxy::take_line()
{
    const int client = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (client < 0)
        return;
    if (!answer_.isEmpty()) {
        std::array<char, 1024> first_words;
        if (::recv(client, first_words.data(), first_words.size(), 0) > 0)
            send_all(client, answer_.toStdString());
        ::close(client);
        return;
    }
    int server = -1;
    if (!silent_) {
        server = new_socket();
        const sockaddr_in address = loopback(server_port_);
        const int yes = 1;
        checked(::connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address));
        for (const int each : {client, server})
            ::setsockopt(each, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
        const int room = 1 << 20;
        ::setsockopt(client, SOL_SOCKET, SO_SNDBUF, &room, sizeof room);
    }
    lines_.emplace_back(client, server);
}

bool pausable_proxy::carry_up(line& each)
{
    std::array<char, 65536> bytes;
    const ssize_t got = ::recv(each.client, bytes.data(), bytes.size(), 0);
    if (got <= 0)
        return false;
    const std::string_view chunk{bytes.data(), static_cast<std::size_t>(got)};
    const line::counts found = each.count_in(chunk);
    waits_ += found.waits;
    each.answer_is_due = true;
    for (int left = found.statements; left > 0; --left)
        if (++statements_ == doomed_statement_)
            each.answer_is_doomed = true;
    return send_all(each.server, chunk);
}

bool pausable_proxy::carry_down(line& each)
{
    // A client that does not read must not keep the other lines waiting, its own request to cancel among
    // them.
    pollfd reader{each.client, POLLOUT, 0};
    if (::poll(&reader, 1, 0) == 0)
        return true;
    std::array<char, 65536> bytes;
    const ssize_t got = ::recv(each.server, bytes.data(), bytes.size(), 0);
    // A write is answered when it is stored, so the first byte of the answer says that the server has done
    // it.
    if (got <= 0 || each.answer_is_doomed)
        return false;
    if (std::exchange(each.answer_is_due, false) && delay_ > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds{delay_});
    std::string_view chunk{bytes.data(), static_cast<std::size_t>(got)};
    const int left = bytes_left_;
    const bool is_last = left >= 0 && std::cmp_greater_equal(got, left);
    if (is_last)
        chunk = chunk.substr(0, static_cast<std::size_t>(left));
    if (left >= 0)
        bytes_left_ = is_last ? -1 : left - static_cast<int>(got);
    return send_all(each.client, chunk) && !is_last;
}

void pausable_proxy::cut_lines()
{
    in_its_thread([this] { lines_.clear(); });
}

void pausable_proxy::refuse()
{
    in_its_thread([this] {
        lines_.clear();
        if (listener_ >= 0)
            ::close(std::exchange(listener_, -1));
    });
}

void pausable_proxy::answer_with(const QByteArray& bytes)
{
    in_its_thread([&] { answer_ = bytes; });
}

void pausable_proxy::resume()
{
    silent_ = false;
    held_ = false;
    in_its_thread([this] {
        answer_.clear();
        if (listener_ < 0)
            listen();
    });
}

} // namespace orvo

#include "support/tds_packets.h"

#include <QtEndian>

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace orvo {

namespace {

constexpr std::size_t header_size = 8;
constexpr char answer_type = 4;
/// More than any batch of the client, and less than what a broken length would have one wait for.
constexpr std::size_t largest_message = 64U << 20;

} // namespace

tds_bytes& tds_bytes::number(quint64 value, int size)
{
    for (; size > 0; --size, value >>= 8)
        bytes_ += static_cast<char>(value & 0xff);
    return *this;
}

tds_bytes& tds_bytes::text(QStringView letters)
{
    const std::size_t from = bytes_.size();
    bytes_.resize(from + static_cast<std::size_t>(letters.size()) * 2);
    if (!letters.isEmpty())
        qToLittleEndian<quint16>(letters.utf16(), letters.size(), bytes_.data() + from);
    return *this;
}

quint64 number_at(std::string_view message, std::size_t at, int size)
{
    const std::string_view bytes = message.substr(at, static_cast<std::size_t>(size));
    if (std::cmp_less(bytes.size(), size))
        throw std::out_of_range{"a message ends in a number"};
    quint64 value = 0;
    for (int i = size; i-- > 0;)
        value = value << 8 | static_cast<unsigned char>(bytes[static_cast<std::size_t>(i)]);
    return value;
}

QString text_at(std::string_view message, std::size_t at, std::size_t letters)
{
    const std::string_view bytes = message.substr(at, letters * 2);
    if (bytes.size() < letters * 2)
        throw std::out_of_range{"a message ends in a text"};
    QString text{static_cast<qsizetype>(letters), Qt::Uninitialized};
    if (!text.isEmpty())
        qFromLittleEndian<quint16>(bytes.data(), text.size(), text.data());
    return text;
}

tds_line::tds_line(int socket, std::atomic<int>& bytes_left) : socket_{socket}, bytes_left_{bytes_left} {}

tds_line::~tds_line()
{
    ::close(socket_);
}

void tds_line::cut()
{
    ::shutdown(socket_, SHUT_RDWR);
}

bool tds_line::read_all(char* to, std::size_t size)
{
    while (size > 0) {
        const ssize_t got = ::recv(socket_, to, size, 0);
        if (got <= 0)
            return false;
        to += got;
        size -= static_cast<std::size_t>(got);
    }
    return true;
}

std::optional<tds_line::message> tds_line::read()
{
    message whole{};
    for (bool is_last = false; !is_last;) {
        std::array<char, header_size> header;
        if (gone_ || !read_all(header.data(), header.size()))
            return {};
        const std::size_t size = qFromBigEndian<quint16>(header.data() + 2);
        const std::size_t before = whole.content.size();
        if (size < header_size || before + size > largest_message)
            return {};
        whole.type = static_cast<tds_type>(header[0]);
        whole.content.resize(before + size - header_size);
        if (!read_all(whole.content.data() + before, size - header_size))
            return {};
        is_last = header[1] & 1;
    }
    return whole;
}

bool tds_line::put(std::string_view bytes)
{
    if (!doomed_)
        unsent_ += bytes;
    const std::size_t room = packet_size_ - header_size;
    while (unsent_.size() > room && !gone_) {
        send_packet(room, false);
        look_for_attention();
    }
    return !gone_ && !interrupted_;
}

void tds_line::end()
{
    if (doomed_)
        cut();
    else
        send_packet(unsent_.size(), true);
    packets_ = 0;
    interrupted_ = false;
}

void tds_line::end_in_the_middle()
{
    send_packet(unsent_.size(), false);
    gone_ = true;
    cut();
}

void tds_line::send_packet(std::size_t size, bool is_last)
{
    std::array<char, header_size> header{answer_type, is_last ? char{1} : char{0}};
    qToBigEndian(static_cast<quint16>(size + header_size), header.data() + 2);
    header[6] = static_cast<char>(++packets_);
    std::string packet{header.data(), header.size()};
    packet.append(unsent_, 0, size);
    unsent_.erase(0, size);
    const int left = bytes_left_;
    const bool is_cut = left >= 0 && std::cmp_greater_equal(packet.size(), left);
    if (is_cut)
        packet.resize(static_cast<std::size_t>(left));
    if (left >= 0)
        bytes_left_ = is_cut ? -1 : left - static_cast<int>(packet.size());
    for (std::string_view rest = packet; !rest.empty() && !gone_;) {
        const ssize_t sent = ::send(socket_, rest.data(), rest.size(), MSG_NOSIGNAL);
        if (sent > 0)
            rest.remove_prefix(static_cast<std::size_t>(sent));
        else
            gone_ = true;
    }
    if (is_cut) {
        gone_ = true;
        cut();
    }
}

void tds_line::look_for_attention()
{
    pollfd reader{socket_, POLLIN, 0};
    if (gone_ || ::poll(&reader, 1, 0) <= 0)
        return;
    const std::optional<message> next = read();
    if (next && next->type == tds_type::attention)
        interrupted_ = true;
    else
        gone_ = true; // a client that does not wait for its answer is none
}

} // namespace orvo

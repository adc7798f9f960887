#pragma once

#include <QString>

#include <atomic>
#include <optional>
#include <string>
#include <string_view>

namespace orvo {

/// Little-endian numbers and UTF-16 texts, one behind the other, as an answer is made of them.
class tds_bytes {
public:
    tds_bytes& byte(int value)
    {
        bytes_ += static_cast<char>(value);
        return *this;
    }
    tds_bytes& number(quint64 value, int size);
    tds_bytes& raw(std::string_view bytes)
    {
        bytes_ += bytes;
        return *this;
    }
    tds_bytes& text(QStringView letters);
    /// With its length in letters before it, in one byte or in two.
    tds_bytes& short_text(QStringView letters)
    {
        return byte(static_cast<int>(letters.size())).text(letters);
    }
    tds_bytes& long_text(QStringView letters) { return number(letters.size(), 2).text(letters); }

    const std::string& get() const { return bytes_; }
    void clear() { bytes_.clear(); }

private:
    std::string bytes_;
};

/// A number of up to eight bytes at a place of a message. Throws std::out_of_range behind its end, as the
/// next one does.
quint64 number_at(std::string_view message, std::size_t at, int size);
QString text_at(std::string_view message, std::size_t at, std::size_t letters);

enum class tds_type { batch = 1, call = 3, attention = 6, transaction = 14, login = 16, prelogin = 18 };

/// The server's end of one client's line: messages in, answers out, both in packets.
class tds_line {
public:
    struct message {
        tds_type type;
        std::string content;
    };

    /// Takes the socket. No more than that many bytes are sent on all lines together, where it is not
    /// negative; then the line is cut.
    tds_line(int socket, std::atomic<int>& bytes_left);
    ~tds_line();
    tds_line(const tds_line&) = delete;
    tds_line& operator=(const tds_line&) = delete;

    /// The next message; nothing where the line is at its end.
    std::optional<message> read();

    /// Adds to the answer and sends what fills a packet. False where nobody wants the rest: the client asked
    /// to stop, or is gone.
    bool put(std::string_view bytes);
    bool put(const tds_bytes& bytes) { return put(bytes.get()); }
    /// Sends what there is, as the end of the answer.
    void end();
    /// Sends what there is of the answer, and cuts the line.
    void end_in_the_middle();
    /// Nothing more is sent, and the line is cut in place of the answer's end.
    void doom() { doomed_ = true; }
    /// From any thread.
    void cut();

    void set_packet_size(std::size_t bytes) { packet_size_ = bytes; }
    /// Whether the client asked to stop since the last end of an answer.
    bool is_interrupted() const { return interrupted_; }

private:
    const int socket_;
    std::atomic<int>& bytes_left_;
    std::size_t packet_size_ = 4096;
    std::string unsent_;
    int packets_ = 0;
    bool doomed_ = false;
    bool interrupted_ = false;
    bool gone_ = false;

    bool read_all(char* to, std::size_t size);
    void send_packet(std::size_t size, bool is_last);
    void look_for_attention();
};

} // namespace orvo

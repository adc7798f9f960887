#include "support/tds_tokens.h"

#include <QtEndian>

#include <algorithm>

namespace orvo {

namespace {

using namespace std::string_view_literals;

/// Korean, without case.
constexpr std::string_view collation = "\x12\x04\xd0\x00\x00"sv;
constexpr std::string_view transaction_name = "\1\0\0\0\0\0\0\0"sv;
const QString server_name = QStringLiteral("TDSTEST");

enum class change {
    database = 1,
    packet_size = 4,
    order_of_letters = 7,
    begun = 8,
    committed = 9,
    rolled_back = 10
};

/// A token whose length stands in front of what it holds.
tds_bytes sized(int token, const tds_bytes& content)
{
    tds_bytes whole;
    whole.byte(token).number(content.get().size(), 2).raw(content.get());
    return whole;
}

tds_bytes text_change(change what, QStringView now, QStringView before)
{
    return sized(0xe3, tds_bytes{}.byte(static_cast<int>(what)).short_text(now).short_text(before));
}

tds_bytes bytes_change(change what, std::string_view now, std::string_view before)
{
    tds_bytes content;
    content.byte(static_cast<int>(what));
    for (const std::string_view each : {now, before})
        content.byte(static_cast<int>(each.size())).raw(each);
    return sized(0xe3, content);
}

} // namespace

std::string_view behind_headers(std::string_view message)
{
    const std::size_t size = number_at(message, 0, 4);
    return message.substr(std::min(size, message.size()));
}

tds_login read_login(std::string_view message)
{
    const auto field = [&](std::size_t at) {
        return text_at(message, number_at(message, at, 2), number_at(message, at + 2, 2));
    };
    tds_login login;
    login.packet_size = static_cast<int>(number_at(message, 8, 4));
    if (login.packet_size < 512 || login.packet_size > 32767)
        login.packet_size = 4096;
    login.user = field(40);
    login.password = field(44);
    login.database = field(68);
    // A password is not readable on the line: its halves of bytes are swapped, and every other bit is turned.
    for (QChar& letter : login.password) {
        const int turned = letter.unicode() ^ 0xa5a5;
        letter = QChar{static_cast<char16_t>((turned & 0x0f0f) << 4 | (turned & 0xf0f0) >> 4)};
    }
    return login;
}

std::string prelogin_answer()
{
    // Each option: its number, where its value stands and how long it is; behind them the values.
    constexpr std::string_view answer = "\0\0\x15\0\6" // version
                                        "\1\0\x1b\0\1" // encryption
                                        "\2\0\x1c\0\1" // instance
                                        "\4\0\x1d\0\1" // several results at a time
                                        "\xff"
                                        "\x10\0\0\0\0\0"
                                        "\2" // not supported
                                        "\0\0"sv;
    return std::string{answer};
}

tds_bytes done_token(int how, quint64 rows)
{
    return tds_bytes{}.byte(0xfd).number(static_cast<quint64>(how), 2).number(0, 2).number(rows, 8);
}

tds_bytes error_token(const tds_error& error)
{
    tds_bytes content;
    content.number(static_cast<quint64>(error.number), 4).byte(error.state).byte(error.severity);
    content.long_text(error.text).short_text(server_name).short_text({}).number(1, 4);
    return sized(0xaa, content);
}

tds_bytes login_tokens(const tds_login& login)
{
    tds_bytes all;
    all.raw(text_change(change::database, login.database, u"master").get());
    all.raw(bytes_change(change::order_of_letters, collation, {}).get());
    const QString size = QString::number(login.packet_size);
    tds_bytes acknowledged;
    acknowledged.byte(1).raw("\x74\0\0\4"sv).short_text(u"Microsoft SQL Server").raw("\x10\0\0\0"sv);
    all.raw(sized(0xad, acknowledged).get());
    all.raw(text_change(change::packet_size, size, u"4096").get());
    return all.raw(done_token(done_plainly).get());
}

tds_bytes transaction_begun_token()
{
    return bytes_change(change::begun, transaction_name, {});
}

tds_bytes transaction_over_token(bool committed)
{
    return bytes_change(committed ? change::committed : change::rolled_back, {}, transaction_name);
}

tds_bytes columns_token(const std::vector<tds_column>& columns)
{
    constexpr int nullable = 1;
    tds_bytes all;
    all.byte(0x81).number(columns.size(), 2);
    for (const tds_column& each : columns) {
        all.number(0, 4).number(nullable, 2);
        switch (each.is) {
        case tds_column::kind::integer:
            all.byte(0x26).byte(each.integer_bytes);
            break;
        case tds_column::kind::floating:
            all.byte(0x6d).byte(8);
            break;
        case tds_column::kind::money:
            all.byte(0x6e).byte(8);
            break;
        case tds_column::kind::decimal:
            all.byte(0x6c).byte(9).byte(18).byte(tds_column::decimal_places);
            break;
        case tds_column::kind::varying:
        case tds_column::kind::padded:
            all.byte(each.is == tds_column::kind::varying ? 0xe7 : 0xef)
                .number(each.width == tds_column::unbounded ? 0xffff : static_cast<quint64>(each.width) * 2,
                        2)
                .raw(collation);
            break;
        }
        all.short_text(each.name);
    }
    return all;
}

} // namespace orvo

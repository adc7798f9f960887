#pragma once

#include "support/tds_packets.h"

#include <vector>

namespace orvo {

/// An error as a server reports it.
struct tds_error {
    int number = 50000;
    QString text;
    int severity = 16;
    int state = 1;
};

/// What a client says when it logs in.
struct tds_login {
    QString user;
    QString password;
    QString database;
    int packet_size = 4096;
};

/// Throws std::out_of_range on a message that is shorter than it says.
tds_login read_login(std::string_view message);
/// The message behind the headers that stand before a batch, a call or a transaction's request.
std::string_view behind_headers(std::string_view message);

/// The server speaks no TLS.
std::string prelogin_answer();

/// How an answer ends, together: an error came before it, the number of rows counts, the client's wish to
/// stop is met.
enum tds_done {
    done_plainly = 0,
    done_with_more = 1,
    done_with_error = 2,
    done_with_count = 0x10,
    done_with_attention = 0x20
};
tds_bytes done_token(int how, quint64 rows = 0);
tds_bytes error_token(const tds_error& error);
tds_bytes login_tokens(const tds_login& login);
/// The client speaks of a transaction by what it is given at its begin.
tds_bytes transaction_begun_token();
tds_bytes transaction_over_token(bool committed);

struct tds_column {
    static constexpr int unbounded = 0;
    static constexpr int decimal_places = 2;
    enum class kind { varying, padded, integer, floating, money, decimal };

    QString name;
    kind is = kind::varying;
    int integer_bytes = 0; ///< 4 or 8
    int width = unbounded; ///< of a text, in letters
};

tds_bytes columns_token(const std::vector<tds_column>& columns);

} // namespace orvo

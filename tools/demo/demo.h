#pragma once

#include "db/connection.h"

#include <QDate>

#include <functional>
#include <span>
#include <string_view>

namespace orvo::demo {

struct plan {
    int members = 1000;
    quint64 seed = 1;
    QDate today;
};

/// An operator of the demo register, with the password in clear for those who try it.
struct demo_operator {
    std::string_view id;
    std::string_view password;
    std::string_view name;
    int branch;
    int author1;
    int author2;
    int author3;
};

std::span<const demo_operator> operators();

/// From this number of members on, all the rare shapes that have made trouble are among them.
inline constexpr int members_with_edges = 50;

/// Hears what is being filled: the rows so far, and when they are all.
using report = std::function<void(std::string_view table, qint64 rows, bool all)>;

/// The table that keeps a register from being filled, since it holds rows already; empty where none does.
std::string_view table_in_the_way(connection& server);

/// Fills an empty register: the same rows for the same plan, on every engine. All or nothing.
void fill(connection& server, const plan& what, const report& tell = {});

/// Gives a workstation that has no postal codes some of our own making: those of up to 500 members' homes,
/// and as many others as make 600 rows. Where two members disagree on a neighbourhood's code, the first is
/// right.
void fill_postal_codes(connection& server, connection& local, const plan& what, const report& tell = {});

} // namespace orvo::demo

#pragma once

#include "db/connection.h"

#include <QString>

#include <functional>

namespace orvo {

/// A query whose rows are members: the text and what its slots take.
struct member_query {
    std::string text;
    values given;
};

/// Replaces the workstation's copy of the last search by the members that the query finds, in their order; a
/// member whom the query names twice stands twice. Returns their number. Where there is none, where the
/// operator cancels (failure_kind::cancelled) or something fails, the earlier copy stays. `found_some` is
/// called before the first row is written.
///
/// The copy holds the member's own values: where the query brings a column of that name from the workplace as
/// well, the member's comes last.
qint64 copy_members(
    connection& db, connection& local, const member_query& query, progress* follow = nullptr,
    const std::function<void()>& found_some = [] {});

/// Brings the copy's row of a member in line with his row on the server.
void refresh_copy(connection& local, const rows::row& on_server);

} // namespace orvo

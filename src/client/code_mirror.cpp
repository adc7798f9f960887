#include "client/code_mirror.h"

#include "base/amount.h"
#include "db/connection.h"
#include "db/row_key.h"
#include "db/wide_statement.h"

#include <algorithm>
#include <optional>
#include <set>

namespace orvo {

namespace {

using code_row = std::vector<QString>;

/// The rows of a code table: of a code that stands there twice the first one, and none that has no code.
class code_rows : public row_sink {
public:
    explicit code_rows(const table& of) : of_{of} {}

    void begin(const column_names&) override
    {
        found.clear();
        seen_.clear();
    }
    bool take(std::span<const cell> row) override
    {
        const auto code = code_of(of_, row);
        if (!code || !seen_.insert(*code).second)
            return true;
        code_row& fields = found.emplace_back();
        for (const cell& each : row)
            fields.push_back(each.is == cell::kind::number
                                 ? QString::number(each.number)
                                 : QString::fromStdString(std::string{each.unpadded().text}));
        for (std::size_t at = 0; at < row.size(); ++at)
            if (of_.columns[at].type != column_type::text)
                fields[at] = QString::number(whole_part(fields[at]));
        return true;
    }

    std::vector<code_row> found;

private:
    const table& of_;
    std::set<std::vector<std::string>> seen_;
};

std::vector<code_row> rows_of(connection& side, const table& mirrored)
{
    code_rows all{mirrored};
    side.read_each(codes_text(mirrored), {}, all);
    return std::move(all.found);
}

/// A server need not give its rows in an order.
bool are_alike(std::vector<code_row> one, std::vector<code_row> other)
{
    std::ranges::sort(one);
    std::ranges::sort(other);
    return one == other;
}

/// A table of the server that the workstation has otherwise.
struct newer_table {
    const table* mirrored;
    std::vector<code_row> rows;
};

std::optional<newer_table> look_for_changes(connection& server, connection& local, std::string_view name)
{
    newer_table found{find_table(database::local, name), {}};
    found.rows = rows_of(server, *found.mirrored);
    if (are_alike(found.rows, rows_of(local, *found.mirrored)))
        return {};
    return found;
}

void put_in_place(connection& local, const newer_table& newer)
{
    local.write("delete from " + std::string{newer.mirrored->name});
    for (const code_row& each : newer.rows) {
        std::vector<column_value> columns;
        for (std::size_t at = 0; at < each.size(); ++at)
            columns.push_back({newer.mirrored->columns[at].name, each[at]});
        local.write(insert_text(newer.mirrored->name, columns), slot_values(columns));
    }
}

} // namespace

void sync_codes(connection& server, connection& local)
{
    std::vector<newer_table> newer;
    for (const std::string_view name : mirrored_tables())
        if (auto found = look_for_changes(server, local, name))
            newer.push_back(std::move(*found));
    transaction all_or_nothing{local};
    for (const newer_table& each : newer)
        put_in_place(local, each);
    all_or_nothing.commit();
}

bool sync_code_table(connection& server, connection& local, std::string_view name)
{
    const auto newer = look_for_changes(server, local, name);
    if (!newer)
        return false;
    transaction all_or_nothing{local};
    put_in_place(local, *newer);
    all_or_nothing.commit();
    return true;
}

} // namespace orvo

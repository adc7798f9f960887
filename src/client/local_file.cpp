#include "client/local_file.h"

#include "client/client.h"
#include "client/code_mirror.h"
#include "client/salvage.h"
#include "db/schema/ddl.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <map>
#include <numeric>

namespace orvo {

namespace {

class row_passer : public row_sink {
public:
    void begin(const column_names&) override {}
    bool take(std::span<const cell>) override { return true; }
};

std::string listed(const std::vector<std::string>& names, const std::string& before)
{
    // "do" is a word of the language.
    return std::accumulate(names.begin(), names.end(), std::string{},
                           [&before](std::string all, const std::string& each) {
                               return std::move(all) + (all.empty() ? "" : ",") + before + '"' + each + '"';
                           });
}

std::vector<std::string> names_of(const table& one)
{
    std::vector<std::string> names;
    for (const column& each : one.columns)
        names.emplace_back(each.name);
    return names;
}

std::string select_all(const table& from)
{
    // A quoted name alone that fits no column is taken for a text; behind the table's name it is a failure.
    const std::string name{from.name};
    return "select " + listed(names_of(from), name + '.') + " from " + name;
}

/// A table as it stands in the file.
struct standing_table {
    std::vector<std::string> columns;
    std::vector<std::string> key;

    bool has(std::string_view column) const { return std::ranges::find(columns, column) != columns.end(); }
};

std::map<std::string, standing_table, std::less<>> standing_tables(connection& local)
{
    std::map<std::string, standing_table, std::less<>> all;
    std::map<std::string, std::map<qint64, std::string>> keys;
    for (const auto row :
         local.read("select m.name as of_table,p.name as field,p.pk as place "
                    "from sqlite_master m,pragma_table_info(m.name) p where m.type='table'")) {
        const std::string name = row.text("of_table").toLower().toStdString();
        all[name].columns.push_back(row.text("field").toLower().toStdString());
        if (row.number("place") > 0)
            keys[name][row.number("place")] = all[name].columns.back();
    }
    for (const auto& [name, places] : keys)
        for (const auto& [place, field] : places)
            all[name].key.push_back(field);
    return all;
}

/// A key cannot be changed in place: the table is made anew, and takes what it can of its rows.
void make_with_its_key(connection& local, const table& wanted, const standing_table& standing)
{
    const std::string name{wanted.name};
    std::vector<std::string> both = names_of(wanted);
    std::erase_if(both, [&standing](const std::string& each) { return !standing.has(each); });
    const std::vector<std::string> made = make_statements(engine::embedded, database::local, wanted);
    local.direct("alter table " + name + " rename to former_" + name);
    local.direct(made.front());
    if (!both.empty())
        local.direct("insert or ignore into " + name + "(" + listed(both, {}) + ") select " +
                     listed(both, {}) + " from former_" + name);
    local.direct("drop table former_" + name);
    for (auto index = std::next(made.begin()); index != made.end(); ++index)
        local.direct(*index);
}

/// Whether anything was missing.
bool complete(connection& local, const table& wanted, const standing_table* standing)
{
    if (!standing) {
        for (const std::string& each : make_statements(engine::embedded, database::local, wanted))
            local.direct(each);
        return true;
    }
    if (!std::ranges::equal(primary_key_of(wanted), standing->key)) {
        make_with_its_key(local, wanted, *standing);
        return true;
    }
    bool is_changed = false;
    for (const column& each : wanted.columns)
        if (!standing->has(each.name)) {
            local.direct(add_column_statement(engine::embedded, database::local, wanted, each));
            is_changed = true;
        }
    return is_changed;
}

bool is_mirrored(std::string_view name)
{
    return std::ranges::find(mirrored_tables(), name) != mirrored_tables().end();
}

/// Carries the tables over that no server brings back.
std::vector<carried_table> carry_over(const client& c, connection& to)
{
    connection earlier = make_connection(c.server, database::local);
    std::map<std::string, standing_table, std::less<>> standing;
    try {
        earlier.open();
        standing = standing_tables(earlier);
    } catch (const db_failure& failure) {
        if (is_held_elsewhere(failure))
            throw;
        // There is none, or one that does not even tell its tables any more.
    }
    std::vector<carried_table> carried;
    transaction fast{to};
    for (const table& each : tables_of(database::local))
        if (!is_mirrored(each.name) && standing.contains(each.name)) {
            const salvaged found = salvage(earlier, to, each);
            carried.push_back({each.name, found.rows, found.is_whole});
        }
    fast.commit();
    return carried;
}

/// The file and what belongs to it, out of the way: whoever looks into the damage finds all of it.
void set_aside(const QString& path)
{
    if (!QFile::exists(path))
        return;
    for (const char* part : {"", "-wal", "-shm"}) {
        const QString aside = path + QStringLiteral(".damaged") + QLatin1String(part);
        QFile::remove(aside);
        QFile::rename(path + QLatin1String(part), aside);
    }
}

} // namespace

bool is_local_file_sound(connection& local, inspection how)
{
    try {
        row_passer rows_of_it;
        for (const table& each : tables_of(database::local)) {
            // A row is asked for, so that the table's first page is read too.
            local.direct(select_all(each) + " limit 1");
            if (how == inspection::thorough)
                local.read_each("select * from " + std::string{each.name}, {}, rows_of_it);
        }
    } catch (const db_failure& failure) {
        if (is_held_elsewhere(failure))
            throw;
        return false;
    }
    return true;
}

bool is_held_elsewhere(const db_failure& failure)
{
    return failure.kind() == failure_kind::timed_out || failure.kind() == failure_kind::cancelled;
}

std::vector<std::string_view> complete_local_file(connection& local)
{
    const auto standing = standing_tables(local);
    const auto is_there = [&standing](const table& each) { return standing.contains(each.name); };
    const std::vector<table>& wanted = tables_of(database::local);
    std::vector<std::string_view> in_want;
    if (std::ranges::none_of(wanted, is_there))
        return in_want;
    transaction all_or_nothing{local};
    for (const table& each : wanted) {
        const auto found = standing.find(each.name);
        if (complete(local, each, found == standing.end() ? nullptr : &found->second) &&
            is_mirrored(each.name))
            in_want.push_back(each.name);
    }
    all_or_nothing.commit();
    return in_want;
}

std::vector<carried_table> remake_local_file(client& c)
{
    // Made beside the old one, which goes when the new one is whole: a file without codes would be taken for
    // a sound one at the next start, and without any file there is nothing to work on.
    QTemporaryDir beside{c.server.folder + QStringLiteral("/.orvo-XXXXXX")};
    if (!beside.isValid())
        throw db_failure{failure_kind::other, beside.errorString()};
    server_address new_place = c.server;
    new_place.folder = beside.path();
    connection fresh = make_connection(new_place, database::local, file_use::create);
    fresh.open();
    for (const std::string& statement : make_local_statements())
        fresh.direct(statement);
    sync_codes(c.db_conn, fresh);
    const std::vector<carried_table> carried = carry_over(c, fresh);
    fresh.direct("pragma journal_mode=delete"); // all of it lies in the one file
    fresh.close();

    c.local_conn.close();
    const QString path = file_of(c.server, database::local);
    set_aside(path);
    for (const char* companion : {"-wal", "-shm"})
        QFile::remove(path + QLatin1String(companion));
    QFile made{file_of(new_place, database::local)};
    const bool is_in_place = made.rename(path);
    c.mirrors_behind.clear();
    c.local_conn.open();
    if (!is_in_place)
        throw db_failure{failure_kind::other, made.errorString()};
    return carried;
}

} // namespace orvo

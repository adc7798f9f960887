#include "client/client.h"

#include "base/dates.h"
#include "client/code_mirror.h"
#include "db/schema/schema.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

namespace orvo {

client::client(program_folder in, const server_address& at, prompts& with, std::function<QDateTime()> clock)
    : folder{std::move(in)}, server{at}, say{with}, now{std::move(clock)}, local_conn{make_connection(
                                                                               server, database::local)},
      db_conn{make_connection(server, database::server)}, mail_conn{make_connection(server, database::mail)},
      saves{folder.file(QStringLiteral("orvo.saves")),
            [this] {
                return save_author{session_id, session_name, this->now()};
            }},
      settings{folder.file(QStringLiteral("conf/user.ini")), QSettings::IniFormat}
{
}

QString client::today() const
{
    return stored_date(now().date());
}

void client::watch_lines(line_watch* watch)
{
    for (connection* each : {&local_conn, &db_conn, &mail_conn})
        each->set_watch(watch);
}

save client::begin(planned_save what)
{
    return save{std::move(what), db_conn, local_conn, &saves};
}

bool client::may_finish(const save_note& note) const
{
    return note.operator_id == session_id || !is_branch_operator();
}

std::optional<save> client::take_up(const save_note& note, std::span<const save_act* const> acts)
{
    auto plan = saves.plan_of(note, acts);
    if (!plan)
        return {};
    return std::optional<save>{std::in_place, std::move(*plan), db_conn, local_conn, saves, note};
}

std::optional<save> client::broken_save_of(const QString& pers_no, std::initializer_list<const save_act*> acts)
{
    for (const save_note& each : saves.unfinished()) {
        const std::string* renamed = each.given.find("pers_no"); // a change of number has left records under both
        const bool is_his = each.pers_no == pers_no || (renamed && QString::fromStdString(*renamed) == pers_no);
        if (!is_his || !may_finish(each))
            continue;
        if (auto begun = take_up(each, {acts.begin(), acts.end()}))
            return begun;
    }
    return {};
}

void client::give_up_saves_behind(const QString& pers_no, const save_act& act)
{
    for (const save_note& each : saves.unfinished()) {
        const std::string* number = each.given.find("pers_no");
        const bool keeps_number = number && QString::fromStdString(*number) == each.pers_no;
        if (each.act == QLatin1String{act.name} && each.pers_no == pers_no && keeps_number)
            saves.end(each.id, save_end::given_up);
    }
}

namespace {

class row_passer : public row_sink {
public:
    void begin(const column_names&) override {}
    bool take(std::span<const cell>) override { return true; }
};

std::string select_all(const table& from)
{
    // A quoted name alone that fits no column is taken for a text; behind the table's name it is a failure.
    std::string names;
    for (const column& each : from.columns)
        names.append(names.empty() ? "" : ",").append(from.name).append(".\"").append(each.name).append("\"");
    return "select " + names + " from " + std::string{from.name};
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

void remake_local_file(client& c)
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
    fresh.direct("pragma journal_mode=delete"); // all of it lies in the one file
    fresh.close();

    c.local_conn.close();
    const QString path = file_of(c.server, database::local);
    if (QFile::exists(path)) {
        QFile::remove(path + QStringLiteral(".damaged"));
        QFile::rename(path, path + QStringLiteral(".damaged"));
    }
    for (const char* companion : {"-wal", "-shm"})
        QFile::remove(path + QLatin1String(companion));
    QFile made{file_of(new_place, database::local)};
    const bool is_in_place = made.rename(path);
    c.mirrors_behind.clear();
    c.local_conn.open();
    if (!is_in_place)
        throw db_failure{failure_kind::other, made.errorString()};
}

} // namespace orvo

#include "client/client.h"

#include "base/dates.h"

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

std::optional<save> client::broken_save_of(const QString& pers_no,
                                           std::initializer_list<const save_act*> acts)
{
    for (const save_note& each : saves.unfinished()) {
        const std::string* renamed =
            each.given.find("pers_no"); // a change of number has left records under both
        const bool is_his =
            each.pers_no == pers_no || (renamed && QString::fromStdString(*renamed) == pers_no);
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

} // namespace orvo

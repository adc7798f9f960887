#pragma once

#include "client/program_folder.h"
#include "client/prompts.h"
#include "client/save_log.h"
#include "client/session.h"
#include "db/open.h"

#include <QDateTime>
#include <QSettings>

#include <functional>
#include <set>
#include <string_view>

namespace orvo {

/// The running client: what every screen is handed. There is one in a program, but nothing says so: a test
/// makes its own in a folder of its own.
class client : public session_variables, public handover_variables {
public:
    /// Opens nothing yet. `now` is the clock.
    client(program_folder in, const server_address& server, prompts& with,
           std::function<QDateTime()> now = &QDateTime::currentDateTime);

    const program_folder folder;
    const server_address server;
    prompts& say;
    const std::function<QDateTime()> now;

    connection local_conn; ///< the workstation's file `orvo.mdb`
    connection db_conn;    ///< the register
    connection mail_conn;  ///< the queue of outgoing mail

    /// The notes of this workstation's saves.
    save_log saves;
    /// A save of the operator who works here, not begun yet.
    save begin(planned_save what);
    /// The operator's own save of one of these acts that broke for that member; nothing where there is none.
    /// Head office takes up those of others too.
    std::optional<save> broken_save_of(const QString& pers_no, std::initializer_list<const save_act*> acts);
    /// What a save of that member left unfinished is overtaken by one that came to its end under the same
    /// number.
    void give_up_saves_behind(const QString& pers_no, const save_act& act);
    /// A noted save of one of these acts, to be finished; nothing where it is none of them.
    std::optional<save> take_up(const save_note& note, std::span<const save_act* const> acts);
    /// Whether it is for this operator to finish.
    bool may_finish(const save_note& note) const;

    /// Code tables of which the workstation's copy and the server are known to differ: before one of them
    /// gets another row, it is brought in line.
    std::set<std::string_view> mirrors_behind;

    /// What this user of this workstation has made his own: widths of columns and the like.
    QSettings settings;

    /// Today as "yyyymmdd".
    QString today() const;
    void watch_lines(line_watch* watch);
};

} // namespace orvo

#include "orvo_db/context.h"

#include "client/configuration.h"
#include "orvo_db/console.h"

namespace orvo::tool {

const char* name_of(database which)
{
    switch (which) {
    case database::server:
        return "register";
    case database::mail:
        return "mail queue";
    case database::local:
        break;
    }
    return "workstation's file";
}

connection context::open(database which, file_use use) const
{
    try {
        connection made = make_connection(server, which, use);
        made.open();
        return made;
    } catch (const db_failure& failure) {
        std::string where;
        if (which == database::local || server.kind == engine::embedded)
            where = file_of(server, which).toStdString();
        else
            where = (which == database::mail ? server.mail_name : server.name).toStdString() + " on " +
                    server.host.toStdString();
        throw tool_failure{"the " + std::string{name_of(which)} + " (" + where +
                           ") cannot be opened: " + failure.what()};
    }
}

context make_context(bool verbose)
{
    context made;
    made.folder = find_program_folder();
    made.server = read_server_address(made.folder);
    // An operator must not wait for long, a tool that fills a register must.
    made.server.statement_timeout = std::chrono::hours{2};
    made.verbose = verbose;
    return made;
}

} // namespace orvo::tool

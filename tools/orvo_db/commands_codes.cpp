#include "client/code_mirror.h"
#include "orvo_db/command.h"

namespace orvo::tool {

namespace {

void run(const QCommandLineParser& line, const context& in)
{
    expect_arguments(line, 0);
    connection server = in.open(database::server);
    connection local = in.open(database::local);
    sync_codes(server, local);
}

} // namespace

const command sync_codes_command{"sync-codes", "Bring this workstation's copy of the code tables up to date.",
                                 [](QCommandLineParser&) {}, run};

} // namespace orvo::tool

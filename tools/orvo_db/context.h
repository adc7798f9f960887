#pragma once

#include "client/program_folder.h"
#include "db/open.h"

namespace orvo::tool {

/// Where the command works, as the client of the same folder would.
struct context {
    program_folder folder;
    server_address server;
    bool verbose = false;

    /// An open connection. Throws tool_failure.
    connection open(database which, file_use use = file_use::existing) const;
};

/// "register", "mail queue" or "workstation's file".
const char* name_of(database which);

context make_context(bool verbose);

} // namespace orvo::tool

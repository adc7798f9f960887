#include "orvo_db/command.h"
#include "setup/table_check.h"

namespace orvo::tool {

namespace {

/// What is wrong with one of the databases; its own sentence where it cannot even be opened.
std::vector<std::string> look_at(const context& in, database which)
{
    try {
        connection on = in.open(which);
        return setup::faults_of(on, which);
    } catch (const tool_failure& failure) {
        return {failure.what()};
    }
}

void run(const QCommandLineParser& line, const context& in)
{
    expect_arguments(line, 0);
    std::size_t faults = 0;
    for (const database which : {database::server, database::mail, database::local}) {
        const std::vector<std::string> found = look_at(in, which);
        print("the " + std::string{name_of(which)} + ": " +
              (found.empty() ? "as it should be" : "not as it should be") + "\n");
        for (const std::string& each : found)
            print("  " + each + "\n");
        faults += found.size();
    }
    if (faults > 0)
        throw tool_failure{std::to_string(faults) + (faults == 1 ? " thing is" : " things are") +
                           " to be mended"};
}

} // namespace

const command check_command{"check", "Test this configuration: what can be reached, and what is missing.",
                            [](QCommandLineParser&) {}, run};

} // namespace orvo::tool

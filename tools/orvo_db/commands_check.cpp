#include "client/configuration.h"
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

std::vector<std::string> look_at_configuration(const context& in)
{
    std::vector<std::string> found;
    for (const weakness each : weaknesses_of(in.folder))
        switch (each) {
        case weakness::readable_by_others:
            found.push_back("others can read conf/connection.ini, which holds the server's password: chmod 600");
            break;
        case weakness::no_tls:
            found.push_back("conf/connection.ini says nothing of tls, so that a line may go in clear: "
                            "tls=verify or tls=require");
            break;
        }
    return found;
}

/// Returns how many faults it has told.
std::size_t tell(const std::string& of, const std::vector<std::string>& faults)
{
    print("the " + of + ": " + (faults.empty() ? "as it should be" : "not as it should be") + "\n");
    for (const std::string& each : faults)
        print("  " + each + "\n");
    return faults.size();
}

void run(const QCommandLineParser& line, const context& in)
{
    expect_arguments(line, 0);
    std::size_t faults = tell("configuration", look_at_configuration(in));
    for (const database which : {database::server, database::mail, database::local})
        faults += tell(name_of(which), look_at(in, which));
    if (faults > 0)
        throw tool_failure{std::to_string(faults) + (faults == 1 ? " thing is" : " things are") +
                           " to be mended"};
}

} // namespace

const command check_command{"check", "Test this configuration: what can be reached, and what is missing.",
                            [](QCommandLineParser&) {}, run};

} // namespace orvo::tool

#include "client/configuration.h"
#include "client/save_log.h"
#include "orvo_db/command.h"
#include "setup/data_check.h"
#include "setup/table_check.h"
#include "setup/type_check.h"

namespace orvo::tool {

namespace {

void print_lines(const std::vector<std::string>& lines)
{
    for (const std::string& each : lines)
        print("  " + each + "\n");
}

void print_under(const std::string& heading, const std::vector<std::string>& lines)
{
    if (!lines.empty())
        print(heading + ":\n");
    print_lines(lines);
}

struct outcome {
    setup::differences found;
    std::vector<std::string> findings; ///< in what the register holds
};

/// Its own sentence where a database cannot even be opened.
outcome look_at(const context& in, database which)
{
    outcome all;
    try {
        connection on = in.open(which);
        all.found = setup::differing_types(on, which);
        const std::vector<std::string> lacks = setup::faults_of(on, which);
        all.found.faults.insert(all.found.faults.begin(), lacks.begin(), lacks.end());
        if (which == database::server)
            all.findings = setup::findings_in(on);
    } catch (const tool_failure& failure) {
        all.found.faults.emplace_back(failure.what());
    }
    return all;
}

std::vector<std::string> look_at_configuration(const context& in)
{
    std::vector<std::string> found;
    for (const weakness each : weaknesses_of(in.folder))
        switch (each) {
        case weakness::readable_by_others:
            found.push_back(
                "others can read conf/connection.ini, which holds the server's password: chmod 600");
            break;
        case weakness::no_tls:
            found.push_back("conf/connection.ini says nothing of tls, so that a line may go in clear: "
                            "tls=verify or tls=require");
            break;
        }
    return found;
}

/// The saves that this workstation has begun and not brought to their end, a sentence each.
std::vector<std::string> unfinished_saves(const context& in)
{
    std::vector<std::string> all;
    for (const save_note& each : read_save_notes(in.folder.file(QStringLiteral("orvo.saves")))) {
        if (each.is_over)
            continue;
        const QString stored = each.stored_words.isEmpty() ? QStringLiteral("nothing is known to be stored")
                                                           : QStringLiteral("stored: ") +
                                                                 each.stored_words.join(QStringLiteral(", "));
        all.push_back(QStringLiteral("%1, %2: %3, ")
                          .arg(each.begun_at.toString(QStringLiteral("yyyy-MM-dd hh:mm")), each.operator_id,
                               each.act_words)
                          .toStdString() +
                      setup::hidden_number(each.pers_no.toStdString()) + "; " + stored.toStdString());
    }
    return all;
}

/// Returns how many faults it has told.
std::size_t tell(const std::string& of, const std::vector<std::string>& faults)
{
    print("the " + of + ": " + (faults.empty() ? "as it should be" : "not as it should be") + "\n");
    print_lines(faults);
    return faults.size();
}

void run(const QCommandLineParser& line, const context& in)
{
    expect_arguments(line, 0);
    std::size_t faults = tell("configuration", look_at_configuration(in));
    std::vector<std::string> findings;
    for (const database which : {database::server, database::mail, database::local}) {
        const outcome all = look_at(in, which);
        const std::string name = name_of(which);
        faults += tell(name, all.found.faults);
        print_under("the " + name + " has other types than the client's, which works with them",
                    all.found.remarks);
        findings.insert(findings.end(), all.findings.begin(), all.findings.end());
    }
    print_under("what the register holds, none of it a fault of the installation", findings);
    print_under("saves that were begun here and are not finished, which the client offers at its next start",
                unfinished_saves(in));
    if (faults > 0)
        throw tool_failure{std::to_string(faults) + (faults == 1 ? " thing is" : " things are") +
                           " to be mended"};
}

} // namespace

const command check_command{
    "check", "Test this configuration: what can be reached, what is missing, what does not add up.",
    [](QCommandLineParser&) {}, run};

} // namespace orvo::tool

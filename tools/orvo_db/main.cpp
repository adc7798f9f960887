#include "base/for_owner_alone.h"
#include "db/failure.h"
#include "orvo_db/command.h"
#include "setup/operators.h"

#include <QCoreApplication>
#include <QFile>

#include <array>

using namespace orvo;
using namespace orvo::tool;

namespace orvo::tool {

void expect_arguments(const QCommandLineParser& line, qsizetype most)
{
    const QStringList given = line.positionalArguments();
    if (given.size() > most)
        throw usage_error{"what is \"" + given.at(most).toStdString() + "\" to mean?"};
}

int number_of(const QCommandLineParser& line, const QString& option, int low, int high)
{
    bool is_number = false;
    const int number = line.value(option).toInt(&is_number);
    if (!is_number || number < low || number > high)
        throw usage_error{"--" + option.toStdString() + " wants a number from " + std::to_string(low) +
                          " to " + std::to_string(high)};
    return number;
}

} // namespace orvo::tool

namespace {

constexpr std::array commands{&init_command,       &check_command, &operator_command,  &dump_command,
                              &sync_codes_command, &demo_command,  &import_zip_command};

const QString home = QStringLiteral("home");
const QString verbose = QStringLiteral("verbose");

struct global_options {
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")};
    QCommandLineOption version{{QStringLiteral("v"), QStringLiteral("version")},
                               QStringLiteral("Show the version.")};
    QCommandLineOption home_folder{
        home,
        QStringLiteral(
            "The program folder, with the configuration; by default that of ORVO_HOME, or the client's."),
        QStringLiteral("folder")};
    QCommandLineOption talk{verbose, QStringLiteral("Say what goes on.")};

    void add_to(QCommandLineParser& line) const { line.addOptions({help, version, home_folder, talk}); }
};

void parse(QCommandLineParser& line, const QStringList& arguments)
{
    if (!line.parse(arguments))
        throw usage_error{line.errorText().toStdString()};
}

const command& command_named(const QString& name)
{
    for (const command* each : commands)
        if (name == QLatin1String(each->name))
            return *each;
    throw usage_error{"there is no command \"" + name.toStdString() + "\""};
}

std::string general_help(const QCommandLineParser& line)
{
    std::string text = line.helpText().toStdString() + "\nCommands:\n";
    for (const command* each : commands) {
        std::string name = each->name;
        name.resize(12, ' ');
        text += "  " + name + each->summary + "\n";
    }
    return text + "\n'orvo_db <command> --help' tells more of one.\n";
}

void run(const QStringList& arguments)
{
    const global_options options;
    QCommandLineParser first;
    first.setApplicationDescription(QStringLiteral("Keeps the databases of the member register."));
    options.add_to(first);
    first.addPositionalArgument(QStringLiteral("command"), QStringLiteral("What to do; see below."));
    first.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    parse(first, arguments);
    if (first.isSet(options.version))
        return print("orvo_db " ORVO_VERSION "\n");
    if (first.isSet(options.help))
        return print(general_help(first));
    QStringList rest = first.positionalArguments();
    if (rest.isEmpty())
        throw usage_error{"which command?"};

    const command& chosen = command_named(rest.first());
    QCommandLineParser second;
    second.setApplicationDescription(QString::fromLatin1(chosen.summary));
    options.add_to(second);
    chosen.describe(second);
    parse(second, rest);
    if (second.isSet(options.help)) {
        std::string text = second.helpText().toStdString();
        text.insert(text.find(" [options]"), std::string{" "} + chosen.name);
        return print(text.ends_with('\n') ? text : text + "\n");
    }
    for (const QCommandLineParser* each : {&first, &second})
        if (each->isSet(options.home_folder))
            qputenv("ORVO_HOME", QFile::encodeName(each->value(options.home_folder)));
    chosen.run(second, make_context(first.isSet(options.talk) || second.isSet(options.talk)));
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application{argc, argv};
    const for_owner_alone all_it_writes;
    try {
        run(QCoreApplication::arguments());
        finish_output();
        return done;
    } catch (const usage_error& error) {
        note(std::string{error.what()} + "\nTry 'orvo_db --help'.");
        return misused;
    } catch (const std::exception& error) {
        note(error.what());
        return failed;
    }
}

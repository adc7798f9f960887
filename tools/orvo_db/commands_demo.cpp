#include "client/code_mirror.h"
#include "demo/demo.h"
#include "orvo_db/command.h"

namespace orvo::tool {

namespace {

const QString members = QStringLiteral("members");
const QString seed = QStringLiteral("seed");
const QString today = QStringLiteral("today");

constexpr int most_members = 1'000'000;

void describe(QCommandLineParser& line)
{
    line.addOption({members, QStringLiteral("The number of members; 1000 if not told."),
                    QStringLiteral("count"), QStringLiteral("1000")});
    line.addOption({seed, QStringLiteral("Another number makes other members; 1 if not told."),
                    QStringLiteral("number"), QStringLiteral("1")});
    line.addOption({today, QStringLiteral("The day up to which dues are kept; by default today."),
                    QStringLiteral("yyyymmdd")});
}

demo::plan plan_of(const QCommandLineParser& line)
{
    demo::plan what;
    what.members = number_of(line, members, 1, most_members);
    what.seed = static_cast<quint64>(number_of(line, seed, 0, std::numeric_limits<int>::max()));
    what.today = QDate::currentDate();
    if (line.isSet(today)) {
        what.today = QDate::fromString(line.value(today), QStringLiteral("yyyyMMdd"));
        if (!what.today.isValid() || what.today.year() < 2000 || what.today.year() > 2050)
            throw usage_error{"--today wants a day as yyyymmdd, from 2000 to 2050"};
    }
    return what;
}

void print_operators()
{
    print("Log in with one of these:\n");
    for (const demo::demo_operator& each : demo::operators())
        print("  " + std::string{each.id} + " / " + std::string{each.password} + "  (" +
              std::string{each.name} + ")\n");
}

void run(const QCommandLineParser& line, const context& in)
{
    expect_arguments(line, 0);
    const demo::plan what = plan_of(line);
    for (const database each : {database::server, database::mail, database::local})
        make_schema(in, each, in.verbose);
    connection server = in.open(database::server);
    if (const std::string_view table = demo::table_in_the_way(server); !table.empty())
        throw tool_failure{"the register is in use: " + std::string{table} + " holds rows already"};
    progress_line progress{in.verbose};
    const demo::report tell = [&](std::string_view table, qint64 rows, bool all) {
        progress.show(table, rows, all);
    };
    demo::fill(server, what, tell);
    connection local = in.open(database::local);
    demo::fill_postal_codes(server, local, what, tell);
    progress.close();
    sync_codes(server, local);
    print_operators();
}

} // namespace

const command demo_command{"demo", "Fill an empty register with made-up members.", describe, run};

} // namespace orvo::tool

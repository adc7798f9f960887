#include "db/hindrance.h"
#include "orvo_db/command.h"
#include "setup/missing_tables.h"
#include "setup/older_columns.h"

#include <QFile>

namespace orvo::tool {

namespace {

const QString create_databases = QStringLiteral("create-databases");

void describe(QCommandLineParser& line)
{
    line.addOption(
        {create_databases, QStringLiteral("Make the databases themselves too (postgresql only).")});
}

/// In double quotes, as names of the server's own are.
std::string quoted(const QString& name)
{
    return "\"" + QString{name}.replace(QLatin1Char('"'), QStringLiteral("\"\"")).toStdString() + "\"";
}

/// False where it is there already.
bool make_database(connection& server, const QString& name)
{
    const auto is_there = [&] {
        return server.number("select count(*) as cnt from pg_database where datname='{name}'",
                             {{"name", name}}) > 0;
    };
    if (is_there())
        return false;
    try {
        // Names are then ordered as on the embedded engine, on every server.
        server.direct("create database " + quoted(name) +
                      " encoding 'UTF8' lc_collate 'C' lc_ctype 'C' template template0");
        return true;
    } catch (const db_failure&) {
        if (!is_there()) // by somebody else meanwhile
            throw;
        return false;
    }
}

void make_databases(const context& in)
{
    if (in.server.kind != engine::postgresql)
        throw usage_error{"--create-databases is for the engine postgresql"};
    context maintenance = in;
    maintenance.server.name = QStringLiteral("postgres");
    connection server = maintenance.open(database::server);
    for (const QString& name : {in.server.name, in.server.mail_name})
        note(make_database(server, name) ? "made the database " + name.toStdString()
                                         : "the database " + name.toStdString() + " is there already");
}

/// A login that may not change the schema still makes its workstation's file.
void bring_up_columns(connection& on)
{
    for (const setup::older_column& each : setup::older_columns(setup::standing_columns(on)))
        try {
            setup::bring_up(on, each);
            note("the register: gave " + setup::name_of(each) + " its present type");
        } catch (const db_failure& failure) {
            if (hindrance_of(on.kind(), failure) != hindrance::no_right)
                throw;
            note("the register: " + setup::name_of(each) +
                 " has its earlier type still, and this login may not "
                 "change it: " +
                 failure.text().toStdString());
        }
}

void run(const QCommandLineParser& line, const context& in)
{
    expect_arguments(line, 0);
    const QString configuration = in.folder.file(QStringLiteral("conf/connection.ini"));
    const bool is_new = !QFile::exists(configuration);
    fill_from_templates(in.folder);
    if (is_new && QFile::exists(configuration))
        note("made the configuration " + configuration.toStdString());
    if (line.isSet(create_databases))
        make_databases(in);
    for (const database each : {database::server, database::mail, database::local})
        make_schema(in, each, true);
}

} // namespace

void make_schema(const context& in, database which, bool tell)
{
    connection on = in.open(which, file_use::create);
    const setup::tables tables = setup::make_missing_tables(on, which);
    const auto say = [&](std::size_t count, const std::string& before, const std::string& behind) {
        if (tell && count > 0)
            note("the " + std::string{name_of(which)} + ": " + before + std::to_string(count) + behind);
    };
    say(tables.made.size(), "made ", " tables");
    say(tables.found.size(), "", " tables are there already");
    if (which == database::server)
        bring_up_columns(on);
}

const command init_command{"init",
                           "Make what is missing: the configuration, the tables of register and mail queue, "
                           "the workstation's file; bring up "
                           "tables that an earlier orvo_db made.",
                           describe, run};

} // namespace orvo::tool

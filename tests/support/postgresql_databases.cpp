#include "support/postgresql_databases.h"

#include "db/schema/schema.h"
#include "support/engines.h"

#include <QCoreApplication>

namespace orvo {

namespace {

connection line_to(const QString& name)
{
    server_address server = *postgresql_server();
    server.name = name;
    connection line = make_connection(server, database::server);
    line.open();
    return line;
}

/// Says something to the server that belongs to no database of a test.
void order(const QString& text)
{
    line_to(QStringLiteral("postgres")).direct(text.toStdString());
}

void make(const QString& name, database which)
{
    order(QStringLiteral("create database ") + name);
    connection line = line_to(name);
    for (const std::string& statement : make_statements(engine::postgresql, which))
        line.direct(statement);
}

/// Tells tables that a test has changed from those that were made.
qint64 shape_of(const postgresql_databases::pair& both)
{
    qint64 shape = 0;
    for (const QString& name : {both.register_name, both.mail_name})
        shape +=
            line_to(name).number("select count(*) as n from pg_attribute a,pg_class c,pg_namespace n where "
                                 "a.attrelid=c.oid and c.relnamespace=n.oid and n.nspname='public' and "
                                 "not a.attisdropped");
    return shape;
}

/// Ends what a test has left open, and empties the tables that were used. A count of identities that began
/// begins anew.
constexpr const char* empty_text = R"(
    set lock_timeout = '5s';
    select pg_terminate_backend(pid) from pg_stat_activity
     where datname = current_database() and pid <> pg_backend_pid();
    do $$
    declare
        name text;
        is_used boolean;
    begin
        for name in select tablename from pg_tables where schemaname = 'public' loop
            execute format('select exists(select from %I)', name) into is_used;
            if is_used then
                execute format('truncate %I', name);
            end if;
        end loop;
        for name in select sequencename from pg_sequences where last_value is not null loop
            execute format('alter sequence %I restart', name);
        end loop;
    end $$;
)";

} // namespace

postgresql_databases& postgresql_databases::of_this_process()
{
    static postgresql_databases only;
    return only;
}

postgresql_databases::postgresql_databases()
    : prefix_{QStringLiteral("test_%1_").arg(QCoreApplication::applicationPid())}
{
}

postgresql_databases::~postgresql_databases()
{
    for (const pair& each : made_)
        for (const QString& name : {each.register_name, each.mail_name})
            order(QStringLiteral("drop database if exists %1 with (force)").arg(name));
}

postgresql_databases::pair postgresql_databases::take()
{
    if (free_.empty()) {
        const QString name = prefix_ + QString::number(made_.size());
        pair fresh{name + QStringLiteral("_register"), name + QStringLiteral("_mail")};
        made_.push_back(fresh);
        make(fresh.register_name, database::server);
        make(fresh.mail_name, database::mail);
        fresh.shape = shape_of(fresh);
        return fresh;
    }
    const pair one = free_.back();
    free_.pop_back();
    return one;
}

void postgresql_databases::give_back(const pair& used)
{
    if (shape_of(used) != used.shape)
        return;
    for (const QString& name : {used.register_name, used.mail_name})
        line_to(name).direct(empty_text);
    free_.push_back(used);
}

} // namespace orvo

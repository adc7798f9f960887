#include "support/test_register.h"

#include "db/schema/schema.h"
#include "support/engines.h"

namespace orvo {

namespace {

constexpr std::array databases{database::server, database::mail, database::local};

/// The files of the embedded engine, those of every client's own database among them: made once a process,
/// since copying them is quicker.
class prepared_files {
public:
    static const server_address& address()
    {
        static const prepared_files made;
        return made.address_;
    }

private:
    prepared_files()
    {
        address_.folder = home_.path();
        for (const database each : databases) {
            connection fresh = make_connection(address_, each, file_use::create);
            fresh.open();
            for (const std::string& statement : make_statements(engine::embedded, each))
                fresh.direct(statement);
        }
    }

    QTemporaryDir home_;
    server_address address_;
};

} // namespace

test_register::test_register(engine kind)
{
    if (kind == engine::postgresql) {
        databases_ = postgresql_databases::of_this_process().take();
        address_ = *postgresql_server();
        address_.name = databases_->register_name;
        address_.mail_name = databases_->mail_name;
    }
    address_.folder = home_.path();
    server_address files = address_; // where the files of the server's two databases are, if they are files
    if (kind == engine::sqlserver)
        files.folder = server_home_.emplace().path();
    for (const database each : databases)
        if (kind != engine::postgresql || each == database::local)
            QFile::copy(file_of(prepared_files::address(), each),
                        file_of(each == database::local ? address_ : files, each));
    if (kind == engine::sqlserver) {
        server_ = std::make_unique<tds_server>(files);
        address_ = server_->address();
        address_.folder = home_.path();
    }
}

test_register::~test_register()
{
    if (databases_)
        postgresql_databases::of_this_process().give_back(*databases_);
}

connection test_register::connect(database which, line_watch* watch) const
{
    connection line = make_connection(address_, which);
    line.set_watch(watch);
    line.open();
    return line;
}

QDateTime test_clock()
{
    return {QDate{2026, 11, 22}, QTime{10, 0}};
}

running_client::running_client(engine kind)
    : its_register{kind}, c{its_register.folder(), its_register.address(), say, &test_clock}
{
    c.local_conn.open();
    c.db_conn.open();
    c.mail_conn.open();
    c.session_branch = QStringLiteral("0");
}

} // namespace orvo

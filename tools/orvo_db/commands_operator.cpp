#include "orvo_db/command.h"
#include "setup/operators.h"

#include <QFile>

namespace orvo::tool {

namespace {

QString read_password()
{
    QFile in;
    if (!in.open(stdin, QIODevice::ReadOnly))
        throw tool_failure{"standard input cannot be read"};
    QByteArray line = in.readLine();
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    return QString::fromUtf8(line);
}

void describe(QCommandLineParser& line)
{
    const auto text = [&line](const char* name, const char* what, const char* value) {
        line.addOption({QString::fromLatin1(name), QString::fromLatin1(what), QString::fromLatin1(value)});
    };
    const auto flag = [&line](const char* name, const char* what) {
        line.addOption({QString::fromLatin1(name), QString::fromLatin1(what)});
    };
    line.addPositionalArgument(QStringLiteral("action"), QStringLiteral("add, list or remove."),
                               QStringLiteral("add|list|remove"));
    line.addPositionalArgument(QStringLiteral("id"), QStringLiteral("The operator's login."),
                               QStringLiteral("[id]"));
    text("password", "The password in clear; - reads it from standard input.", "password");
    text("name", "The name that is shown.", "name");
    text("email", "The mail address.", "address");
    text("send-id", "The sender id at the message gateway.", "id");
    text("branch", "The branch's code; 0 is the head office.", "code");
    flag("admin", "May administer.");
    flag("education", "May manage education.");
    flag("right3", "Has the third right, which no function asks for.");
}

void add(const QCommandLineParser& line, const context& in, const QString& id)
{
    for (const char* needed : {"password", "name", "branch"})
        if (!line.isSet(QString::fromLatin1(needed)))
            throw usage_error{std::string{"an operator needs --"} + needed};
    setup::operator_account account;
    account.id = id;
    account.branch = number_of(line, QStringLiteral("branch"), 0, 32767);
    account.password = line.value(QStringLiteral("password"));
    if (account.password == QLatin1String("-"))
        account.password = read_password();
    account.name = line.value(QStringLiteral("name"));
    account.email = line.value(QStringLiteral("email"));
    account.send_id = line.value(QStringLiteral("send-id"));
    account.administration = line.isSet(QStringLiteral("admin"));
    account.education = line.isSet(QStringLiteral("education"));
    account.third_right = line.isSet(QStringLiteral("right3"));
    connection server = in.open(database::server);
    setup::add_operator(server, account);
}

void list(const context& in)
{
    connection server = in.open(database::server);
    print("id\tname\tbranch\tadmin\teducation\tright3\temail\tsend_id\n");
    for (const auto& each :
         server.read("select admin_id,log_name,code_bran,author1,author2,author3,log_email,send_id "
                     "from admin_tbl order by admin_id")) {
        std::string text;
        for (const char* column :
             {"admin_id", "log_name", "code_bran", "author1", "author2", "author3", "log_email", "send_id"})
            text += (text.empty() ? "" : "\t") + each.text(column).toStdString();
        print(text + "\n");
    }
}

void run(const QCommandLineParser& line, const context& in)
{
    const QStringList given = line.positionalArguments();
    const QString action = given.value(0);
    if (action == QLatin1String("list")) {
        expect_arguments(line, 1);
        return list(in);
    }
    expect_arguments(line, 2);
    if (given.size() < 2)
        throw usage_error{"operator wants: add <id>, list, or remove <id>"};
    if (action == QLatin1String("add"))
        return add(line, in, given.at(1));
    if (action != QLatin1String("remove"))
        throw usage_error{"operator knows no action \"" + action.toStdString() + "\""};
    connection server = in.open(database::server);
    setup::remove_operator(server, given.at(1));
}

} // namespace

const command operator_command{"operator", "Add, list or remove the operators of the client.", describe, run};

} // namespace orvo::tool

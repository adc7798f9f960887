#include "setup/operators.h"

namespace orvo::setup {

namespace {

bool is_known(connection& server, const QString& id)
{
    return server.number("select count(*) as cnt from admin_tbl where admin_id='{id}'", {{"id", id}}) > 0;
}

bool is_branch(connection& server, int code)
{
    return code == 0 || server.number("select count(*) as cnt from branch_code where code_bran='{code}'",
                                      {{"code", code}}) > 0;
}

} // namespace

void add_operator(connection& server, const operator_account& account)
{
    if (account.id.trimmed().isEmpty())
        throw refusal{"an operator needs an id"};
    if (account.password.isEmpty())
        throw refusal{"an operator needs a password"};
    if (!is_branch(server, account.branch))
        throw refusal{"no branch has the code " + std::to_string(account.branch)};
    if (is_known(server, account.id))
        throw refusal{"an operator \"" + account.id.toStdString() + "\" exists already"};
    server.write(
        "insert into admin_tbl(admin_id,admin_pass,log_name,log_email,send_id,code_bran,author1,author2,"
        "author3) values ('{id}','{password}','{name}','{email}','{send_id}',{branch},{author1},{author2},"
        "{author3})",
        {{"id", account.id},
         {"password", account.password},
         {"name", account.name},
         {"email", account.email},
         {"send_id", account.send_id},
         {"branch", account.branch},
         {"author1", account.administration ? 1 : 0},
         {"author2", account.education ? 1 : 0},
         {"author3", account.third_right ? 1 : 0}});
}

void remove_operator(connection& server, const QString& id)
{
    if (server.write("delete from admin_tbl where admin_id='{id}'", {{"id", id}}) == 0)
        throw refusal{"there is no operator \"" + id.toStdString() + "\""};
}

} // namespace orvo::setup

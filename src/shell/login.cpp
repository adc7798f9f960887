#include "shell/login.h"

namespace orvo {

bool log_in(client& c, const QString& id, const QString& password)
{
    const rows found =
        c.db_conn.read("select * from admin_tbl where admin_id='{id_txt}'  and admin_pass='{passwd_txt}' ",
                       {{"id_txt", id}, {"passwd_txt", password}});
    if (found.empty())
        return false;
    const auto one = found.front();
    c.session_id = id.trimmed();
    c.session_password = password.trimmed();
    c.session_name = one.text("log_name");
    c.session_email = one.text("log_email");
    c.session_send_id = one.text("send_id");
    c.session_branch = one.text("code_bran");
    c.session_right1 = static_cast<qint16>(one.number("author1"));
    c.session_right2 = static_cast<qint16>(one.number("author2"));
    c.session_right3 = static_cast<qint16>(one.number("author3"));
    c.session_ok = true;
    return true;
}

QString session_branch_name(client& c)
{
    if (!number_of_branch(c.session_branch))
        return QStringLiteral("지부 코드 오류: \"%1\"").arg(c.session_branch);
    const rows branch = c.local_conn.read("select branch_name from branch_code where code_bran='{code}'",
                                          {{"code", c.session_branch}});
    return branch.empty() ? QString{} : branch.front().text("branch_name");
}

} // namespace orvo

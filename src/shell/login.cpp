#include "shell/login.h"

#include "client/login_log.h"
#include "shell/login_attempts.h"

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

namespace {

bool is_operator(connection& db, const QString& id)
{
    return !db.read("select admin_id from admin_tbl where admin_id='{id_txt}'", {{"id_txt", id}}).empty();
}

} // namespace

login_answer try_to_log_in(client& c, login_attempts& attempts, const QString& id, const QString& password)
{
    using namespace std::chrono_literals;
    if (attempts.wait_left(id) > 0ms)
        return login_answer::too_early;
    if (log_in(c, id, password)) {
        write_login_log(c.folder, c.now(), login_event::success, id);
        return login_answer::welcome;
    }
    attempts.count_wrong(id);
    const QString known = is_operator(c.db_conn, id) ? id : QString{};
    write_login_log(c.folder, c.now(), login_event::refused, known);
    if (attempts.wait_left(id) > 0ms)
        write_login_log(c.folder, c.now(), login_event::slowed, known);
    return login_answer::refused;
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

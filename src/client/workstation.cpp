#include "client/workstation.h"

#include "client/client.h"

namespace orvo {

void take_over_workstation(client& c)
{
    if (!c.folder.is_writable)
        return;
    const values operator_now{{"admin_id", c.session_id}, {"session_branch", c.session_branch}};
    const rows same = c.local_conn.read("select admin_id from last_login where admin_id='{admin_id}' and "
                                        "session_branch='{session_branch}'",
                                        operator_now);
    if (!same.empty())
        return;
    transaction all_or_nothing{c.local_conn};
    for (const char* each : {"delete from person_m_tbl", "delete from print_tbl", "delete from print_made",
                             "delete from last_login"})
        c.local_conn.write(each);
    c.local_conn.write(
        "insert into last_login(admin_id,session_branch) values ('{admin_id}','{session_branch}')",
        operator_now);
    all_or_nothing.commit();
}

} // namespace orvo

#include "dues/search/dues_query.h"

#include "client/branches.h"

namespace orvo {

member_query dues_query(const QString& from, const QString& to, const QString& incom_flag,
                        const QString& session_branch)
{
    member_query query{
        "select a.* from person_m_tbl a,dues_h_tbl b where b.regi_date between '{from}' and '{to}'"
        " and b.incom_flag='{flag}' and a.pers_no=b.pers_no",
        {{"from", from}, {"to", to}, {"flag", incom_flag}}};
    // Unlike the search by a keyword: members without a branch pay their dues to head office.
    narrow_to_branch(query.text, query.given, session_branch, " and a.code_bran='{session_branch}'");
    return query;
}

} // namespace orvo

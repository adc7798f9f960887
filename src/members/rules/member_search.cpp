#include "members/rules/member_search.h"

#include "client/branches.h"

namespace orvo {

namespace {

std::string_view query_of(search_item item)
{
    switch (item) {
    case search_item::name:
        return "select * from person_m_tbl where  pers_name like '%{key}%'";
    case search_item::resident_number:
        return "select * from person_m_tbl where pers_no like '%{key}%'";
    case search_item::licence:
        return "select * from person_m_tbl where  lic_no like '%{key}%'";
    case search_item::workplace:
        return "select distinct a.*,b.*,a.code_post as com_post from company a inner join person_m_tbl b on "
               "a.pers_no=b.pers_no where a.company_name like '%{key}%'";
    case search_item::email:
        break;
    }
    return "select * from person_m_tbl where  email like '%{key}%'";
}

} // namespace

member_query search_query(search_item item, const QString& key, const QString& session_branch)
{
    member_query query{std::string{query_of(item)}, {{"key", key}}};
    narrow_to_branch(query.text, query.given, session_branch,
                     " and (code_bran='{session_branch}' or code_bran='0')");
    return query;
}

} // namespace orvo

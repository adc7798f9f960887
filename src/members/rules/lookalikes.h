#pragma once

#include "db/connection.h"

#include <vector>

namespace orvo {

/// What is told of a member of the register who may be the one that is being registered. The number behind
/// the birth date is nobody's to see here.
struct lookalike {
    QString branch; ///< name of the branch
    bool same_number = false;
    /// Whether the operator may see him. Where not, the rest is empty, and others of that branch are not told
    /// apart from him: it is for the branch to say who they are.
    bool is_seen = true;
    QString pers_name;
    QString birth; ///< "yymmdd"
    QString regi_date;
};

/// Members of that whole resident number, and those of that name who were born on that day ("yymmdd"). Parts
/// that are not typed yet are empty; no more than twenty.
std::vector<lookalike> find_lookalikes(connection& db, connection& local, const QString& session_branch,
                                       const QString& pers_name, const QString& pers_no1,
                                       const QString& pers_no2);

} // namespace orvo

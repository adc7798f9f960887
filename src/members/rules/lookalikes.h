#pragma once

#include "db/connection.h"

#include <vector>

namespace orvo {

/// A member of the register who may be the one that is being registered.
struct lookalike {
    QString pers_no;
    QString pers_name;
    QString branch; ///< name of the branch
    QString regi_date;
    bool same_number = false;
};

/// Members of that whole resident number, and those of that name who were born on that day ("yymmdd"). Parts
/// that are not typed yet are empty; no more than twenty.
std::vector<lookalike> find_lookalikes(connection& db, connection& local, const QString& pers_name,
                                       const QString& pers_no1, const QString& pers_no2);

} // namespace orvo

#include "reference/rules/divisions.h"

namespace orvo {

rows read_great_divisions(connection& local, const QString& code_part)
{
    return local.read("select * from great_division where code_part={code_part}", {{"code_part", code_part}});
}

rows read_small_divisions(connection& local, const QString& code_part, const QString& code_great)
{
    return local.read("select * from small_division where code_part={code_part} and code_great={code_great}",
                      {{"code_part", code_part}, {"code_great", code_great}});
}

} // namespace orvo

#include "db/save_steps.h"

namespace orvo {

void save_steps::write_on(connection& on, const QString& what, std::string_view text, const values& given)
{
    if (stored_.contains(what))
        return;
    try {
        on.write(text, given);
    } catch (const db_failure& failure) {
        in_doubt_ = failure.kind() == failure_kind::outcome_unknown;
        throw failure.behind(stored_, what);
    }
    stored_.append(what);
}

} // namespace orvo

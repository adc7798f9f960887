#include "db/save_steps.h"

namespace orvo {

template <typename act>
auto save_steps::towards(const QString& what, act sent)
{
    try {
        return sent();
    } catch (const db_failure& failure) {
        in_doubt_ = in_doubt_ || failure.kind() == failure_kind::outcome_unknown;
        throw failure.behind(stored_, what);
    }
}

void save_steps::write(const QString& what, connection& on, std::string_view text, const values& given)
{
    if (stored_.contains(what))
        return;
    towards(what, [&] { on.write(text, given); });
    stored_.append(what);
}

std::vector<rows> save_steps::read_together(const QString& for_what,
                                            std::initializer_list<connection::query> queries)
{
    return towards(for_what, [&] { return on_.read_together(queries); });
}

} // namespace orvo

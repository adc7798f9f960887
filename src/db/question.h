#pragma once

#include "db/connection.h"

#include <tuple>

namespace orvo {

/// A read of the register and how its rows are understood. Rules hand questions out unasked, so that whoever
/// has several that do not depend on each other can ask them together, at the price of one wait.
template <typename answer>
struct question {
    connection::query asked; ///< its text outlives the question
    std::function<answer(const rows&)> understand;
};

/// The answers to what was read together, in the order of the questions.
template <typename... answers>
std::tuple<answers...> answers_of(const std::vector<rows>& found, const question<answers>&... each)
{
    return [&]<std::size_t... place>(std::index_sequence<place...>)
    {
        return std::tuple<answers...>{each.understand(found[place])...};
    }
    (std::index_sequence_for<answers...>{});
}

template <typename answer>
answer ask(connection& db, const question<answer>& one)
{
    return one.understand(db.read(one.asked.text, one.asked.given));
}

/// Throws db_failure; then none of them is answered.
template <typename... answers>
std::tuple<answers...> ask_together(connection& db, const question<answers>&... each)
{
    return answers_of(db.read_together({each.asked...}), each...);
}

} // namespace orvo

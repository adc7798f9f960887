#pragma once

#include "db/question.h"

#include <QStringList>

namespace orvo {

/// The writes of one save, each under the word by which the operator knows it. A save is no transaction: what
/// was stored stays, so a failure tells what that was, and the same save can go on behind it.
class save_steps {
public:
    explicit save_steps(connection& on) : on_{on} {}

    /// Skipped where an earlier try of this save has stored it. Throws db_failure with what is stored and
    /// what is missing.
    void write(const QString& what, std::string_view text, const values& given)
    {
        write(what, on_, text, given);
    }
    /// The same for a step on another database than the save's own.
    void write(const QString& what, connection& on, std::string_view text, const values& given);
    /// What a step is made from, asked between the writes: it fails as that step does.
    template <typename... answers>
    std::tuple<answers...> ask_together(const QString& for_what, const question<answers>&... each)
    {
        return answers_of(read_together(for_what, {each.asked...}), each...);
    }
    template <typename answer>
    answer ask(const QString& for_what, const question<answer>& one)
    {
        return std::get<0>(ask_together(for_what, one));
    }

    const QStringList& stored() const { return stored_; }
    /// Whether a step was ever sent and not answered: to go on behind it could store it twice.
    bool is_in_doubt() const { return in_doubt_; }

private:
    connection& on_;
    QStringList stored_;
    bool in_doubt_ = false;

    std::vector<rows> read_together(const QString& for_what,
                                    std::initializer_list<connection::query> queries);

    template <typename act>
    auto towards(const QString& what, act sent);
};

} // namespace orvo

#pragma once

#include "db/connection.h"

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
        write_on(on_, what, text, given);
    }
    /// The same for a statement of this save that goes to another database.
    void write_on(connection& on, const QString& what, std::string_view text, const values& given);

    const QStringList& stored() const { return stored_; }
    /// Whether a step was sent and not answered: to go on behind it could store it twice.
    bool is_in_doubt() const { return in_doubt_; }

private:
    connection& on_;
    QStringList stored_;
    bool in_doubt_ = false;
};

} // namespace orvo

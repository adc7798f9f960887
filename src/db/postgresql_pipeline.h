#pragma once

#include "db/postgresql_line.h"

#include <span>
#include <unordered_map>

namespace orvo {

/// The statements that a line knows by name.
class prepared_names {
public:
    /// Null for one that is not prepared.
    const char* find(const ready_statement& text) const
    {
        const auto found = names_.find(&text);
        return found == names_.end() ? nullptr : found->second.c_str();
    }
    const char* add(const ready_statement& text)
    {
        return (names_[&text] = "s" + std::to_string(next_++)).c_str();
    }
    void forget(const ready_statement* text) { names_.erase(text); }

private:
    std::unordered_map<const ready_statement*, std::string> names_;
    int next_ = 0;
};

/// Sends the statements in one go, each prepared first where it is not, and takes all answers: one wait for
/// the server. Returns the rows that the last one wrote. None of them is carried out behind one that fails.
qint64 run_in_one_wait(postgresql_line& line, prepared_names& names, std::span<const statement_run> all,
                       const driver::tick& waiting);

} // namespace orvo

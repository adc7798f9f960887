#pragma once

#include "db/save_steps.h"
#include "members/rules/member_data.h"

namespace orvo {

/// Workplaces of all members whose name holds the key, wildcards included: one to copy a new row from.
rows find_workplaces(connection& db, const QString& key);
/// Nothing where the row is gone.
std::optional<rows> read_workplace(connection& db, const QString& company_id);
std::optional<rows> read_workplace_of(connection& db, const QString& pers_no, const QString& company_id);

/// Adds a workplace. A primary one takes that mark from the others first.
void add_workplace(save_steps& save, const QString& pers_no, const workplace_data& workplace,
                   const QString& today);
/// Writes the columns of `workplace_columns` to a row. A primary one takes the mark from the others behind
/// it.
void change_workplace(save_steps& save, const QString& pers_no, const QString& company_id,
                      const std::vector<column_value>& columns);
/// Whether the row itself is stored already, not just the mark of the others.
bool is_workplace_stored(const save_steps& save);
/// No other workplace becomes the primary one in its place: an operator decides which.
void delete_workplace(save_steps& save, const QString& pers_no, const QString& company_id);

} // namespace orvo

#pragma once

#include "client/save.h"
#include "members/rules/member_data.h"

namespace orvo {

/// Workplaces of all members whose name holds the key, wildcards included: one to copy a new row from.
rows find_workplaces(connection& db, const QString& key);
/// Nothing where the row is gone.
std::optional<rows> read_workplace(connection& db, const QString& company_id);
std::optional<rows> read_workplace_of(connection& db, const QString& pers_no, const QString& company_id);

/// The numbers of the member's workplaces, as a new one needs them.
question<QString> workplace_ids_of(const QString& pers_no);

/// Adds a workplace. A primary one takes that mark from the others first. `known_ids`: of the workplaces that
/// the member has had before.
planned_save add_workplace(const QString& pers_no, const workplace_data& workplace, const QString& today,
                           const QString& known_ids);
/// Writes the columns of `workplace_columns` to a row. A primary one takes the mark from the others behind
/// it. `before`: what the row held when it was read.
planned_save change_workplace(const QString& pers_no, const QString& company_id,
                              const std::vector<column_value>& columns, const values& before);
/// Whether the row itself is stored already, not just the mark of the others.
bool is_workplace_stored(const save& of);
/// No other workplace becomes the primary one in its place: an operator decides which.
planned_save delete_workplace(const QString& pers_no, const QString& company_id);

extern const save_act workplace_added, workplace_changed, workplace_deleted;

} // namespace orvo

#pragma once

#include "members/rules/member_copy.h"

#include <QStringList>

namespace orvo {

/// What members are searched by, in the order of the list that offers it.
enum class search_item { name, resident_number, licence, workplace, email };

/// The query for a keyword, matched anywhere in the field as it was typed, wildcards included. A branch
/// operator finds the members of the own branch and those without one.
member_query search_query(search_item item, const QString& key, const QString& session_branch);

} // namespace orvo

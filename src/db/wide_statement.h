#pragma once

#include "db/values.h"

#include <span>

namespace orvo {

/// A column of a wide statement and what it takes. A bare value is a whole number outside quotes.
struct column_value {
    std::string_view column;
    QString value;
    bool is_bare = false;
};

/// "insert into person_m_tbl(pers_no,...) values ('{pers_no}',...)": the columns in their order, each slot
/// named as its column, behind a prefix where one statement's slots are to be told from another's.
std::string insert_text(std::string_view table, std::span<const column_value> columns,
                        std::string_view prefix = {});

/// "update person_m_tbl set pers_no='{pers_no}',...": without its condition.
std::string update_text(std::string_view table, std::span<const column_value> columns);

/// What the slots of such a text take.
values slot_values(std::span<const column_value> columns, std::string_view prefix = {});

} // namespace orvo

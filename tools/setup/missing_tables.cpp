#include "setup/missing_tables.h"

#include "db/schema/ddl.h"

#include <algorithm>

namespace orvo::setup {

std::vector<QString> standing_tables(connection& on)
{
    std::vector<QString> standing;
    for (const auto& each : on.read(table_names_text(on.kind())))
        standing.push_back(each.text("name").toLower());
    return standing;
}

namespace {

bool stands(const std::vector<QString>& standing, const table& one)
{
    return std::ranges::find(standing,
                             QLatin1String(one.name.data(), static_cast<qsizetype>(one.name.size()))) !=
           standing.end();
}

/// False where somebody else has made the table meanwhile.
bool make(connection& on, database where, const table& one)
{
    try {
        transaction with_its_indexes{on};
        for (const std::string& text : make_statements(on.kind(), where, one))
            on.direct(text);
        with_its_indexes.commit();
        return true;
    } catch (const db_failure&) {
        if (!stands(standing_tables(on), one))
            throw;
        return false;
    }
}

} // namespace

tables make_missing_tables(connection& on, database where)
{
    const std::vector<QString> standing = standing_tables(on);
    tables all;
    for (const table& one : tables_of(where))
        (!stands(standing, one) && make(on, where, one) ? all.made : all.found).push_back(one.name);
    return all;
}

} // namespace orvo::setup

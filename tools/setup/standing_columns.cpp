#include "setup/standing_columns.h"

#include "db/schema/ddl.h"

#include <algorithm>
#include <map>

namespace orvo::setup {

namespace {

holds what_holds(const std::string& type, bool has_decimals)
{
    static const std::map<std::string_view, holds> known{
        {"int", holds::whole},
        {"integer", holds::whole},
        {"bigint", holds::whole},
        {"smallint", holds::whole},
        {"tinyint", holds::whole},
        {"numeric", holds::decimals},
        {"decimal", holds::decimals},
        {"money", holds::decimals},
        {"smallmoney", holds::decimals},
        {"float", holds::decimals},
        {"real", holds::decimals},
        {"double", holds::decimals},
        {"double precision", holds::decimals},
        {"text", holds::texts},
        {"ntext", holds::texts},
        {"varchar", holds::texts},
        {"nvarchar", holds::texts},
        {"character varying", holds::texts},
        {"char", holds::padded_texts},
        {"nchar", holds::padded_texts},
        {"character", holds::padded_texts},
        {"bit", holds::truth},
        {"boolean", holds::truth},
    };
    if (type.starts_with("date") || type.starts_with("time") || type == "smalldatetime")
        return holds::days;
    const auto found = known.find(type);
    if (found == known.end())
        return holds::something;
    return found->second == holds::decimals && !has_decimals ? holds::whole : found->second;
}

} // namespace

std::vector<standing_column> standing_columns(connection& on)
{
    std::vector<standing_column> all;
    for (const auto& each : on.read(columns_text(on.kind()))) {
        const QString type = each.text("data_type").toLower().section(u'(', 0, 0); // without its width
        const bool has_no_decimals = !each.is_null("scale") && each.number("scale") == 0;
        standing_column one;
        one.table = each.text("table_name").toLower().toStdString();
        one.name = each.text("column_name").toLower().toStdString();
        one.type = type.toStdString();
        one.what = what_holds(one.type, !has_no_decimals);
        one.width = std::max(0, static_cast<int>(each.number("width")));
        all.push_back(std::move(one));
    }
    return all;
}

const standing_column* find_column(const std::vector<standing_column>& standing, std::string_view table,
                                   std::string_view name)
{
    const auto found = std::ranges::find_if(
        standing, [&](const standing_column& each) { return each.table == table && each.name == name; });
    return found == standing.end() ? nullptr : &*found;
}

} // namespace orvo::setup

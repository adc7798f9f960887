#include "db/schema/schema.h"

#include "db/schema/tables.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace orvo {

namespace {

constexpr std::array all_databases{database::server, database::mail, database::local};

constexpr char lower(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool same(std::string_view one, std::string_view other)
{
    return std::ranges::equal(one, other, {}, lower, lower);
}

/// Names of the schema are lower case, so the hash finds one that is written in capitals too.
struct hash_without_case {
    std::size_t operator()(std::string_view name) const
    {
        std::size_t hash = 14695981039346656037u;
        for (const char letter : name)
            hash = (hash ^ static_cast<unsigned char>(lower(letter))) * 1099511628211u;
        return hash;
    }
};

struct equal_without_case {
    bool operator()(std::string_view one, std::string_view other) const { return same(one, other); }
};

/// Of two columns of a name the wider; null where they are not of one type.
const column* common(const column* one, const column* other)
{
    if (!one || kind_of(one->type) != kind_of(other->type))
        return nullptr;
    const bool is_wider = one->width > 0 && (other->width == 0 || other->width > one->width);
    return is_wider ? other : one;
}

} // namespace

const column* table::find(std::string_view column_name) const
{
    const auto found =
        std::ranges::find_if(columns, [&](const column& each) { return same(each.name, column_name); });
    return found == columns.end() ? nullptr : &*found;
}

const std::vector<table>& tables_of(database where)
{
    static const std::vector<table> server = server_tables();
    static const std::vector<table> mail = mail_tables();
    static const std::vector<table> local = local_tables();
    return where == database::server ? server : where == database::mail ? mail : local;
}

const table* find_table(database where, std::string_view name)
{
    const auto& tables = tables_of(where);
    const auto found = std::ranges::find_if(tables, [&](const table& each) { return same(each.name, name); });
    return found == tables.end() ? nullptr : &*found;
}

const std::vector<std::string_view>& mirrored_tables()
{
    static const std::vector<std::string_view> names = [] {
        std::vector<std::string_view> all;
        for (const table& one : code_tables())
            all.push_back(one.name);
        return all;
    }();
    return names;
}

const table* find_table(std::string_view name)
{
    for (const database each : all_databases)
        if (const table* found = find_table(each, name))
            return found;
    return nullptr;
}

const column_use* use_of(std::string_view name)
{
    using uses = std::unordered_map<std::string_view, column_use, hash_without_case, equal_without_case>;
    static const uses known = [] {
        uses all;
        for (const database each : all_databases)
            for (const table& one : tables_of(each))
                for (const column& field : one.columns) {
                    const auto [use, is_new] = all.emplace(field.name, column_use{&field, false});
                    column_use& its = use->second;
                    if (!is_new)
                        its.common = common(its.common, &field);
                    its.is_on_server = its.is_on_server || each != database::local;
                }
        return all;
    }();
    const auto found = known.find(name);
    return found == known.end() ? nullptr : &found->second;
}

bool is_number(std::string_view column_name)
{
    const column_use* use = use_of(column_name);
    return use && use->common && kind_of(use->common->type) == value_kind::whole;
}

int width_of(std::string_view table_name, std::string_view column_name)
{
    for (const database each : all_databases)
        if (const table* one = find_table(each, table_name))
            if (const column* field = one->find(column_name))
                return field->width;
    return 0;
}

} // namespace orvo

#include "support/other_types.h"

#include "db/schema/schema.h"

namespace orvo {

namespace {

bool is_padded(const column& field)
{
    return field.type == column_type::text && field.width > 0;
}

/// Of SQL Server's types the test's server knows these by name, whose texts the files must pad themselves.
std::string in_a_file(const column& field, engine kind)
{
    const bool is_server = kind == engine::sqlserver;
    switch (field.type) {
    case column_type::text:
        return field.width > 0 ? "nchar(" + std::to_string(field.width) + ")" : "text";
    case column_type::number:
        return is_server ? "decimal(12,2)" : "real";
    case column_type::money:
        return is_server ? "money" : "real";
    case column_type::fraction:
        return "real";
    case column_type::identity:
        break;
    }
    return "integer primary key autoincrement";
}

void make_anew(connection& file, const table& of, engine kind)
{
    const std::string name{of.name};
    std::string definition;
    std::string fields;
    std::string names;
    for (const column& each : of.columns) {
        const std::string comma = names.empty() ? "" : ",";
        const std::string its_name{each.name};
        const std::string width = std::to_string(each.width);
        names += comma + its_name;
        definition += comma + its_name + " " + in_a_file(each, kind);
        if (each.type != column_type::identity)
            definition += is_padded(each) ? " default ''" : " default 0";
        fields += comma + (is_padded(each)
                               ? "substr(" + its_name + "||printf('%" + width + "s',''),1," + width + ")"
                               : its_name);
    }
    file.direct("create table other(" + definition + ")");
    file.direct("insert into other(" + names + ") select " + fields + " from " + name);
    file.direct("drop table " + name);
    file.direct("alter table other rename to " + name);
}

void retype(connection& server, const table& of)
{
    const std::string name{of.name};
    server.direct("alter table " + name + " drop constraint if exists " + name + "_pkey");
    for (const column& each : of.columns) {
        const std::string type = is_padded(each) ? "character(" + std::to_string(each.width) + ")"
                                 : each.type == column_type::number ? "numeric(12,2)"
                                 : each.type == column_type::money  ? "double precision"
                                                                    : std::string{};
        if (!type.empty())
            server.direct("alter table " + name + " alter column " + std::string{each.name} + " type " +
                          type + ",alter column " + std::string{each.name} + " drop not null");
    }
}

} // namespace

connection beneath(const test_register& its)
{
    if (its.address().kind != engine::sqlserver)
        return its.connect();
    server_address files = its.sql_server().address();
    files.kind = engine::embedded;
    connection file = make_connection(files, database::server);
    file.open();
    return file;
}

void give_other_types(const test_register& its, std::string_view table)
{
    const orvo::table& of = *find_table(database::server, table);
    connection on = beneath(its);
    if (its.address().kind == engine::postgresql)
        retype(on, of);
    else
        make_anew(on, of, its.address().kind);
}

} // namespace orvo

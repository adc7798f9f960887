#pragma once

#include "db/schema/schema.h"

namespace orvo {

namespace columns {

constexpr column text(std::string_view name, int width)
{
    return {name, column_type::text, width};
}
constexpr column number(std::string_view name)
{
    return {name, column_type::number, 0};
}
constexpr column money(std::string_view name)
{
    return {name, column_type::money, 0};
}
constexpr column fraction(std::string_view name)
{
    return {name, column_type::fraction, 0};
}
constexpr column identity(std::string_view name)
{
    return {name, column_type::identity, 0};
}
constexpr column day(std::string_view name)
{
    return {name, column_type::text, 8};
}
/// Some databases keep their flags in padded columns, so one character is not enough.
constexpr column flag(std::string_view name)
{
    return {name, column_type::text, 4};
}

inline constexpr int unbounded = 0;

} // namespace columns

std::vector<table> server_tables();
std::vector<table> mail_tables();
std::vector<table> local_tables();
/// The tables of codes and names, and the member kinds with their fees.
std::vector<table> code_tables();
/// The columns of a member, in the order in which a member is inserted.
std::vector<column> member_columns();

} // namespace orvo

#include "demo/loader.h"

#include "db/schema/schema.h"

#include <stdexcept>

namespace orvo::demo {

row& row::operator<<(std::string_view text)
{
    if (used_ == fields_.size())
        fields_.emplace_back();
    field& next = fields_[used_++];
    next.is_text = true;
    next.text = text;
    return *this;
}

row& row::operator<<(qint64 number)
{
    if (used_ == fields_.size())
        fields_.emplace_back();
    field& next = fields_[used_++];
    next.is_text = false;
    next.number = number;
    return *this;
}

void row::clear()
{
    used_ = 0;
}

void row::hand_to(std::vector<cell>& fields) const
{
    for (std::size_t i = 0; i < used_; ++i) {
        const field& each = fields_[i];
        fields.push_back(each.is_text ? cell::of(each.text) : cell::of(std::int64_t{each.number}));
    }
}

void loader::fill(std::string_view table, const std::function<bool(row&)>& next)
{
    constexpr qint64 rows_between_reports = 5000;
    std::vector<std::string_view> columns;
    for (const column& each : find_table(where_, table)->columns)
        if (each.type != column_type::identity)
            columns.push_back(each.name);

    row one;
    qint64 done = 0;
    to_.load(table, columns, [&](std::vector<cell>& fields) {
        one.clear();
        if (!next(one))
            return false;
        one.hand_to(fields);
        if (fields.size() != columns.size())
            throw std::logic_error{"a demo row of " + std::string{table} +
                                   " lacks a column or has one too many"};
        if (++done % rows_between_reports == 0 && tell_)
            tell_(table, done, false);
        return true;
    });
    if (tell_)
        tell_(table, done, true);
}

} // namespace orvo::demo

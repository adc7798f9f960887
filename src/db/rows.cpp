#include "db/rows.h"

#include "base/decimal.h"
#include "db/schema/schema.h"

#include <QByteArrayView>

#include <stdexcept>

namespace orvo {

namespace {

bool same_name(std::string_view one, std::string_view other)
{
    return QByteArrayView{one}.compare(QByteArrayView{other}, Qt::CaseInsensitive) == 0;
}

} // namespace

std::size_t rows::index_of(std::string_view column) const
{
    for (std::size_t i = 0; i < names_.size(); ++i)
        if (same_name(names_[i], column))
            return i;
    throw std::logic_error{"the statement brings no column " + std::string{column}};
}

const std::string* rows::row::find(std::string_view column) const
{
    const auto& field = all_->fields_[index_][all_->index_of(column)];
    return field ? &*field : nullptr;
}

QString rows::row::text(std::string_view column) const
{
    const std::string* field = find(column);
    return field ? QString::fromStdString(*field) : QString{};
}

qint64 rows::row::number(std::string_view column) const
{
    const std::string* field = find(column);
    const auto number = field ? read_decimal(without_blanks(*field)) : std::nullopt;
    return number ? number->whole : 0;
}

bool rows::row::is_null(std::string_view column) const
{
    return !find(column);
}

rows::reading rows::reading_of(std::string_view column)
{
    const column_use* use = use_of(column);
    if (!use) // a name that the statement gives
        return reading::without_padding;
    if (use->common && kind_of(use->common->type) == value_kind::whole)
        return reading::whole_number;
    const bool is_unbounded =
        use->common && use->common->type == column_type::text && use->common->width == 0;
    return is_unbounded || !use->is_on_server ? reading::as_it_is : reading::without_padding;
}

std::string rows::read(std::string_view text, reading how)
{
    if (how == reading::as_it_is)
        return std::string{text};
    text = without_padding(text);
    if (how == reading::whole_number && text.find_first_of(".eE") != std::string_view::npos)
        if (const auto number = read_decimal(text))
            return std::to_string(number->whole);
    return std::string{text};
}

void rows::begin(const column_names& names)
{
    names_.assign(names.begin(), names.end());
    readings_.clear();
    for (const std::string_view each : names)
        readings_.push_back(reading_of(each));
    fields_.clear();
}

bool rows::take(std::span<const cell> fields)
{
    auto& fresh = fields_.emplace_back();
    fresh.reserve(fields.size());
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const cell& field = fields[i];
        if (field.is == cell::kind::null)
            fresh.emplace_back();
        else if (field.is == cell::kind::number)
            fresh.emplace_back(std::to_string(field.number));
        else
            fresh.emplace_back(read(field.text, readings_[i]));
    }
    return true;
}

} // namespace orvo

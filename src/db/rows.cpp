#include "db/rows.h"

#include "base/amount.h"

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
    return whole_part(text(column));
}

bool rows::row::is_null(std::string_view column) const
{
    return !find(column);
}

void rows::begin(const column_names& names)
{
    names_.assign(names.begin(), names.end());
    fields_.clear();
}

bool rows::take(std::span<const cell> fields)
{
    auto& fresh = fields_.emplace_back();
    fresh.reserve(fields.size());
    for (const cell& field : fields) {
        if (field.is == cell::kind::null)
            fresh.emplace_back();
        else if (field.is == cell::kind::number)
            fresh.emplace_back(std::to_string(field.number));
        else
            fresh.emplace_back(field.text);
    }
    return true;
}

} // namespace orvo

#include "ui/grid_model.h"

#include "base/amount.h"

#include <algorithm>

namespace orvo {

namespace {

/// Behind what stands at the right of its column, or it would touch the text of the next.
const QString beside_text{QChar{QChar::Nbsp}};

QVariant tick(const grid_row& row, int role)
{
    const bool is_ticked = row.cells.value(0) == QLatin1String("1");
    if (role == Qt::CheckStateRole)
        return is_ticked ? Qt::Checked : Qt::Unchecked;
    return role == Qt::UserRole ? row.key : QVariant{};
}

qint64 value_of(QString shown)
{
    return whole_part(shown.remove(u','));
}

} // namespace

void grid_model::fill(std::vector<grid_row> filled)
{
    beginResetModel();
    rows_ = std::move(filled);
    endResetModel();
}

void grid_model::set_ticks(const std::vector<int>& at, bool ticked)
{
    for (const int each : at)
        rows_[static_cast<std::size_t>(each)].cells[0] = ticked ? u'1' : u'0';
    const auto [first, last] = std::minmax_element(at.begin(), at.end());
    Q_EMIT dataChanged(index(*first, 0), index(*last, 0));
}

int grid_model::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows_.size()) + 1;
}

int grid_model::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant grid_model::data(const QModelIndex& at, int role) const
{
    const auto column = static_cast<std::size_t>(at.column());
    if (role == Qt::TextAlignmentRole)
        return QVariant{(columns_[column].is_number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter};
    if (at.row() >= static_cast<int>(rows_.size()))
        return {};
    const grid_row& row = rows_[static_cast<std::size_t>(at.row())];
    if (columns_[column].ticks)
        return tick(row, role);
    if (role == Qt::DisplayRole)
        return row.cells.value(at.column()) + (columns_[column].is_number ? beside_text : QString{});
    if (role == Qt::ToolTipRole)
        return row.cells.value(at.column());
    return role == Qt::UserRole ? row.key : QVariant{};
}

QVariant grid_model::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical)
        return {};
    const grid_column& column = columns_[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole)
        return column.caption + (column.is_number ? beside_text : QString{});
    if (role == Qt::TextAlignmentRole)
        return QVariant{(column.is_number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter};
    return {};
}

void grid_model::sort(int column, Qt::SortOrder order)
{
    if (column < 0)
        return;
    const bool by_number = columns_[static_cast<std::size_t>(column)].is_number;
    const auto less = [&](const grid_row& one, const grid_row& other) {
        const QString a = one.cells.value(column);
        const QString b = other.cells.value(column);
        return by_number ? value_of(a) < value_of(b) : a.localeAwareCompare(b) < 0;
    };
    Q_EMIT layoutAboutToBeChanged();
    std::vector<std::size_t> order_of(rows_.size());
    for (std::size_t i = 0; i < order_of.size(); ++i)
        order_of[i] = i;
    std::stable_sort(order_of.begin(), order_of.end(), [&](std::size_t a, std::size_t b) {
        return order == Qt::AscendingOrder ? less(rows_[a], rows_[b]) : less(rows_[b], rows_[a]);
    });
    move_rows(order_of);
    Q_EMIT layoutChanged();
}

/// The choice follows its row; the empty row stays where it is.
void grid_model::move_rows(const std::vector<std::size_t>& order_of)
{
    std::vector<grid_row> sorted;
    std::vector<int> place(rows_.size() + 1, static_cast<int>(rows_.size()));
    for (std::size_t old : order_of) {
        place[old] = static_cast<int>(sorted.size());
        sorted.push_back(std::move(rows_[old]));
    }
    rows_ = std::move(sorted);
    for (const QModelIndex& each : persistentIndexList())
        changePersistentIndex(each, index(place[static_cast<std::size_t>(each.row())], each.column()));
}

} // namespace orvo

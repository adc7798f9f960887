#pragma once

#include <QAbstractTableModel>
#include <QStringList>

#include <vector>

namespace orvo {

struct grid_column {
    QString caption;
    int width = 80;         ///< pixels at 100 %
    bool is_number = false; ///< right-aligned, and sorted by value
    bool fills = false;     ///< takes the width that is left; one column of a grid does
    bool ticks = false;     ///< the first column may be one of boxes: "1" is ticked, "0" is not
};

struct grid_row {
    QStringList cells;
    QVariant key = {};
};

/// The rows of a grid, and one that stays empty below them. Sorting takes keys and choice along.
class grid_model : public QAbstractTableModel {
public:
    explicit grid_model(std::vector<grid_column> columns) : columns_{std::move(columns)} {}

    void fill(std::vector<grid_row> filled);
    const std::vector<grid_row>& filled() const { return rows_; }
    const std::vector<grid_column>& columns() const { return columns_; }
    /// One message for all of them.
    void set_ticks(const std::vector<int>& at, bool ticked);

    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& at, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    std::vector<grid_column> columns_;
    std::vector<grid_row> rows_;

    void move_rows(const std::vector<std::size_t>& order_of);
};

} // namespace orvo

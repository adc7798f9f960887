#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace orvo {

/// A list on its way into a file. Its rows are fetched one by one where they lie, so that a long list need
/// not stand in memory twice.
struct text_table {
    struct column {
        QString caption;
        bool is_number = false; ///< stands right
    };

    std::vector<column> columns;
    qint64 row_count = 0;
    /// The cells of a row, from 0; asked for in order. They are written as they are, be they fewer than the
    /// captions.
    std::function<QStringList(qint64 row)> row;
};

} // namespace orvo

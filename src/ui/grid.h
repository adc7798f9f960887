#pragma once

#include "files/text_table.h"
#include "ui/grid_model.h"
#include "ui/row_calls.h"

#include <QString>
#include <QTableView>

#include <functional>

class QLineEdit;

namespace orvo {

class client;

/// The read-only table of the screens: captions, the rows, and one row that stays empty below them, on which
/// operators click to say "none". A row's key stays with the row however the rows are sorted. Ctrl+C copies
/// the chosen rows, a click on a caption sorts, widths that the operator sets are kept under the grid's name.
class grid : public QTableView {
public:
    grid(const QString& name, std::vector<grid_column> columns, client& c);

    /// Replaces all rows. What was chosen is chosen no more, and the sorting is the given order again.
    void fill(std::vector<grid_row> filled);
    void clear_rows() { fill({}); }

    int filled_rows() const;
    /// The row that the operator stands on; -1 for none or for the empty one.
    int chosen_row() const;
    bool is_filled(int at) const;
    QString cell(int at, int column) const;
    QVariant key(int at) const;
    /// Where the first column ticks, a click flips its row; Space flips the row in use, and all chosen rows
    /// the same way.
    bool is_ticked(int at) const { return cell(at, 0) == QLatin1String("1"); }
    /// Called when the operator has flipped ticks.
    void on_tick(std::function<void()> ticked);
    /// The rows in the order shown, for as long as they stay. The empty one is not among them.
    text_table as_table() const;

    /// Called for a click on a row, the empty one included, and for a move onto a filled row or Enter on it.
    /// One row is then chosen at a time, and it is always the one that was called for last.
    void on_row(std::function<void(int)> chosen);
    /// Called for a click on a row, the empty one included, and for Enter on a filled one: moves pick
    /// nothing.
    void on_pick(std::function<void(int)> picked);
    /// Down in that field leads to the first row.
    void follow(QLineEdit* field);
    /// Said in place of the rows while there are none.
    void set_empty_text(const QString& text) { empty_text_ = text; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    grid_model* model_;
    client& c_;
    QString empty_text_;
    row_calls calls_{*this};
    std::function<void(int)> picked_;

    bool has_ticks() const;
    void flip_chosen();
    void copy_chosen() const;
    void restore_widths(const std::vector<grid_column>& columns);
};

} // namespace orvo

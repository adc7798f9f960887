#pragma once

#include <QAbstractItemView>

#include <functional>

namespace orvo {

/// Calls for the row of a list or table that the operator chooses, whatever moved the choice: the chosen row
/// is always the one that was called for last.
class row_calls {
public:
    explicit row_calls(QAbstractItemView& view) : view_{view} {}

    void set(std::function<void(int)> chosen) { chosen_ = std::move(chosen); }
    explicit operator bool() const { return static_cast<bool>(chosen_); }

    void call_for(int row)
    {
        if (!view_.selectionModel()->isRowSelected(row)) // a click with Ctrl takes the choice away
            view_.setCurrentIndex(view_.model()->index(row, 0));
        called_for_ = row;
        chosen_(row);
    }
    /// Behind a press of another button than the left one, and behind a release: neither needs to be a click.
    void call_for_a_move(int chosen_row)
    {
        if (chosen_ && chosen_row >= 0 && chosen_row != called_for_)
            call_for(chosen_row);
    }
    /// The rows are others now.
    void forget() { called_for_ = -1; }

private:
    QAbstractItemView& view_;
    std::function<void(int)> chosen_;
    int called_for_ = -1;
};

} // namespace orvo

#pragma once

#include "files/text_table.h"
#include "members/rules/member_pages.h"
#include "ui/row_calls.h"

#include <QListWidget>

namespace orvo {

class client;

/// One page of members: the name, and in a quiet tone the birth date that tells namesakes apart. The resident
/// number stays with its row.
class member_list : public QListWidget {
public:
    member_list(const QString& name, client& c);

    void fill(const std::vector<listed_member>& members);
    QString pers_no_of(int at) const;
    /// The row of a member; -1 where he is not on this page.
    int row_of(const QString& pers_no) const;
    /// The row that was chosen; -1 where the list only has the focus.
    int chosen_row() const { return selectedItems().isEmpty() ? -1 : currentRow(); }
    /// Called for a click on a row, a move onto it, and Enter on it: the chosen row is always the one that
    /// was called for last.
    void on_row(std::function<void(int)> chosen);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    client& c_;
    row_calls calls_{*this};

    text_table as_table() const;
};

} // namespace orvo

#pragma once

#include "db/connection.h"
#include "ui/dialog.h"

class QLabel;

namespace orvo {

/// A dialog that searches: a status line, a button that begins, and one that closes the dialog or, while a
/// search is under way, ends the search.
class search_dialog : public dialog {
public:
    /// `hint` stands in the status line as long as nothing is searched for.
    search_dialog(const QString& name, client& c, QWidget* over, const QString& hint);

protected:
    QLabel* Text1;
    QPushButton* search;
    QPushButton* Image2;

    /// Shows the count of a search that takes over a second, and makes the closing button its end.
    class search_progress;

    void reject() override;

private:
    QString hint_;
    bool is_searching_ = false;
};

} // namespace orvo

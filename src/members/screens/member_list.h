#pragma once

#include "members/rules/member_pages.h"

#include <QListWidget>

namespace orvo {

/// One page of members: the name, and in a quiet tone the birth date that tells namesakes apart. The resident number
/// stays with its row.
class member_list : public QListWidget {
public:
    explicit member_list(const QString& name);

    void fill(const std::vector<listed_member>& members);
    QString pers_no_of(int at) const;
    /// The row of a member; -1 where he is not on this page.
    int row_of(const QString& pers_no) const;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace orvo

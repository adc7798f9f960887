#pragma once

#include "db/connection.h"

#include <QString>

#include <vector>

namespace orvo {

struct listed_member {
    QString pers_no;
    QString pers_name;
};

/// The copy of the last search, 15 members to a page. What it held when it was opened is what it shows: the
/// places of the rows are kept, so that a page costs the same wherever it lies.
class member_pages {
public:
    static constexpr int page_size = 15;

    explicit member_pages(connection& local);

    int page_count() const;
    /// Of page 1 to the last; none beyond.
    std::vector<listed_member> page(int number) const;
    /// The page on which a member stands, by number; 0 where he does not.
    int page_of(const QString& pers_no) const;

private:
    connection* local_;
    std::vector<qint64> places_;
};

} // namespace orvo

#pragma once

#include <QString>

#include <vector>

namespace orvo {

/// The databases of this test process on the PostgreSQL server. Making one takes a hundred times as long as
/// emptying it, so those that are given back are used again, and dropped when the process ends.
class postgresql_databases {
public:
    /// A register and its mail queue, complete and empty.
    struct pair {
        QString register_name;
        QString mail_name;
        qint64 shape = 0; ///< changes with the tables and indexes
    };

    static postgresql_databases& of_this_process();

    pair take();
    void give_back(const pair& used);

private:
    postgresql_databases();
    ~postgresql_databases();

    QString prefix_;
    std::vector<pair> made_;
    std::vector<pair> free_;
};

} // namespace orvo

#pragma once

#include "db/connection.h"
#include "demo/demo.h"

#include <string>

namespace orvo::demo {

/// One row in the order of its table's columns.
class row {
public:
    row& operator<<(std::string_view text);
    row& operator<<(qint64 number);
    row& operator<<(int number) { return *this << static_cast<qint64>(number); }

private:
    friend class loader;
    void clear();
    void hand_to(std::vector<cell>& fields) const;

    struct field {
        bool is_text = false;
        qint64 number = 0;
        std::string text;
    };
    std::vector<field> fields_; // kept from row to row, so that the texts' room is
    std::size_t used_ = 0;
};

/// Fills the tables of one database.
class loader {
public:
    loader(connection& to, const report& tell, database where = database::server)
        : to_{to}, tell_{tell}, where_{where}
    {
    }

    /// `next` writes a row and returns true, or returns false at the end. Identities are left to the engine.
    void fill(std::string_view table, const std::function<bool(row&)>& next);

private:
    connection& to_;
    const report& tell_;
    database where_;
};

} // namespace orvo::demo

#pragma once

#include "db/cell.h"
#include "db/odbc_line.h"

#include <string>
#include <vector>

namespace orvo {

/// What one text brings: rows, some at a time, and the number of rows written. A batch of reads brings the
/// rows of one after the other's. Whoever begins it reads it to its end or lets go of it; every call that
/// throws has let go.
class odbc_result {
public:
    explicit odbc_result(bool is_batch = false) : is_batch_{is_batch} {}

    /// Has the text carried out, and reads the first rows.
    void begin(odbc_handles& on, const std::string& sql);
    /// Reads the next rows in place of those before.
    void next(odbc_handles& on);
    static void let_go(odbc_handles& on) { SQLFreeStmt(on.statement, SQL_CLOSE); }

    bool is_over() const { return over_; }
    /// Whether what was read last ends the rows of one read of a batch.
    bool ends_a_read() const { return set_over_; }
    qint64 written() const { return written_; }
    /// Hands on what was read last. False where the sink wants no more.
    bool hand_on(row_sink& sink);

private:
    struct field {
        cell::kind is;
        std::int64_t number; ///< of a text where it begins
        std::size_t size;
    };

    std::vector<std::string> names_;
    std::vector<field (odbc_result::*)(odbc_handles& on, SQLUSMALLINT column)> reads_; ///< by column
    std::vector<field> fields_;
    std::string bytes_;
    std::u16string wide_;
    std::vector<char16_t> piece_;
    qint64 written_ = 0;
    bool is_batch_;
    bool set_over_ = false;
    bool over_ = false;
    bool begun_ = false;

    void go_to_rows(odbc_handles& on, SQLRETURN result);
    void end(odbc_handles& on);
    void describe(odbc_handles& on, SQLSMALLINT count);
    void read_rows(odbc_handles& on);
    field read_number(odbc_handles& on, SQLUSMALLINT column);
    field read_floating(odbc_handles& on, SQLUSMALLINT column);
    field read_text(odbc_handles& on, SQLUSMALLINT column);
};

} // namespace orvo

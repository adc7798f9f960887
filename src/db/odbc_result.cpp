#include "db/odbc_result.h"

#include "base/decimal.h"

#include <array>

namespace orvo {

namespace {

constexpr std::size_t rows_at_a_time = 64;
constexpr std::size_t piece_letters = 4096;

bool is_whole_number(SQLSMALLINT type)
{
    return type == SQL_INTEGER || type == SQL_SMALLINT || type == SQL_TINYINT || type == SQL_BIGINT ||
           type == SQL_BIT;
}

bool is_floating(SQLSMALLINT type)
{
    return type == SQL_FLOAT || type == SQL_DOUBLE || type == SQL_REAL;
}

void append_utf8(std::string& to, std::u16string_view letters)
{
    const std::size_t from = to.size();
    for (const char16_t letter : letters) {
        if (letter > 0x7f) {
            to.resize(from);
            to += QStringView{letters.data(), static_cast<qsizetype>(letters.size())}.toUtf8().toStdString();
            return;
        }
        to += static_cast<char>(letter);
    }
}

} // namespace

void odbc_result::begin(odbc_handles& on, const std::string& sql)
{
    QString text = QString::fromStdString(sql);
    try {
        SQLRETURN result = SQLExecDirectW(on.statement, reinterpret_cast<SQLWCHAR*>(text.data()),
                                          static_cast<SQLINTEGER>(text.size()));
        if (result == SQL_NO_DATA) // a write that met no row
            result = SQL_SUCCESS;
        go_to_rows(on, result);
        read_rows(on);
    } catch (...) {
        let_go(on);
        throw;
    }
}

void odbc_result::next(odbc_handles& on)
{
    try {
        fields_.clear();
        bytes_.clear();
        if (std::exchange(set_over_, false)) {
            const SQLRETURN more = SQLMoreResults(on.statement);
            if (more == SQL_NO_DATA)
                return end(on);
            names_.clear();
            reads_.clear();
            begun_ = false;
            go_to_rows(on, more);
        }
        read_rows(on);
    } catch (...) {
        let_go(on);
        throw;
    }
}

/// Goes on to the first result with rows, or to the end: an error of the server can stand behind counts and
/// rows.
void odbc_result::go_to_rows(odbc_handles& on, SQLRETURN result)
{
    while (true) {
        on.check(result);
        SQLSMALLINT columns = 0;
        on.check(SQLNumResultCols(on.statement, &columns));
        if (columns > 0 && names_.empty())
            return describe(on, columns);
        SQLLEN rows = 0;
        if (columns == 0 && SQL_SUCCEEDED(SQLRowCount(on.statement, &rows)) && rows > 0)
            written_ += rows;
        result = SQLMoreResults(on.statement);
        if (result == SQL_NO_DATA)
            return end(on);
    }
}

void odbc_result::end(odbc_handles& on)
{
    over_ = true;
    let_go(on);
}

void odbc_result::describe(odbc_handles& on, SQLSMALLINT count)
{
    std::array<SQLWCHAR, 256> letters{};
    for (SQLSMALLINT i = 1; i <= count; ++i) {
        SQLSMALLINT type = 0;
        on.check(SQLDescribeColW(on.statement, static_cast<SQLUSMALLINT>(i), letters.data(),
                                 static_cast<SQLSMALLINT>(letters.size()), nullptr, &type, nullptr, nullptr,
                                 nullptr));
        names_.push_back(QString::fromUtf16(reinterpret_cast<const char16_t*>(letters.data())).toStdString());
        reads_.push_back(is_whole_number(type) ? &odbc_result::read_number
                         : is_floating(type)   ? &odbc_result::read_floating
                                               : &odbc_result::read_text);
    }
    piece_.resize(piece_letters);
}

void odbc_result::read_rows(odbc_handles& on)
{
    fields_.clear();
    bytes_.clear();
    for (std::size_t row = 0; !over_ && row < rows_at_a_time; ++row) {
        const SQLRETURN result = SQLFetch(on.statement);
        if (result == SQL_NO_DATA && is_batch_) {
            set_over_ = true;
            return;
        }
        if (result == SQL_NO_DATA) {
            const SQLRETURN more = SQLMoreResults(on.statement);
            return more == SQL_NO_DATA ? end(on) : go_to_rows(on, more);
        }
        on.check(result);
        for (std::size_t i = 0; i < names_.size(); ++i) {
            const auto column = static_cast<SQLUSMALLINT>(i + 1);
            fields_.push_back((this->*reads_[i])(on, column));
        }
    }
}

odbc_result::field odbc_result::read_number(odbc_handles& on, SQLUSMALLINT column)
{
    std::int64_t number = 0;
    SQLLEN size = 0;
    on.check(SQLGetData(on.statement, column, SQL_C_SBIGINT, &number, sizeof number, &size));
    return {size == SQL_NULL_DATA ? cell::kind::null : cell::kind::number, number, 0};
}

odbc_result::field odbc_result::read_floating(odbc_handles& on, SQLUSMALLINT column)
{
    double number = 0;
    SQLLEN size = 0;
    on.check(SQLGetData(on.statement, column, SQL_C_DOUBLE, &number, sizeof number, &size));
    if (size == SQL_NULL_DATA)
        return {cell::kind::null, 0, 0};
    const std::size_t begin = bytes_.size();
    bytes_ += plain_text(number);
    return {cell::kind::text, static_cast<std::int64_t>(begin), bytes_.size() - begin};
}

/// In pieces of UTF-16, put together before they are read, as a letter's halves can lie in two of them. Read
/// into bytes of the declared width, Hangul comes back empty without an error.
odbc_result::field odbc_result::read_text(odbc_handles& on, SQLUSMALLINT column)
{
    const std::size_t begin = bytes_.size();
    wide_.clear();
    while (true) {
        SQLLEN size = 0;
        const SQLRETURN result = SQLGetData(on.statement, column, SQL_C_WCHAR, piece_.data(),
                                            static_cast<SQLLEN>(piece_letters * sizeof(char16_t)), &size);
        if (result == SQL_NO_DATA)
            break;
        on.check(result);
        if (size == SQL_NULL_DATA)
            return {cell::kind::null, 0, 0};
        if (result == SQL_SUCCESS) {
            wide_.append(piece_.data(), static_cast<std::size_t>(size) / sizeof(char16_t));
            break;
        }
        wide_.append(piece_.data(), piece_letters - 1); // and a 0
    }
    append_utf8(bytes_, wide_);
    return {cell::kind::text, static_cast<std::int64_t>(begin), bytes_.size() - begin};
}

bool odbc_result::hand_on(row_sink& sink)
{
    if (!begun_ && !names_.empty())
        sink.begin({names_.begin(), names_.end()});
    begun_ = true;
    std::vector<cell> row(names_.size());
    for (std::size_t at = 0; at < fields_.size(); at += row.size()) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            const field& each = fields_[at + i];
            if (each.is == cell::kind::number)
                row[i] = cell::of(each.number);
            else if (each.is == cell::kind::null)
                row[i] = {};
            else
                row[i] = cell::of(
                    std::string_view{bytes_}.substr(static_cast<std::size_t>(each.number), each.size));
        }
        if (!sink.take(row))
            return false;
    }
    return true;
}

} // namespace orvo

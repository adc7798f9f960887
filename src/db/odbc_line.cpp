#include "db/odbc_line.h"

#include "db/odbc_text.h"

#include <QRegularExpression>

#include <array>
#include <future>
#include <thread>

namespace orvo {

using std::chrono::steady_clock;

namespace {

/// FreeTDS numbers its own words from 20000 on; this is a write that did not go out.
constexpr int drivers_own_thousands = 20;
constexpr int not_sent = 20006;
constexpr int servers_word = 2; ///< the rank of what the server says itself

QString text_of(const SQLWCHAR* letters)
{
    return QString::fromUtf16(reinterpret_cast<const char16_t*>(letters));
}

SQLPOINTER number_attribute(qint64 value)
{
    return reinterpret_cast<SQLPOINTER>(static_cast<std::intptr_t>(value));
}

failure_kind kind_of(const QString& state, int number)
{
    switch (number) {
    case 18456: // wrong user or password
    case 18452: // no trusted login
    case 18470: // the login is disabled
    case 18486: // the login is locked
    case 18487: // the password has expired
    case 18488: // the password must be changed
    case 4060:  // no such database, or not for this user
        return failure_kind::login_refused;
    case 220:  // beyond tinyint, smallint
    case 232:  // beyond the type
    case 248:  // a text beyond int
    case 8115: // a sum beyond its type
    case 2628: // a text too long, with the column's name
    case 8152: // a text too long
        return failure_kind::overflow;
    case 2601:
    case 2627:
        return failure_kind::duplicate;
    case 245:
    case 8114:
        return failure_kind::conversion;
    case 1222: // a lock was waited for too long
        return failure_kind::timed_out;
    case 1105:
    case 9002:
        return failure_kind::disk_full;
    default:
        break;
    }
    if (state == QLatin1String("28000"))
        return failure_kind::login_refused;
    if (state == QLatin1String("22003") || state == QLatin1String("22001"))
        return failure_kind::overflow;
    if (state == QLatin1String("22018"))
        return failure_kind::conversion;
    if (state == QLatin1String("HYT00") || state == QLatin1String("HYT01"))
        return failure_kind::timed_out;
    if (state == QLatin1String("HY008"))
        return failure_kind::cancelled;
    return state.startsWith(QLatin1String("08")) ? failure_kind::line_lost : failure_kind::other;
}

} // namespace

odbc_handles::~odbc_handles()
{
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
    if (line) {
        SQLDisconnect(line);
        SQLFreeHandle(SQL_HANDLE_DBC, line);
    }
    SQLFreeHandle(SQL_HANDLE_ENV, environment);
}

void odbc_handles::fail() const
{
    static const QRegularExpression makers{QStringLiteral("^(\\[[^\\]]*\\])+\\s*")};
    const SQLSMALLINT type = statement ? SQL_HANDLE_STMT : line ? SQL_HANDLE_DBC : SQL_HANDLE_ENV;
    const SQLHANDLE handle = statement ? statement : line ? line : environment;
    failure_kind kind = failure_kind::other;
    QString text;
    QString code;
    int best_rank = -1;
    bool was_sent = true;
    bool is_lost = false;
    std::array<SQLWCHAR, 6> state{};
    std::array<SQLWCHAR, 2048> letters{};
    SQLINTEGER number = 0;
    for (SQLSMALLINT i = 1;
         SQL_SUCCEEDED(SQLGetDiagRecW(type, handle, i, state.data(), &number, letters.data(),
                                      static_cast<SQLSMALLINT>(letters.size()), nullptr));
         ++i) {
        const failure_kind its_kind = kind_of(text_of(state.data()), number);
        was_sent = was_sent && number != not_sent;
        is_lost = is_lost || its_kind == failure_kind::line_lost;
        // What the server says tells more than what the driver makes of it.
        const int rank = number == 0 ? 0 : number / 1000 == drivers_own_thousands ? 1 : servers_word;
        if (rank <= best_rank)
            continue;
        best_rank = rank;
        kind = its_kind;
        text = text_of(letters.data()).remove(makers).trimmed();
        code = number ? QString::number(number) : text_of(state.data());
    }
    SQLUINTEGER dead = SQL_CD_FALSE;
    if (statement)
        SQLGetConnectAttrW(line, SQL_ATTR_CONNECTION_DEAD, &dead, 0, nullptr);
    if (dead == SQL_CD_TRUE || (is_lost && (kind == failure_kind::other || kind == failure_kind::line_lost)))
        throw line_break{text, was_sent, code};
    // A time-out of the driver's own, or whatever else it makes of a silence.
    if (statement && best_rank < servers_word)
        throw unanswered{kind, text, {}, code};
    throw db_failure{kind, text, {}, code};
}

void odbc_line::open(const driver::tick& waiting)
{
    if (const QByteArray section = freetds_section(server_); !section.isEmpty())
        provide_freetds_section(section);
    handles_ = std::make_shared<odbc_handles>();
    const auto connect = [text = odbc_connection_text(server_, where_), timeout = server_.connect_timeout,
                          statement_timeout = server_.statement_timeout](odbc_handles& to) {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &to.environment);
        to.check(SQLSetEnvAttr(to.environment, SQL_ATTR_ODBC_VERSION, number_attribute(SQL_OV_ODBC3), 0));
        to.check(SQLAllocHandle(SQL_HANDLE_DBC, to.environment, &to.line));
        SQLSetConnectAttrW(to.line, SQL_ATTR_LOGIN_TIMEOUT, number_attribute(timeout.count()), 0);
        QString letters = text;
        to.check(SQLDriverConnectW(to.line, nullptr, reinterpret_cast<SQLWCHAR*>(letters.data()),
                                   static_cast<SQLSMALLINT>(letters.size()), nullptr, 0, nullptr,
                                   SQL_DRIVER_NOPROMPT));
        SQLHSTMT statement = SQL_NULL_HSTMT;
        to.check(SQLAllocHandle(SQL_HANDLE_STMT, to.line, &statement));
        to.statement = statement;
        // Braces in a text are no escapes of ODBC.
        SQLSetStmtAttrW(statement, SQL_ATTR_NOSCAN, number_attribute(SQL_NOSCAN_ON), 0);
        SQLSetStmtAttrW(statement, SQL_ATTR_QUERY_TIMEOUT, number_attribute(statement_timeout.count()), 0);
    };
    try {
        make_call(connect, waiting, server_.connect_timeout + std::chrono::seconds{1}, false);
    } catch (const db_failure& failure) {
        close();
        // Other than that it is ODBC itself: without its driver no second try will help.
        using enum failure_kind;
        if (failure.kind() == login_refused || failure.kind() == cancelled || failure.kind() == other)
            throw;
        throw line_break{failure.text(), false, failure.code()};
    }
}

odbc_handles& odbc_line::raw() const
{
    if (!handles_)
        throw line_break{QStringLiteral("the server is not connected"), false};
    return *handles_;
}

void odbc_line::beside(std::function<void(odbc_handles&)> call, const driver::tick& waiting)
{
    raw();
    // The driver ends a statement at its time-out; where not even that works, nobody answers.
    make_call(std::move(call), waiting, server_.statement_timeout + std::chrono::seconds{5}, true);
}

void odbc_line::make_call(std::function<void(odbc_handles&)> call, const driver::tick& waiting,
                          std::chrono::seconds longest, bool is_statement)
{
    using namespace std::chrono_literals;
    const auto deadline = steady_clock::now() + longest;
    std::packaged_task<void()> task{[made = std::move(call), held = handles_] { made(*held); }};
    std::future<void> over = task.get_future();
    std::thread{std::move(task)}.detach();
    try {
        while (over.wait_for(30ms) == std::future_status::timeout) {
            if (!waiting())
                throw db_failure{failure_kind::cancelled, QStringLiteral("cancelled")};
            if (steady_clock::now() > deadline)
                throw line_break{QStringLiteral("the server does not answer"), is_statement};
        }
    } catch (...) {
        if (is_statement)
            SQLCancel(handles_->statement);
        if (!is_statement || over.wait_for(1s) == std::future_status::timeout)
            handles_.reset();
        throw;
    }
    try {
        over.get();
    } catch (const line_break&) {
        handles_.reset(); // or the next statement would be in doubt too
        throw;
    }
}

} // namespace orvo

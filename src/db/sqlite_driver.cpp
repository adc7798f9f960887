#include "db/sqlite_driver.h"

#include "base/decimal.h"

#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include <sqlite3.h>

#include <thread>
#include <unordered_map>

namespace orvo {

namespace {

struct finalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using statement_handle = std::unique_ptr<sqlite3_stmt, finalizer>;

/// Lets go of a statement's rows and parameters, however its use ends.
class resetter {
public:
    explicit resetter(sqlite3_stmt* statement) : statement_{statement} {}
    ~resetter() { sqlite3_reset(statement_); }
    resetter(const resetter&) = delete;
    resetter& operator=(const resetter&) = delete;

private:
    sqlite3_stmt* statement_;
};

failure_kind kind_of(int extended)
{
    switch (extended) {
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_ROWID:
        return failure_kind::duplicate;
    case SQLITE_CONSTRAINT_CHECK:
        return failure_kind::overflow;
    case SQLITE_CONSTRAINT_DATATYPE:
        return failure_kind::conversion;
    default:
        break;
    }
    switch (extended & 0xff) {
    case SQLITE_CANTOPEN:
    case SQLITE_IOERR:
        return failure_kind::line_lost;
    case SQLITE_FULL:
        return failure_kind::disk_full;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return failure_kind::damaged;
    case SQLITE_INTERRUPT:
        return failure_kind::cancelled;
    case SQLITE_BUSY:
        return failure_kind::timed_out;
    case SQLITE_TOOBIG:
        return failure_kind::overflow;
    default:
        return failure_kind::other;
    }
}

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// Between two looks whether the file is free; the first ones come sooner.
constexpr milliseconds longest_nap{30};

class sqlite_driver : public driver {
public:
    sqlite_driver(QString path, database where, file_use use, std::chrono::seconds longest_hold)
        : path_{std::move(path)}, where_{where}, use_{use}, longest_hold_{longest_hold}
    {
    }
    ~sqlite_driver() override { sqlite_driver::close(); }

    engine kind() const override { return engine::embedded; }
    database where() const override { return where_; }
    void open(const tick& waiting) override;
    void close() override;
    bool has_begun() const override { return !is_held_; }
    qint64 run(const ready_statement& text, const std::vector<bound_value>& bound, row_sink* sink, bool large,
               const tick& waiting) override;
    std::size_t most_written_together() const override { return most_together(); }
    void write_together(std::span<const statement_run> all, const tick& waiting) override;
    void run_again(const ready_statement& text, std::span<const cell> fields) override;
    void direct(const std::string& sql) override;
    void load(std::string_view table, const std::vector<std::string_view>& columns,
              const std::function<bool(std::vector<cell>&)>& next) override;

private:
    QString path_;
    database where_;
    file_use use_;
    const std::chrono::seconds longest_hold_;
    steady_clock::time_point held_since_;
    bool is_held_ = false; ///< by another program, and the tick is asked
    bool is_left_ = false; ///< since the tick said no
    sqlite3* base_ = nullptr;
    const tick* waiting_ = nullptr;
    std::unordered_map<const ready_statement*, statement_handle> prepared_;

    [[noreturn]] void fail();
    void check(int result)
    {
        if (result != SQLITE_OK)
            fail();
    }
    statement_handle prepare(const std::string& sql);
    sqlite3_stmt* prepared(const ready_statement& text);
    void hand_on(sqlite3_stmt* statement, row_sink& sink);
    void bind_fields(sqlite3_stmt* statement, std::span<const cell> fields);
    void make_file();
    void set_up(const char* setting);
    static int on_progress(void* self);
    static int on_busy(void* self, int times);

    /// The tick of the statement under way.
    class waiting_guard {
    public:
        waiting_guard(sqlite_driver& of, const tick& waiting) : of_{of}
        {
            of_.waiting_ = &waiting;
            of_.is_left_ = false;
        }
        ~waiting_guard() { of_.waiting_ = nullptr; }
        waiting_guard(const waiting_guard&) = delete;
        waiting_guard& operator=(const waiting_guard&) = delete;

    private:
        sqlite_driver& of_;
    };
};

void sqlite_driver::fail()
{
    const int code = base_ ? sqlite3_extended_errcode(base_) : SQLITE_CANTOPEN;
    const failure_kind kind = std::exchange(is_left_, false) ? failure_kind::cancelled : kind_of(code);
    const bool names_file = kind == failure_kind::line_lost || kind == failure_kind::disk_full;
    QString text = QString::fromUtf8(base_ ? sqlite3_errmsg(base_) : "unable to open database file");
    if (names_file)
        text += QStringLiteral(": ") + path_;
    const db_failure failure =
        db_failure{kind, text, {}, QString::number(code)}.at(names_file ? path_ : QString{});
    if (kind == failure_kind::line_lost) // a statement that could not reach the file is undone by the journal
        throw line_break{failure};
    throw failure;
}

int sqlite_driver::on_progress(void* self)
{
    const tick* waiting = static_cast<sqlite_driver*>(self)->waiting_;
    return waiting && !(*waiting)() ? 1 : 0;
}

/// Called as often as a lock is asked for in vain; a 0 ends it.
int sqlite_driver::on_busy(void* self, int times)
{
    sqlite_driver& of = *static_cast<sqlite_driver*>(self);
    const auto now = steady_clock::now();
    if (times == 0)
        of.held_since_ = now;
    if (now - of.held_since_ > of.longest_hold_)
        return 0;
    of.is_held_ = true;
    of.is_left_ = of.waiting_ && !(*of.waiting_)();
    of.is_held_ = false;
    if (of.is_left_)
        return 0;
    std::this_thread::sleep_for(std::min(milliseconds{times + 1}, longest_nap));
    return 1;
}

void sqlite_driver::make_file()
{
    // Nothing where the name is taken, and what cannot be made cannot be opened either.
    QFile{path_}.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner);
}

void sqlite_driver::open(const tick& waiting)
{
    const waiting_guard guard{*this, waiting};
    if (use_ == file_use::create)
        make_file();
    const QFileInfo file{path_};
    const bool writable = QFileInfo{file.path()}.isWritable() && (!file.exists() || file.isWritable());
    const QByteArray uri = "file:" + QUrl::toPercentEncoding(path_, "/") + (writable ? "" : "?immutable=1");
    const int flags = SQLITE_OPEN_URI | (writable ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY);
    const int result = sqlite3_open_v2(uri.constData(), &base_, flags, nullptr);
    try {
        check(result);
        sqlite3_extended_result_codes(base_, 1);
        sqlite3_busy_handler(base_, on_busy, this);
        sqlite3_progress_handler(base_, 20000, on_progress, this);
        // The local file holds what is nowhere else: postal codes, drafts, what is queued. In this mode a
        // fall of the power costs its last moments and not the file, and no commit waits for the disk, only
        // now and then the one that brings the log into the file.
        set_up(where_ == database::local ? "pragma synchronous=normal" : "pragma synchronous=full");
        if (writable)
            set_up("pragma journal_mode=wal");
    } catch (const db_failure&) {
        close();
        throw;
    }
}

/// Where two make a file's journal at once, the engine does not ask whether to wait.
void sqlite_driver::set_up(const char* setting)
{
    held_since_ = steady_clock::now();
    int result = SQLITE_OK;
    int times = 0;
    do
        result = sqlite3_exec(base_, setting, nullptr, nullptr, nullptr);
    while ((result & 0xff) == SQLITE_BUSY && on_busy(this, ++times) != 0);
    check(result);
}

void sqlite_driver::close()
{
    prepared_.clear();
    sqlite3_close(base_);
    base_ = nullptr;
}

statement_handle sqlite_driver::prepare(const std::string& sql)
{
    if (!base_)
        throw line_break{QStringLiteral("the database is not open"), false};
    sqlite3_stmt* statement = nullptr;
    check(sqlite3_prepare_v3(base_, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                             &statement, nullptr));
    return statement_handle{statement};
}

sqlite3_stmt* sqlite_driver::prepared(const ready_statement& text)
{
    statement_handle& handle = prepared_[&text];
    if (!handle)
        handle = prepare(text.sql);
    return handle.get();
}

void sqlite_driver::hand_on(sqlite3_stmt* statement, row_sink& sink)
{
    const int count = sqlite3_column_count(statement);
    column_names names;
    for (int i = 0; i < count; ++i)
        names.emplace_back(sqlite3_column_name(statement, i));
    sink.begin(names);
    std::vector<cell> row(static_cast<std::size_t>(count));
    std::vector<std::string> decimals(row.size());
    int since_tick = 0;
    int result = sqlite3_step(statement);
    for (; result == SQLITE_ROW; result = sqlite3_step(statement)) {
        for (int i = 0; i < count; ++i) {
            cell& field = row[static_cast<std::size_t>(i)];
            const int type = sqlite3_column_type(statement, i);
            if (type == SQLITE_NULL) {
                field = {};
            } else if (type == SQLITE_INTEGER) {
                field = cell::of(std::int64_t{sqlite3_column_int64(statement, i)});
            } else if (type == SQLITE_FLOAT) {
                std::string& text = decimals[static_cast<std::size_t>(i)];
                text = plain_text(sqlite3_column_double(statement, i));
                field = cell::of(std::string_view{text});
            } else {
                const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
                field = cell::of(
                    std::string_view{text, static_cast<std::size_t>(sqlite3_column_bytes(statement, i))});
            }
        }
        if (!sink.take(row))
            return;
        if (++since_tick == 64) {
            since_tick = 0;
            if (waiting_ && !(*waiting_)())
                throw db_failure{failure_kind::cancelled, QStringLiteral("interrupted")};
        }
    }
    if (result != SQLITE_DONE)
        fail();
}

qint64 sqlite_driver::run(const ready_statement& text, const std::vector<bound_value>& bound, row_sink* sink,
                          bool, const tick& waiting)
{
    sqlite3_stmt* statement = prepared(text);
    const resetter reset{statement};
    for (std::size_t i = 0; i < bound.size(); ++i) {
        const int at = static_cast<int>(i) + 1;
        if (const auto* number = std::get_if<std::int64_t>(&bound[i]))
            check(sqlite3_bind_int64(statement, at, *number));
        else
            check(sqlite3_bind_text64(statement, at, std::get<std::string>(bound[i]).data(),
                                      std::get<std::string>(bound[i]).size(), SQLITE_STATIC, SQLITE_UTF8));
    }
    const waiting_guard guard{*this, waiting};
    if (sink) {
        hand_on(statement, *sink);
        return 0;
    }
    if (sqlite3_step(statement) != SQLITE_DONE)
        fail();
    return sqlite3_changes64(base_);
}

void sqlite_driver::write_together(std::span<const statement_run> all, const tick& waiting)
{
    const auto run_direct = [&](const char* sql) {
        const waiting_guard guard{*this, waiting};
        direct(sql);
    };
    run_direct("begin immediate");
    try {
        run_together(all, waiting);
        run_direct("commit");
    } catch (...) {
        sqlite3_exec(base_, "rollback", nullptr, nullptr, nullptr); // in vain where the engine has done it
        throw;
    }
}

void sqlite_driver::bind_fields(sqlite3_stmt* statement, std::span<const cell> fields)
{
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const int at = static_cast<int>(i) + 1;
        const cell& field = fields[i];
        if (field.is == cell::kind::number)
            check(sqlite3_bind_int64(statement, at, field.number));
        else
            check(sqlite3_bind_text64(statement, at, field.text.empty() ? "" : field.text.data(),
                                      field.text.size(), SQLITE_STATIC, SQLITE_UTF8));
    }
}

void sqlite_driver::run_again(const ready_statement& text, std::span<const cell> fields)
{
    sqlite3_stmt* statement = prepared(text);
    const resetter reset{statement};
    bind_fields(statement, fields);
    if (sqlite3_step(statement) != SQLITE_DONE)
        fail();
}

void sqlite_driver::direct(const std::string& sql)
{
    if (!base_)
        throw line_break{QStringLiteral("the database is not open"), false};
    check(sqlite3_exec(base_, sql.c_str(), nullptr, nullptr, nullptr));
}

void sqlite_driver::load(std::string_view table, const std::vector<std::string_view>& columns,
                         const std::function<bool(std::vector<cell>&)>& next)
{
    std::string names;
    std::string marks;
    for (std::string_view column : columns) {
        names.append(names.empty() ? "" : ",").append(column);
        marks += marks.empty() ? "?" : ",?";
    }
    const statement_handle insert =
        prepare("insert into " + std::string{table} + " (" + names + ") values (" + marks + ")");
    // All or nothing, as on the other engine, and the disk is waited for once and not with every row.
    direct("savepoint load_of_rows");
    try {
        std::vector<cell> fields;
        while (fields.clear(), next(fields)) {
            const resetter reset{insert.get()};
            bind_fields(insert.get(), fields);
            if (sqlite3_step(insert.get()) != SQLITE_DONE)
                fail();
        }
        direct("release load_of_rows");
    } catch (...) {
        sqlite3_exec(base_, "rollback to load_of_rows; release load_of_rows", nullptr, nullptr, nullptr);
        throw;
    }
}

} // namespace

std::unique_ptr<driver> make_sqlite_driver(const QString& path, database where, file_use use,
                                           std::chrono::seconds longest_hold)
{
    return std::make_unique<sqlite_driver>(path, where, use, longest_hold);
}

} // namespace orvo

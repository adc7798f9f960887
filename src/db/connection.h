#pragma once

#include "db/cell.h"
#include "db/engine.h"
#include "db/failure.h"
#include "db/rows.h"
#include "db/values.h"

#include <chrono>
#include <functional>
#include <memory>
#include <span>
#include <string_view>

namespace orvo {

class driver;
struct ready_statement;

/// What a connection asks of the one who sits before it.
class line_watch {
public:
    virtual ~line_watch() = default;
    /// The line is lost. True: reopen it and go on with that very statement. False: give up.
    virtual bool try_again(const db_failure& lost) = 0;
    /// Some 30 times a second while a statement runs. False ends it, where it is a read or has not begun.
    virtual bool keep_waiting(std::chrono::milliseconds waited, bool can_end) = 0;
    /// The statement that was waited for has ended, one way or the other.
    virtual void done_waiting() {}
};

/// Follows one long read.
class progress {
public:
    virtual ~progress() = default;
    /// Some 30 times a second, with the rows so far (0 until the first has come). False ends the read.
    virtual bool go_on(qint64 so_far) = 0;
};

/// A statement that runs many times in a row, its fields handed over as they come from another one.
class repeated_write {
public:
    /// The fields in the order of the statement's slots.
    void operator()(std::span<const cell> fields);

private:
    friend class connection;
    repeated_write(driver& way, const ready_statement& text) : way_{&way}, text_{&text} {}

    driver* way_;
    const ready_statement* text_;
    std::vector<cell> fields_;
};

/// One database, for as long as the client runs: reopen() changes what is inside. Statement texts are
/// templates with
/// `{name}` slots, in UTF-8: a slot inside single quotes takes a text, one outside takes a whole number. The
/// text must outlive nothing; what was made of it is kept and found again.
///
/// Every call throws db_failure. A lost line is not one as long as the watch says to try again: the statement
/// waits in place. A write that was sent and not answered is sent again only where twice does what once does;
/// whatever way it ends without an answer, its failure is outcome_unknown.
class connection {
public:
    explicit connection(std::unique_ptr<driver> way, line_watch* watch = nullptr);
    ~connection();
    connection(connection&&) noexcept;

    void open();
    void reopen();
    void close();
    engine kind() const;
    line_watch* watch() const { return watch_; }
    void set_watch(line_watch* watch) { watch_ = watch; }
    /// Whether the last statement was answered.
    bool is_up() const { return up_; }
    /// Whether a statement is under way: timers fire while one waits for its server.
    bool is_busy() const { return busy_; }

    rows read(std::string_view text, const values& given = {});
    struct query {
        std::string_view text;
        values given = {};
    };
    /// Reads that do not depend on each other, in their order: they go out together where the engine can, and
    /// cost one wait. Either all are answered or none.
    std::vector<rows> read_together(std::initializer_list<query> queries);
    /// The same for however many: they go out in chunks, each at the price of one wait where the engine can.
    /// `take` gets the rows of each, in order; the progress hears how many rows there were. A chunk whose
    /// line was lost begins anew. Throws failure_kind::cancelled where the progress said so.
    void read_many(std::span<const query> queries,
                   const std::function<void(std::size_t place, rows found)>& take,
                   progress* follow = nullptr);
    /// How many writes go out together and are stored together or not at all; 1 where the engine has no such
    /// thing but for transactions of its own.
    std::size_t most_written_together() const;
    /// Writes of which all are stored or none, at the price of one wait where the engine can. A failure
    /// other than outcome_unknown has stored none of them. The progress is asked while they are under way,
    /// but does not end them.
    void write_together(std::span<const query> queries, progress* follow = nullptr);
    /// How many of the statements go out in one chunk: as many as the engine takes, and no more than a
    /// megabyte.
    static std::size_t chunk_size(std::span<const query> queries, std::size_t most);
    /// Row by row, for results that can be large. Ends early where the sink or the progress says so; throws
    /// failure_kind::cancelled where it was the progress.
    void read_each(std::string_view text, const values& given, row_sink& sink, progress* follow = nullptr);
    /// The first field of the first row; 0 where there is no row or a null.
    qint64 number(std::string_view text, const values& given = {});
    /// Returns the number of rows that were written.
    qint64 write(std::string_view text, const values& given = {});
    repeated_write repeat(std::string_view text);
    /// A text of the engine's own dialect, as it stands and without slots: definitions and settings.
    void direct(const std::string& text);

    /// Fills a table by the engine's fastest way, all or nothing. `next` writes one row's fields, in the
    /// order of `columns`, into what it is given, and returns false at the end. Numbers must come as numbers.
    void load(std::string_view table, const std::vector<std::string_view>& columns,
              const std::function<bool(std::vector<cell>&)>& next);

private:
    friend class transaction;
    struct known;

    std::unique_ptr<driver> way_;
    line_watch* watch_;
    std::unique_ptr<known> known_;
    bool up_ = false;
    bool busy_ = false;

    const ready_statement& ready(std::string_view text, const values& given);
    /// What goes out at once.
    struct sending {
        const ready_statement& first;
        bool repeatable; ///< twice does what once does
    };
    /// Runs an act that sends, as often as the line breaks and the watch says to try again.
    void persist(const sending& what, progress* follow, const qint64& so_far,
                 const std::function<void(const std::function<bool()>& waiting)>& act);
    qint64 run(const ready_statement& text, const values& given, row_sink* sink, progress* follow,
               bool large);
    std::vector<rows> run_together(std::span<const query> queries, progress* follow, qint64 so_far);
    void ask_and_reopen(const db_failure& lost);
};

/// All or nothing, within one database. Undone unless committed. Only for what is the workstation's own: the
/// association's saves run statement by statement, so that what is stored at a failure can be told.
class transaction {
public:
    explicit transaction(connection& on);
    ~transaction();
    transaction(const transaction&) = delete;
    transaction& operator=(const transaction&) = delete;

    void commit();

private:
    connection& on_;
    bool open_ = true;
};

} // namespace orvo

#pragma once

#include "db/question.h"
#include "db/wide_statement.h"

#include <QSet>
#include <QStringList>

namespace orvo {

class save;
class save_log;
struct save_note;

/// One step of a save: its identity, by which notes know it and which must not change, and the operator's
/// word for it.
struct save_step {
    const char* id;
    const char* words;
};

/// The row that a change writes, and what of it: so that a change that was begun earlier is not finished over
/// a newer one.
struct changed_record {
    std::string_view text; ///< brings the row
    struct field {
        std::string_view column;
        std::string_view slot;
    };
    std::vector<field> (*fields)();
};

/// What a save does, in its order.
struct save_act {
    const char* name;     ///< in notes; must not change
    const char* words;    ///< to the operator
    void (*steps)(save&); ///< from the first, at each try
    const changed_record* changes = nullptr;
    /// Why a save that was begun earlier must not be finished on the register as it is now, beside what
    /// `changes` tells of the first step; empty where it may.
    QString (*objection)(save&) = nullptr;
};

/// A save that is ready to be carried out.
struct planned_save {
    const save_act* act;
    QString pers_no; ///< whose records they are
    values given;    ///< what the slots of its texts take
    /// What stood there before, by column; under the name of a key the keys of the rows, parted by commas.
    values before = {};
};

/// By what a row is found again that must not be stored twice: a text that brings the keys of all rows that
/// look like it. Those among planned_save::before are others.
struct lookalikes_of_row {
    std::string_view text;
    std::string_view key;
};

/// The writes of one save, each an own step. A save is no transaction: what was stored stays, so a failure
/// tells what that was, and the same save goes on behind it, as often as it breaks. Before its first step it
/// is noted in the log, where there is one.
class save {
public:
    save(planned_save what, connection& db, connection& local, save_log* log = nullptr);
    /// One that was begun earlier, under that number of its note, and has stored those steps.
    save(planned_save what, connection& db, connection& local, save_log& log, const save_note& begun);

    /// All steps, from the first: those that are stored are skipped, and one that may be is looked for.
    /// Throws db_failure with what is stored and what is missing.
    void carry_out();
    /// What is missing is not to come.
    void give_up();
    /// Why it must not be finished on the register as it is now; empty where it may. Throws db_failure.
    QString objection();

    /// Stored, as far as it is known, in the operator's words.
    const QStringList& stored() const { return stored_words_; }
    /// The same by identity.
    const QStringList& stored_steps() const { return stored_; }
    bool has_stored(const save_step& step) const { return stored_.contains(QLatin1String{step.id}); }
    /// Whether something of it is stored, or may be: from now on it is this save that goes on.
    bool is_begun() const { return !stored_.isEmpty() || is_in_doubt(); }
    /// Whether a step was sent and not answered.
    bool is_in_doubt() const { return !doubtful_.isEmpty(); }
    bool is_over() const { return is_over_; }
    const planned_save& plan() const { return plan_; }

    /// Hears what a save passes over that the form offers, between the steps.
    std::function<void(const QString&)> on_remark;

    // For the acts. A text takes what was planned, and `more`.

    /// A write of which twice does what once does.
    void write(const save_step& step, std::string_view text, const values& more = {});
    /// The same in this workstation's copy of the last search.
    void write_here(const save_step& step, std::string_view text);
    /// A write that must not come twice.
    void write_once(const save_step& step, std::string_view text, const lookalikes_of_row& alike);
    /// What a step is made from, asked between the writes: it fails as that step does.
    template <typename... answers>
    std::tuple<answers...> ask_together(const save_step& for_what, const question<answers>&... each)
    {
        return answers_of(read_together(for_what, {each.asked...}), each...);
    }
    template <typename answer>
    answer ask(const save_step& for_what, const question<answer>& one)
    {
        return std::get<0>(ask_together(for_what, one));
    }
    /// Whether a row that may be stored by an earlier try is there. Asks nothing where there was none.
    bool finds(const lookalikes_of_row& alike);
    bool has(std::string_view slot) const { return plan_.given.find(slot); }
    QString given(std::string_view slot) const { return QString::fromStdString(plan_.given.of(slot)); }
    connection& db() { return db_; }
    void remark(const QString& what)
    {
        if (on_remark)
            on_remark(what);
    }

private:
    planned_save plan_;
    connection& db_;
    connection& local_;
    save_log* log_;
    QString note_;
    bool is_noted_ = false;
    bool was_begun_earlier_ = false;
    bool is_over_ = false;
    QStringList stored_; ///< by identity
    QStringList stored_words_;
    QString doubtful_; ///< the step that was sent and not answered, by identity and in words
    QString doubtful_words_;
    QSet<QString> passed_; ///< in this try

    std::vector<rows> read_together(const save_step& for_what,
                                    std::initializer_list<connection::query> queries);
    void run(const save_step& step, connection& on, std::string_view text, const values& more,
             const lookalikes_of_row* alike);
    void begin_note();
    void mark(const save_step& step);
    template <typename act>
    auto towards(const save_step& what, act sent);
};

/// The columns of a wide statement as changed_record takes them, and what a row held in them. The date of the
/// last change is none of them.
std::vector<changed_record::field> changed_fields(const std::vector<column_value>& columns);
values values_before(const std::vector<column_value>& columns, const rows::row& row);

/// The keys in a column of the rows, as planned_save::before takes them.
QString keys_of(const rows& found, std::string_view key);

} // namespace orvo

#pragma once

#include "client/save.h"

#include <QDateTime>

#include <map>
#include <span>

namespace orvo {

class client;

enum class save_end {
    finished,       ///< all of it is stored
    nothing_stored, ///< it broke before anything was
    given_up        ///< what is missing is not to come
};

/// A save as it is noted: what was to be done, by whom, and how far it came.
struct save_note {
    QString id;
    QString act; ///< save_act::name
    QString act_words;
    QString operator_id;
    QString operator_name;
    QString pers_no;
    QDateTime begun_at;
    values given;
    values before;
    QStringList stored; ///< steps by identity
    QStringList stored_words;
    bool is_over = false;
};

/// Who saves.
struct save_author {
    QString id;
    QString name;
    QDateTime now;
};

/// The notes of this workstation's saves: the file `orvo.saves` beside the local file, a line an entry, which
/// only its owner can read. A save is noted on the disk before its first step, so that one that the program
/// or the machine died in is known at the next start. Web passwords are kept in memory alone. Where the file
/// cannot be written, saves go on without notes, and `on_failure` hears of it once.
class save_log {
public:
    save_log(QString path, std::function<save_author()> author)
        : path_{std::move(path)}, author_{std::move(author)}
    {
    }
    ~save_log();
    save_log(const save_log&) = delete;
    save_log& operator=(const save_log&) = delete;

    std::function<void(const QString& why)> on_failure;

    // For saves.
    QString begin(const planned_save& what);
    void mark(const QString& note, const save_step& step);
    void end(const QString& note, save_end how);

    /// Those that have not come to their end, the oldest first.
    std::vector<save_note> unfinished() const;
    /// Drops what ended before today. At the start of the program.
    void tidy(QDate today);
    /// What the note planned, with what only this program's memory holds. Nothing where it is of none
    /// of the acts.
    std::optional<planned_save> plan_of(const save_note& note, std::span<const save_act* const> acts) const;

private:
    QString path_;
    std::function<save_author()> author_;
    std::map<QString, values> secrets_; ///< by note
    int file_ = -1;
    bool has_failed_ = false;

    bool append(const QByteArray& line, bool to_the_disk);
};

/// The notes in such a file; what a fall has torn is passed over.
std::vector<save_note> read_save_notes(const QString& path);

} // namespace orvo

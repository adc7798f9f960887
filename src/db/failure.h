#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <exception>

namespace orvo {

enum class failure_kind {
    line_lost,       ///< the server cannot be reached, or is reached no more
    login_refused,   ///< the server does not let the user in; a missing right to a table is `other`
    overflow,        ///< a value is beyond what its column holds
    duplicate,       ///< a key exists already
    conversion,      ///< a text that should be a number is none
    cancelled,       ///< the operator ended the statement
    timed_out,       ///< the statement ran beyond its time
    outcome_unknown, ///< a write was sent and not answered: it may be stored or not
    disk_full,
    damaged, ///< the file is no database, or a broken one
    other
};

/// The one failure of the database layer. `number()` is the error number by which operators and the shared
/// error box know a failure; `text()` is the engine's own text; `statement()` the text that failed, with its
/// slots unfilled (it never holds a member's data).
class db_failure : public std::exception {
public:
    db_failure(failure_kind kind, QString text, QString statement = {}, QString code = {});

    failure_kind kind() const { return kind_; }
    std::int32_t number() const;
    const QString& text() const { return text_; }
    const QString& statement() const { return statement_; }
    /// The engine's own number or sign of the failure; empty where there is none.
    const QString& code() const { return code_; }
    /// The engine's text, its code and the statement, for whoever looks into the failure.
    QString details() const;
    const char* what() const noexcept override { return bytes_.constData(); }

    /// What a save had stored before it broke, and what it was about to store: in the operator's words.
    const QStringList& stored() const { return stored_; }
    const QString& missing() const { return missing_; }
    /// How far a run over many rows had come, in a sentence; empty where it was none.
    const QString& how_far() const { return how_far_; }

    /// Tells which statement failed, unless somebody nearer to it has told already.
    void name(const QString& statement)
    {
        if (statement_.isEmpty())
            statement_ = statement;
    }
    /// The file or folder that failed; empty where it is none of this computer's.
    const QString& place() const { return place_; }
    db_failure at(QString place) const;
    db_failure behind(QStringList stored, QString missing) const;
    db_failure within(QString how_far) const;
    /// The same, of a write that may have been carried out all the same.
    db_failure in_doubt() const;

private:
    failure_kind kind_;
    QString text_;
    QString statement_;
    QString code_;
    QString place_;
    QStringList stored_;
    QString missing_;
    QString how_far_;
    QByteArray bytes_;
};

/// Error numbers that the shared error box tells apart.
namespace error_number {
inline constexpr auto unreachable = static_cast<std::int32_t>(0x80004005);
inline constexpr auto login_refused = static_cast<std::int32_t>(0x80040E4D);
inline constexpr auto overflow = static_cast<std::int32_t>(0x80040E57);
inline constexpr std::int32_t file_dialog_cancelled = 0x7FF3;
} // namespace error_number

} // namespace orvo

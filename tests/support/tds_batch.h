#pragma once

#include "db/failure.h"
#include "db/values.h"
#include "support/tds_tokens.h"

#include <QStringList>

namespace orvo {

/// What the server does with a batch.
enum class batch_kind { statement, definition, setting, begin, commit, roll_back };

batch_kind kind_of_batch(QStringView batch);

/// A statement as the client's own layer takes it. Literals are slots in it, so that a brace in a value is a
/// letter, and statements that differ in their values alone are prepared once.
struct slotted_batch {
    std::string text;
    values given;
};

/// The statements of a batch, which semicolons part.
QStringList statements_of(const QString& batch);

/// One statement; of an insert of several rows one for each. Throws tds_error on a literal that does not end,
/// and on what no statement of the client has outside its literals: a comment, a semicolon.
std::vector<slotted_batch> with_slots(const QString& batch);

/// A definition of tables in the words of the embedded engine, whose strict tables refuse types that are not
/// put into them. It changes no column's type in one statement.
QStringList in_embedded_words(QString definition);

tds_error syntax_error(const QString& near);
/// A failure of the embedded engine in a server's numbers and words.
tds_error error_of(const db_failure& failure);

} // namespace orvo

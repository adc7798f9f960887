#include "support/tds_batch.h"

#include <QRegularExpression>

#include <array>

namespace orvo {

namespace {

bool is_of_a_word(QChar letter)
{
    return letter.isLetterOrNumber() || letter == u'_';
}

QString first_word(QStringView batch)
{
    const QStringView trimmed = batch.trimmed();
    qsizetype end = 0;
    while (end < trimmed.size() && is_of_a_word(trimmed[end]))
        ++end;
    return trimmed.left(end).toString().toLower();
}

/// Walks over a batch once.
class slotter {
public:
    explicit slotter(const QString& batch) : batch_{batch}, is_insert_{first_word(batch) == u"insert"} {}

    std::vector<slotted_batch> write()
    {
        while (at_ < batch_.size()) {
            const QChar letter = batch_[at_];
            if (letter == u'\'')
                write_literal();
            else if (letter.isDigit() && is_value())
                write_number();
            else
                write_letter(letter);
        }
        end_statement();
        return std::move(statements_);
    }

private:
    const QString& batch_;
    const bool is_insert_;
    qsizetype at_ = 0;
    int slots_ = 0;
    int depth_ = 0;
    QString before_rows_; // of an insert, up to its first row
    QString text_;
    values given_;
    std::vector<slotted_batch> statements_;

    void end_statement()
    {
        statements_.push_back({text_.toStdString(), std::exchange(given_, {})});
        slots_ = 0;
    }

    QString slot_of(const QString& value)
    {
        const QString name = QString::number(++slots_);
        given_.add({name.toStdString(), value});
        return u'{' + name + u'}';
    }

    void write_literal()
    {
        const bool is_national = text_.endsWith(u'N', Qt::CaseInsensitive) &&
                                 (text_.size() == 1 || !is_of_a_word(text_[text_.size() - 2]));
        if (is_national)
            text_.chop(1);
        QString value;
        for (++at_; at_ < batch_.size(); ++at_) {
            if (batch_[at_] == u'\'') {
                ++at_;
                if (at_ == batch_.size() || batch_[at_] != u'\'') {
                    text_ += u'\'' + slot_of(value) + u'\'';
                    return;
                }
            }
            value += batch_[at_];
        }
        throw tds_error{
            105, QStringLiteral("Unclosed quotation mark after the character string '%1'.").arg(value), 15};
    }

    /// Whether the digits that come are compared, stored or calculated with, and no part of a name.
    bool is_value() const
    {
        if (!text_.isEmpty() && is_of_a_word(text_.back()))
            return false;
        const QStringView before = QStringView{text_}.trimmed();
        const QStringView signs = is_insert_ ? QStringView{u"=<>+-*,("} : QStringView{u"=<>+-*"};
        return !before.isEmpty() && signs.contains(before.back());
    }

    void write_number()
    {
        const qsizetype from = at_;
        while (at_ < batch_.size() && batch_[at_].isDigit())
            ++at_;
        text_ += slot_of(batch_.mid(from, at_ - from));
    }

    void write_letter(QChar letter)
    {
        const QStringView rest = QStringView{batch_}.mid(at_);
        for (const QStringView comment : {u"--", u"/*"})
            if (rest.startsWith(comment))
                throw syntax_error(comment.toString());
        const bool is_last = rest.mid(1).trimmed().isEmpty();
        if (letter == u'{' || letter == u'}' || (letter == u';' && !is_last))
            throw syntax_error(letter);
        ++at_;
        if (letter == u'(' && depth_++ == 0 &&
            QStringView{text_}.trimmed().endsWith(u"values", Qt::CaseInsensitive))
            before_rows_ = text_;
        depth_ -= letter == u')';
        if (letter == u',' && depth_ == 0 && !before_rows_.isEmpty()) {
            end_statement();
            text_ = before_rows_;
        } else if (letter != u';') {
            text_ += letter;
        }
    }
};

} // namespace

batch_kind kind_of_batch(QStringView batch)
{
    static const std::array<std::pair<QStringView, batch_kind>, 10> known{
        {{u"", batch_kind::setting},
         {u"declare", batch_kind::setting}, // looks up the name of a default, which has none here
         {u"set", batch_kind::setting},
         {u"use", batch_kind::setting},
         {u"create", batch_kind::definition},
         {u"drop", batch_kind::definition},
         {u"alter", batch_kind::definition},
         {u"begin", batch_kind::begin},
         {u"commit", batch_kind::commit},
         {u"rollback", batch_kind::roll_back}}};
    const QString word = first_word(batch);
    for (const auto& [name, kind] : known)
        if (word == name)
            return kind;
    return batch_kind::statement;
}

QStringList statements_of(const QString& batch)
{
    QStringList all;
    bool is_literal = false;
    qsizetype begin = 0;
    for (qsizetype at = 0; at < batch.size(); ++at) {
        is_literal = is_literal != (batch[at] == u'\'');
        if (batch[at] == u';' && !is_literal) {
            all.append(batch.mid(begin, at - begin));
            begin = at + 1;
        }
    }
    if (!batch.mid(begin).trimmed().isEmpty() || all.empty())
        all.append(batch.mid(begin));
    return all;
}

std::vector<slotted_batch> with_slots(const QString& batch)
{
    return slotter{batch}.write();
}

QStringList in_embedded_words(QString definition)
{
    static const std::pair<QRegularExpression, QString> words[] = {
        {QRegularExpression{QStringLiteral("\\[(\\w+)\\]")}, QStringLiteral("\"\\1\"")},
        {QRegularExpression{QStringLiteral("\\bint identity\\(1,1\\) primary key")},
         QStringLiteral("integer primary key autoincrement")},
        {QRegularExpression{QStringLiteral("\\b(big)?int\\b")}, QStringLiteral("integer")},
        {QRegularExpression{QStringLiteral("\\bfloat\\b")}, QStringLiteral("real")},
        {QRegularExpression{QStringLiteral("\\bnvarchar\\(max\\)")}, QStringLiteral("text")},
        {QRegularExpression{QStringLiteral("(\\w+) nvarchar\\((\\d+)\\) not null( default '')?")},
         QStringLiteral("\\1 text not null default '' check(length(\\1)<=\\2)")},
    };
    static const QRegularExpression retyping{QStringLiteral("^alter table (\\w+) alter column (\\w+) (.*)$")};
    static const QRegularExpression adding_default{QStringLiteral("^alter table \\w+ add default ")};
    if (adding_default.match(definition).hasMatch())
        return {};
    for (const auto& [theirs, ours] : words)
        definition.replace(theirs, ours);
    if (const auto found = retyping.match(definition); found.hasMatch()) {
        const QString change = QStringLiteral("alter table %1 ").arg(found.captured(1));
        const QString name = found.captured(2);
        QString type = found.captured(3).replace(u'(' + name + u')', QLatin1String{"(retyped)"});
        if (!type.contains(QLatin1String{"default"}))
            type += QLatin1String{" default 0"};
        return {change + QLatin1String{"add column retyped "} + type,
                QStringLiteral("update %1 set retyped=%2").arg(found.captured(1), name),
                change + QLatin1String{"drop column "} + name,
                change + QLatin1String{"rename column retyped to "} + name};
    }
    return {definition.startsWith(QLatin1String{"create table "}) ? definition + QLatin1String{" strict"}
                                                                  : definition};
}

tds_error syntax_error(const QString& near)
{
    return {102, QStringLiteral("Incorrect syntax near '%1'.").arg(near), 15};
}

tds_error error_of(const db_failure& failure)
{
    const QString& text = failure.text();
    const auto has = [&](const char* part) { return text.contains(QLatin1String{part}); };
    const QString name = text.section(QLatin1String{": "}, 1).trimmed();
    switch (failure.kind()) {
    case failure_kind::duplicate:
        return {2627,
                QStringLiteral("Violation of PRIMARY KEY constraint. Cannot insert duplicate key in object "
                               "'dbo.%1'.")
                    .arg(name.section(u'.', 0, 0)),
                14};
    case failure_kind::conversion:
        return {245,
                QStringLiteral("Conversion failed when converting the nvarchar value '%1' to data type int.")
                    .arg(text.section(u'"', 1, 1))};
    case failure_kind::overflow:
        if (has("length("))
            return {8152, QStringLiteral("String or binary data would be truncated."), 16, 14};
        return {8115, QStringLiteral("Arithmetic overflow error converting expression to data type int."), 16,
                2};
    case failure_kind::timed_out:
        return {1222, QStringLiteral("Lock request time out period exceeded.")};
    default:
        break;
    }
    if (has("integer overflow"))
        return {8115, QStringLiteral("Arithmetic overflow error converting expression to data type bigint."),
                16, 2};
    if (has("no such table"))
        return {208, QStringLiteral("Invalid object name '%1'.").arg(name)};
    if (has("no such column") || has("has no column named"))
        return {207, QStringLiteral("Invalid column name '%1'.").arg(text.section(u' ', -1))};
    static const QRegularExpression near{QStringLiteral("near \"(.*)\": syntax error")};
    if (const auto found = near.match(text); found.hasMatch())
        return syntax_error(found.captured(1));
    return {50000, text};
}

} // namespace orvo

#include "setup/delimited_text.h"

#include "base/cp949.h"
#include "setup/refusal.h"

#include <algorithm>
#include <optional>

namespace orvo::setup {

namespace {

constexpr qint64 beginning = 256 * 1024; // what is looked at before the first line is taken
constexpr qint64 longest_line = 64 * 1024;
constexpr QByteArrayView byte_order_mark{"\xEF\xBB\xBF"};

/// A line of one encoding hardly ever is text in the other too. The lines decide together, so that a damaged
/// one is rejected and does not turn all others into another language.
text_encoding encoding_of(const QByteArray& bytes)
{
    int utf8 = 0;
    int other = 0;
    for (const QByteArray& line : bytes.split('\n')) {
        if (!line.isValidUtf8())
            ++other;
        else if (std::ranges::any_of(line, [](char each) { return (each & 0x80) != 0; }))
            ++utf8;
    }
    return other > utf8 ? text_encoding::cp949 : text_encoding::utf8;
}

/// The delimiters are bytes of their own in either encoding.
char delimiter_of(QByteArrayView line)
{
    char best = 0;
    qsizetype most = 0;
    for (const char candidate : {'\t', '|', ';', ','}) {
        bool quoted = false;
        qsizetype count = 0;
        for (const char each : line) {
            quoted = quoted != (each == '"');
            count += !quoted && each == candidate;
        }
        if (count > most) {
            most = count;
            best = candidate;
        }
    }
    return best;
}

} // namespace

delimited_text::delimited_text(const QString& path, text_encoding encoding) : file_{path}, encoding_{encoding}
{
    if (!file_.open(QIODevice::ReadOnly))
        throw refusal{path.toStdString() + " cannot be read: " + file_.errorString().toStdString()};
    look_at_beginning();
}

void delimited_text::look_at_beginning()
{
    QByteArray bytes = file_.peek(beginning);
    const bool is_marked = bytes.startsWith(byte_order_mark);
    if (encoding_ == text_encoding::recognised)
        encoding_ = is_marked ? text_encoding::utf8 : encoding_of(bytes);
    if (is_marked && encoding_ == text_encoding::utf8) {
        file_.skip(byte_order_mark.size());
        bytes.remove(0, byte_order_mark.size());
    }
    for (const QByteArray& each : bytes.split('\n')) {
        if (each.trimmed().isEmpty())
            continue;
        const char found = delimiter_of(each);
        if (found == 0)
            throw refusal{"the first line of " + file_.fileName().toStdString() +
                          " has no tab, comma, semicolon or | between its fields"};
        delimiter_ = QLatin1Char{found};
        return;
    }
}

QByteArray delimited_text::read_line()
{
    QByteArray bytes = file_.readLine(longest_line);
    const bool is_whole = bytes.endsWith('\n') || file_.atEnd();
    for (QByteArray rest = bytes; !rest.isEmpty() && !rest.endsWith('\n');)
        rest = file_.readLine(longest_line);
    if (file_.error() != QFileDevice::NoError)
        throw refusal{file_.fileName().toStdString() +
                      " cannot be read to its end: " + file_.errorString().toStdString()};
    fault_ = is_whole ? "" : "the line is too long";
    return bytes;
}

bool delimited_text::next()
{
    for (QByteArray bytes = read_line(); !bytes.isEmpty(); bytes = read_line()) {
        ++line_;
        if (bytes.trimmed().isEmpty())
            continue;
        if (fault_.empty())
            cut(bytes);
        return true;
    }
    return false;
}

void delimited_text::cut(const QByteArray& bytes)
{
    const bool is_utf8 = encoding_ == text_encoding::utf8;
    std::optional<QString> text;
    if (!bytes.contains('\0') && (!is_utf8 || bytes.isValidUtf8()))
        text = is_utf8 ? QString::fromUtf8(bytes) : from_cp949(bytes);
    if (!text)
        fault_ = is_utf8 ? "holds bytes that are no text in UTF-8" : "holds bytes that are no text in cp949";
    else if (!cut_fields(*text))
        fault_ = "a quote is not closed";
}

bool delimited_text::cut_fields(QStringView text)
{
    fields_.clear();
    QString field;
    bool quoted = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar each = text[i];
        if (quoted && each == u'"' && i + 1 < text.size() && text[i + 1] == u'"') {
            field += each;
            ++i;
        } else if (quoted && each == u'"') {
            quoted = false;
        } else if (!quoted && each == u'"' && QStringView{field}.trimmed().isEmpty()) {
            quoted = true;
            field.clear();
        } else if (!quoted && each == delimiter_) {
            fields_.append(field.trimmed());
            field.clear();
        } else {
            field += each;
        }
    }
    fields_.append(field.trimmed());
    return !quoted;
}

} // namespace orvo::setup

#pragma once

#include <QFile>
#include <QStringList>

#include <string>

namespace orvo::setup {

enum class text_encoding { recognised, utf8, cp949 };

/// A file of rows, one a line, their fields parted by the tab, comma, semicolon or `|` that the first line
/// holds most of. Fields may stand in double quotes. Read line by line, however large the file is.
class delimited_text {
public:
    /// Throws refusal where the file cannot be read, or its first line holds no delimiter.
    delimited_text(const QString& path, text_encoding encoding);

    /// Goes to the next line that is not blank; false at the end. Throws refusal where reading fails.
    bool next();
    /// The number of the line in the file, from 1.
    qint64 line() const { return line_; }
    /// Why the line cannot be cut into fields; empty where it can.
    const std::string& fault() const { return fault_; }
    /// Without the blanks around them.
    const QStringList& fields() const { return fields_; }

private:
    QFile file_;
    text_encoding encoding_;
    QChar delimiter_;
    qint64 line_ = 0;
    std::string fault_;
    QStringList fields_;

    void look_at_beginning();
    QByteArray read_line();
    void cut(const QByteArray& bytes);
    bool cut_fields(QStringView text);
};

} // namespace orvo::setup

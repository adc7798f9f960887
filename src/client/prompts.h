#pragma once

#include <QString>
#include <QStringList>

namespace orvo {

enum class sign { none, information, exclamation, critical };
enum class answer { first, second };

/// A box for the operator. Without a title of its own it bears the program's.
struct message {
    QString text;
    QString title = {};
    sign icon = sign::none;
    QString details = {}; ///< for whom the operator calls for help
    QString about = {};   ///< said below the text, in a smaller voice
};

/// A file that is to be written. Without a path where the operator cancelled.
struct file_to_be {
    QString path;
    int filter = 0; ///< the place of the one that it was named under
};

/// All that interrupts the operator passes here, so that tests can answer.
class prompts {
public:
    virtual ~prompts() = default;
    virtual void tell(const message& what) = 0;
    /// True where the operator chose the first of the two answers. Closing the box is the second; Enter is
    /// `usual`.
    virtual bool ask(const message& what, const QString& first, const QString& second,
                     answer usual = answer::first) = 0;
    /// Asks for the name of a file to write. A filter is a text and what it lets through, as in
    /// "엑셀파일(*.xls)|*.xls"; `selected` is the place of the one that stands at first. The name has the
    /// ending of a filter, and may be that of a file that the operator is willing to lose.
    virtual file_to_be file_to_write(const QStringList& filters, int selected = 0) = 0;
    /// Said in passing, in the status bar.
    virtual void note(const QString& text) = 0;
    /// A file turned out damaged. True where it was the workstation's own and has been made anew, so that the
    /// operator can do again what failed.
    virtual bool mend_local_file() { return false; }
};

} // namespace orvo

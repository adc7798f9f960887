#include "ui/amount_field.h"

#include "base/amount.h"
#include "ui/controls.h"
#include "ui/theme.h"

#include <QFocusEvent>

namespace orvo {

amount_field::amount_field(const QString& name, int shown, amount_kind kind) : kind_{kind}
{
    setObjectName(name);
    setAlignment(Qt::AlignRight);
    setMinimumWidth(room_for(this, shown) + 14);
    connect(this, &QLineEdit::textEdited, this, [this] { mark({}); });
}

QString amount_field::amount() const
{
    if (is_untouched())
        return stored_;
    const typed_amount read = read_amount(text(), kind_);
    return read.number ? QString::number(*read.number) : QString{};
}

QString amount_field::refusal() const
{
    return is_untouched() ? QString{} : read_amount(text(), kind_).refusal;
}

void amount_field::set_amount(const QString& stored)
{
    bool is_whole = false;
    const qint64 number = stored.toLongLong(&is_whole);
    stored_ = stored;
    shown_ = is_whole ? with_separators(number) : stored;
    setText(shown_);
    mark({});
}

void amount_field::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    // Neither a menu of the field nor another window ends the typing.
    if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason ||
        is_untouched())
        return;
    const typed_amount read = read_amount(text(), kind_);
    if (read.refusal.isEmpty())
        setText(read.number ? with_separators(*read.number) : QString{});
    mark(read.refusal);
}

/// An empty sentence takes the mark away. The toolkit reads the tip to those who do not see it.
void amount_field::mark(const QString& sentence)
{
    setToolTip(sentence);
    QPalette p;
    if (!sentence.isEmpty())
        p.setColor(QPalette::Text, colours().required);
    setPalette(p);
}

} // namespace orvo

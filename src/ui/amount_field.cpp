#include "ui/amount_field.h"

#include "base/amount.h"
#include "base/typed.h"
#include "ui/controls.h"
#include "ui/theme.h"

#include <QFocusEvent>

namespace orvo {

amount_field::amount_field(const QString& name, int shown)
{
    setObjectName(name);
    setAlignment(Qt::AlignRight);
    setMinimumWidth(room_for(this, shown) + 14);
    connect(this, &QLineEdit::textEdited, this, [this] { mark({}); });
}

QString amount_field::amount() const
{
    const typed_amount read = read_amount(text());
    return read.won ? QString::number(*read.won) : QString{};
}

QString amount_field::refusal() const
{
    return read_amount(text()).refusal;
}

void amount_field::set_amount(const QString& stored)
{
    bool is_whole = false;
    const qint64 number = stored.toLongLong(&is_whole);
    setText(is_whole ? with_separators(number) : stored);
    mark(refusal());
}

void amount_field::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    // Neither a menu of the field nor another window ends the typing.
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        set_amount(refusal().isEmpty() ? amount() : text());
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

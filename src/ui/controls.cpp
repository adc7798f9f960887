#include "ui/controls.h"

#include "ui/icons.h"
#include "ui/style.h"
#include "ui/theme.h"

#include <QFontMetrics>
#include <QRegularExpressionValidator>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QStyleOptionComboBox>
#include <QWheelEvent>

namespace orvo {

int room_for(const QWidget* field, int characters)
{
    return field->fontMetrics().horizontalAdvance(u'0') * characters;
}

QLineEdit* text_field(const QString& name, int shown, int longest)
{
    auto* field = new QLineEdit;
    set_up_text_field(*field, name, shown, longest);
    return field;
}

void set_up_text_field(QLineEdit& field, const QString& name, int shown, int longest)
{
    field.setObjectName(name);
    field.setMinimumWidth(room_for(&field, shown) + 14);
    if (longest > 0)
        field.setMaxLength(longest);
}

QLineEdit* digits_field(const QString& name, int shown, int longest)
{
    QLineEdit* field = text_field(name, shown, longest);
    field->setValidator(new QRegularExpressionValidator{QRegularExpression{QStringLiteral("[0-9]*")}, field});
    return field;
}

QPushButton* button(const QString& name, const QString& caption, const char* icon_name)
{
    auto* made = new QPushButton{caption};
    made->setObjectName(name);
    made->setAutoDefault(false);
    if (icon_name)
        made->setIcon(icon(icon_name));
    return made;
}

QToolButton* picker_button(const QString& name, const QString& what, std::initializer_list<QWidget*> fields,
                           const char* icon_name)
{
    auto* made = new QToolButton;
    made->setObjectName(name);
    made->setIcon(icon(icon_name));
    made->setAutoRaise(true);
    made->setFocusPolicy(Qt::NoFocus);
    made->setToolTip(what + QStringLiteral(" (F2)"));
    made->setAccessibleName(what);
    for (QWidget* field : fields) {
        auto* key = new QShortcut{QKeySequence{Qt::Key_F2}, field};
        key->setContext(Qt::WidgetShortcut);
        QObject::connect(key, &QShortcut::activated, made, &QToolButton::click);
    }
    return made;
}

QPushButton* primary_button(const QString& name, const QString& caption, const char* icon_name)
{
    QPushButton* made = button(name, caption);
    made->setIcon(icon(icon_name, colours().on_accent));
    made->setPalette(main_button_palette());
    mark_as_main(*made);
    made->setDefault(true);
    return made;
}

code_list::code_list(const QString& name, int shown)
{
    setObjectName(name);
    setMinimumWidth(room_for(this, shown) + 30);
    setMaxVisibleItems(20);
    setFocusPolicy(Qt::StrongFocus); // the wheel gives no focus
}

void code_list::add(const QString& text, qint64 code)
{
    addItem(text, code);
}

void code_list::fill(const rows& from, std::string_view text_column, std::string_view code_column)
{
    clear();
    for (const auto row : from)
        add(row.text(text_column), row.number(code_column));
    setCurrentIndex(-1);
}

bool code_list::keep_only(const rows& these, std::string_view text_column, std::string_view code_column)
{
    const auto is_kept = [&](int at) {
        for (const auto row : these)
            if (row.number(code_column) == itemData(at).toLongLong() && row.text(text_column) == itemText(at))
                return true;
        return false;
    };
    const bool loses_choice = currentIndex() >= 0 && !is_kept(currentIndex());
    if (loses_choice)
        setCurrentIndex(-1); // or a neighbour would be chosen in its place
    for (int at = count(); at-- > 0;)
        if (!is_kept(at))
            removeItem(at);
    return !loses_choice;
}

QString code_list::code() const
{
    return currentIndex() < 0 ? QString{} : currentData().toString();
}

void code_list::choose_code(qint64 code)
{
    setCurrentIndex(findData(code));
}

void code_list::choose_text(const QString& text)
{
    setCurrentIndex(findText(text, Qt::MatchExactly));
}

QSize code_list::sizeHint() const
{
    QStyleOptionComboBox look;
    initStyleOption(&look);
    const QSize content{0, qMax(fontMetrics().height(), iconSize().height()) + 2};
    return style()->sizeFromContents(QStyle::CT_ComboBox, &look, content, this);
}

void code_list::keyPressEvent(QKeyEvent* event)
{
    const QScopedValueRollback stepping{is_stepped_through_, true};
    QComboBox::keyPressEvent(event);
}

void code_list::wheelEvent(QWheelEvent* event)
{
    hasFocus() ? QComboBox::wheelEvent(event) : event->ignore();
}

code_list* text_list(const QString& name, const QStringList& texts, int shown)
{
    auto* list = new code_list{name, shown};
    list->addItems(texts);
    list->setCurrentIndex(-1);
    return list;
}

QStringList two_digit_texts(int first, int last)
{
    QStringList texts;
    for (int i = first; i <= last; ++i)
        texts.append(QStringLiteral("%1").arg(i, 2, 10, QLatin1Char{'0'}));
    return texts;
}

} // namespace orvo

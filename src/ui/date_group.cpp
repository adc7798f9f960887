#include "ui/date_group.h"

#include "base/typed.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QPointer>
#include <QStylePainter>
#include <QTimer>
#include <QToolTip>

#include <array>
#include <memory>

namespace orvo {

namespace {

class date_list;

/// What the lists of a group know of each other. They are deleted one by one, in whatever order.
struct neighbours {
    std::array<QPointer<date_list>, 3> lists; // in the order of date_part
    date_group::clock now;
    int first_year = orvo::first_year;

    bool has_days() const { return lists[2] != nullptr; }
};

/// Whether the focus only visits a menu or another window, which ends no typing.
bool is_passing(const QFocusEvent* event)
{
    return event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason;
}

/// Nothing is no choice, also where a list ends with an empty item: the arrow keys then begin at its top.
void show_part(code_list& list, const QString& text)
{
    text.isEmpty() ? list.setCurrentIndex(-1) : list.choose_text(text);
}

class date_list : public code_list {
public:
    date_list(const QString& name, date_part part, const QStringList& texts,
              std::shared_ptr<neighbours> group);

    /// Reads what was typed since the last choice and spreads it over the group.
    void take();
    /// Chooses the part of that text, or none, as the operator's choice.
    void choose(const QString& text);
    /// Why what was typed here was put back; an empty sentence when asked again.
    QString withdraw_refusal();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    typed_date read(const QString& typed) const;
    bool is_pending() const { return currentText() != itemText(currentIndex()); }
    void put_today();
    void spread(const typed_date& date);
    void settle();
    void refuse(const QString& sentence);
    void say(const QString& sentence);

    const date_part part_;
    const std::shared_ptr<neighbours> group_;
};

date_list::date_list(const QString& name, date_part part, const QStringList& texts,
                     std::shared_ptr<neighbours> group)
    : code_list{name, part == date_part::year ? 5 : 3}, part_{part}, group_{std::move(group)}
{
    addItems(texts);
    setCurrentIndex(-1);
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    QPalette see_through = lineEdit()->palette();
    see_through.setColor(QPalette::Base, Qt::transparent);
    lineEdit()->setPalette(see_through);
    connect(this, &QComboBox::editTextChanged, this, [this](const QString& text) {
        if (text.contains(u'+') || text.contains(u'＋'))
            put_today();
    });
    connect(lineEdit(), &QLineEdit::textEdited, this, [this] { say({}); });
    connect(this, &QComboBox::activated, this, &date_list::settle);
}

void date_list::choose(const QString& text)
{
    const int before = currentIndex();
    show_part(*this, text);
    if (currentIndex() != before)
        Q_EMIT activated(currentIndex());
}

void date_list::put_today()
{
    const QDate today = group_->now().date();
    spread(read(today.toString(group_->has_days() ? QStringLiteral("yyyyMMdd") : QStringLiteral("yyyyMM"))));
}

/// A month and day without a year are of the year that is chosen, or of this one.
typed_date date_list::read(const QString& typed) const
{
    if (!group_->has_days())
        return read_month(typed, part_);
    const date_list* years = group_->lists[0];
    const int chosen = years ? years->itemText(years->currentIndex()).toInt() : 0;
    const int bare_year = chosen > 0 ? chosen : group_->now().date().year();
    return read_date(typed, bare_year, part_, group_->first_year);
}

void date_list::take()
{
    if (!is_pending())
        return;
    const QString typed = currentText();
    const typed_date date = read(typed);
    if (!date.refusal.isEmpty())
        refuse(date.refusal);
    else if (typed.trimmed().isEmpty())
        choose({});
    else
        spread(date);
}

void date_list::spread(const typed_date& date)
{
    setCurrentIndex(currentIndex()); // another part may have been typed here
    const QPointer<date_list> still_there{this};
    const QString* parts[] = {&date.year, &date.month, &date.day};
    for (std::size_t i = 0; i < std::size(parts) && still_there; ++i)
        if (date_list* list = group_->lists[i]; list && !parts[i]->isEmpty())
            list->choose(*parts[i]);
    if (still_there)
        settle();
}

/// What stands here is the operator's choice, which the next typing replaces.
void date_list::settle()
{
    say({});
    if (hasFocus())
        lineEdit()->selectAll();
}

void date_list::refuse(const QString& sentence)
{
    setCurrentIndex(currentIndex());
    settle();
    say(sentence);
    // The focus that goes elsewhere right now would take the tip along.
    QTimer::singleShot(
        0, this, [this, sentence] { QToolTip::showText(mapToGlobal(rect().bottomLeft()), sentence, this); });
}

/// To those who do not see the tip; an empty sentence takes it back.
void date_list::say(const QString& sentence)
{
    if (toolTip() == sentence)
        return;
    setToolTip(sentence);
    QAccessibleEvent changed{this, QAccessible::DescriptionChanged};
    QAccessible::updateAccessibility(&changed);
}

QString date_list::withdraw_refusal()
{
    const QString sentence = toolTip();
    say({});
    return sentence;
}

/// Drawn like the lists beside it, in which nothing can be typed.
void date_list::paintEvent(QPaintEvent*)
{
    QStylePainter painter{this};
    QStyleOptionComboBox look;
    initStyleOption(&look);
    look.editable = false;
    painter.drawComplexControl(QStyle::CC_ComboBox, look);
}

void date_list::keyPressEvent(QKeyEvent* event)
{
    const bool is_enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool is_delete = event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace;
    if (is_enter) {
        // Enter that takes something is not the main button's as well.
        event->setAccepted(is_pending());
        take();
    } else if (is_delete && currentText().isEmpty()) {
        choose({});
    } else {
        code_list::keyPressEvent(event);
    }
}

/// What is typed replaces what stood there, also behind a click.
void date_list::focusInEvent(QFocusEvent* event)
{
    code_list::focusInEvent(event);
    if (is_passing(event))
        return;
    lineEdit()->selectAll();
    if (event->reason() == Qt::MouseFocusReason)
        QTimer::singleShot(0, lineEdit(), &QLineEdit::selectAll); // the click itself is still to come
}

void date_list::focusOutEvent(QFocusEvent* event)
{
    if (!is_passing(event))
        take();
    code_list::focusOutEvent(event);
}

QStringList years(int first)
{
    QStringList texts;
    for (int year = first; year <= last_year; ++year)
        texts.append(QString::number(year));
    return texts;
}

date_list* add_list(const std::shared_ptr<neighbours>& group, date_part part, const QString& name,
                    const QStringList& texts)
{
    auto* list = new date_list{name, part, texts, group};
    group->lists[static_cast<std::size_t>(part)] = list;
    return list;
}

/// The lists of the group, which are date_lists all.
template <typename action>
void for_each_list(const date_group& group, action act)
{
    for (code_list* each : {group.year, group.month, group.day})
        if (each)
            act(static_cast<date_list&>(*each));
}

} // namespace

date_group::date_group(const QString& year_name, const QString& month_name, const QString& day_name,
                       clock now, choices of)
{
    const auto group = std::make_shared<neighbours>();
    group->now = std::move(now);
    group->first_year = of.first_year;
    year = add_list(group, date_part::year, year_name, years(of.first_year));
    month = add_list(group, date_part::month, month_name, two_digit_texts(1, 12));
    day = day_name.isEmpty() ? nullptr : add_list(group, date_part::day, day_name, two_digit_texts(1, 31));
    if (of.end_with_an_empty_item)
        for_each_list(*this, [](date_list& each) { each.addItem({}); });
}

date_group::date_group(const QString& year_name, const QString& month_name, clock now)
    : date_group{year_name, month_name, {}, std::move(now)}
{
}

QString date_group::stored() const
{
    QString text;
    for_each_list(*this, [](date_list& each) { each.take(); });
    for_each_list(*this, [&](const date_list& each) { text += each.currentText(); });
    return text;
}

QString date_group::withdraw_refusal() const
{
    QString sentence;
    for_each_list(*this, [&](date_list& each) {
        each.take();
        if (const QString found = each.withdraw_refusal(); sentence.isEmpty())
            sentence = found;
    });
    return sentence;
}

void date_group::set(const QString& stored) const
{
    show_part(*year, stored.mid(0, 4));
    show_part(*month, stored.mid(4, 2));
    if (day)
        show_part(*day, stored.mid(6, 2));
}

void date_group::set_enabled(bool enabled) const
{
    for_each_list(*this, [enabled](date_list& each) { each.setEnabled(enabled); });
}

} // namespace orvo

#include "ui/form.h"

#include "ui/theme.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>
#include <QToolButton>

namespace orvo {

namespace {

constexpr int line_height = 26; // of the tallest control, so that forms side by side keep step

/// The caption, and the star of what must be filled in as a word of its own: marked-up text has no mnemonic.
QLayout* caption_cell(QLabel* label, bool is_required)
{
    auto* cell = new QHBoxLayout;
    cell->setSpacing(3); // as wide as a blank
    cell->addWidget(label);
    if (is_required) {
        auto* star = new QLabel{QStringLiteral("*")};
        star->setForegroundRole(QPalette::BrightText);
        cell->addWidget(star);
    }
    cell->addStretch();
    return cell;
}

/// A word between two controls belongs to the first as its unit, or leads to the second.
bool is_unit(const QString& word)
{
    static const QStringList units{QStringLiteral("년"), QStringLiteral("월"),   QStringLiteral("일"),
                                   QStringLiteral("원"), QStringLiteral("만원"), QStringLiteral("개월"),
                                   QStringLiteral("-")};
    return units.contains(word);
}

/// What a screen reader says of a control that has no words of its own.
void name_for_readers(QWidget* control, const QString& name)
{
    if (control->accessibleName().isEmpty() && !dynamic_cast<QAbstractButton*>(control))
        control->setAccessibleName(QString{name}.remove(u'&'));
}

/// The last control that is not a small button behind another.
const QWidget* last_field(const entry& described)
{
    const QWidget* last = nullptr;
    for (const entry::piece& piece : described.pieces)
        if (const auto* control = std::get_if<QWidget*>(&piece);
            control && !dynamic_cast<QToolButton*>(*control))
            last = *control;
    return last;
}

QLayout* strip(const entry& described, QLabel* label)
{
    auto* box = new QHBoxLayout;
    box->setSpacing(4);
    const QWidget* widest = described.fills ? last_field(described) : nullptr;
    int place = 0;
    QLabel* led_by = label;
    for (const entry::piece& piece : described.pieces) {
        if (const auto* text = std::get_if<const char*>(&piece)) {
            auto* word = new QLabel{QString::fromUtf8(*text)};
            box->addWidget(word);
            led_by = is_unit(word->text()) ? nullptr : word;
            continue;
        }
        QWidget* control = std::get<QWidget*>(piece);
        ++place;
        if (led_by)
            led_by->setBuddy(control);
        name_for_readers(control,
                         led_by ? led_by->text() : QStringLiteral("%1 %2").arg(described.caption).arg(place));
        led_by = nullptr;
        const bool takes_rest = control == widest;
        if (!takes_rest && control->minimumWidth() > 0)
            control->setFixedWidth(control->minimumWidth());
        box->addWidget(control, takes_rest ? 1 : 0);
    }
    if (!described.fills)
        box->addStretch();
    return box;
}

void add_part(QBoxLayout* to, const part& each, int stretch)
{
    if (const auto* widget = std::get_if<QWidget*>(&each))
        *widget ? to->addWidget(*widget, stretch) : to->addStretch();
    else
        to->addLayout(std::get<QLayout*>(each), stretch);
}

} // namespace

QLayout* form(const std::vector<entry>& rows, const QString& widest)
{
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(rhythm);
    grid->setVerticalSpacing(2);
    grid->setColumnStretch(1, 1);
    if (!widest.isEmpty())
        grid->setColumnMinimumWidth(0, QLabel{widest}.sizeHint().width());
    int at = 0;
    for (const entry& each : rows) {
        auto* label = new QLabel{each.caption};
        grid->setRowMinimumHeight(at, line_height);
        grid->addLayout(caption_cell(label, each.required), at, 0);
        grid->addLayout(strip(each, label), at++, 1);
    }
    grid->setRowStretch(at, 1);
    return grid;
}

QLayout* beside(std::initializer_list<QLayout*> parts, std::initializer_list<int> shares)
{
    auto* box = new QHBoxLayout;
    box->setSpacing(rhythm * 3);
    const int* share = shares.begin();
    for (QLayout* each : parts)
        box->addLayout(each, share == shares.end() ? 1 : *share++);
    return box;
}

QLayout* below(std::initializer_list<part> parts, int filling)
{
    auto* box = new QVBoxLayout;
    box->setSpacing(rhythm);
    int at = 0;
    for (const part& each : parts)
        add_part(box, each, at++ == filling ? 1 : 0);
    return box;
}

QLayout* line(std::initializer_list<part> parts)
{
    auto* box = new QHBoxLayout;
    box->setSpacing(rhythm);
    for (const part& each : parts)
        add_part(box, each, 0);
    return box;
}

QLabel* heading(const QString& text)
{
    auto* title = new QLabel{text};
    QFont face = title->font();
    face.setWeight(QFont::DemiBold);
    title->setFont(face);
    return title;
}

QLabel* quiet_line(const QString& name, int lines)
{
    auto* made = new QLabel;
    made->setObjectName(name);
    made->setForegroundRole(QPalette::PlaceholderText);
    made->setWordWrap(true);
    made->setFixedHeight(made->fontMetrics().lineSpacing() * lines);
    made->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    return made;
}

QWidget* group(const QString& name, const QString& title, QLayout* content)
{
    auto* made = new QWidget;
    made->setObjectName(name);
    auto* box = new QVBoxLayout{made};
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(rhythm / 2);
    box->addWidget(heading(title));
    box->addLayout(content, 1);
    made->setAccessibleName(title);
    return made;
}

} // namespace orvo

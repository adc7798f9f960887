#include "dues/screens/dues_dialog.h"

#include "dues/rules/yearly_dues.h"
#include "ui/amount_field.h"
#include "ui/controls.h"
#include "ui/member_panels.h"

#include <QLabel>

#include <algorithm>

namespace orvo {

namespace {

constexpr int least_width = 340; // pixels

QString in_words(const QString& val_year)
{
    if (val_year.isEmpty())
        return QStringLiteral("회비년도 선택 안 함");
    const bool is_year = std::ranges::all_of(val_year, [](QChar c) { return c.isDigit(); });
    return is_year ? val_year + QStringLiteral("년") : val_year;
}

} // namespace

dues_dialog::dues_dialog(const QString& name, client& c, desk& at, QWidget* over, dues_year year,
                         failures::policy how)
    : dialog{name, c, over}, year_{std::move(year)}, Image1{primary_button(QStringLiteral("Image1"),
                                                                           QStringLiteral("확인(&O)"),
                                                                           "save")},
      Image2{button(QStringLiteral("Image2"), QStringLiteral("취소(&C)"), "x")}, desk_{at}, how_{how},
      fields_{new QWidget}, hint_{new QLabel}, save_{c.db_conn}
{
    hint_->setObjectName(QStringLiteral("hint"));
    hint_->setForegroundRole(QPalette::PlaceholderText);
    hint_->setWordWrap(true);
    hint_->setAlignment(Qt::AlignTop);
    hint_->setMinimumWidth(least_width);
    hint_->setMinimumHeight(hint_->fontMetrics().lineSpacing() * 2); // so that no hint moves the buttons
    on_click(
        Image1, [this] { press_ok(); }, how_);
    connect(Image2, &QPushButton::clicked, this, [this] { reject(); });
}

QString dues_dialog::whose() const
{
    const QString name = member_name(c_.local_conn, year_.pers_no);
    return QStringLiteral("%1 (%2)  ·  %3").arg(name, year_.pers_no.left(6), in_words(year_.val_year));
}

void dues_dialog::open(const QString& title, QLayout* fields, const std::function<void()>& load)
{
    fields->setContentsMargins(0, 0, 0, 0);
    fields_->setLayout(fields);
    auto* who = new QLabel;
    who->setObjectName(QStringLiteral("who"));
    lay_out(
        below({heading(title), who, fields_, hint_, line({static_cast<QWidget*>(nullptr), Image1, Image2})}));
    Image1->setEnabled(failures::guard(c_.say, failures::policy::report,
                                       [&] {
                                           who->setText(whose());
                                           load();
                                       }) &&
                       Image1->isEnabled());
}

void dues_dialog::hint(const QString& sentence)
{
    hint_->setText(sentence);
}

void dues_dialog::close_to_saving(const QString& why)
{
    hint(why);
    fields_->setEnabled(false);
    Image1->setEnabled(false);
}

bool dues_dialog::takes(amount_field* amount)
{
    const QString why = amount->text().trimmed().isEmpty() ? QStringLiteral("금액을 입력하지 않으셨습니다.")
                                                           : amount->refusal();
    if (!why.isEmpty())
        refuse({why, {}, sign::exclamation}, amount);
    return why.isEmpty();
}

void dues_dialog::press_ok()
{
    if (!is_begun() && !passes_checks())
        return;
    if (!may_go_on(save_))
        return;
    if (!failures::guard(c_.say, how_, [this] { store(save_); }))
        return hold_what_is_stored();
    accept();
    refresh_panels();
}

/// Given up half way, a save has changed something all the same, or may have.
void dues_dialog::reject()
{
    dialog::reject();
    if (is_begun() || save_.is_in_doubt())
        refresh_panels();
}

/// On its own: a panel that cannot be read does not bring a stored save back to be saved again.
void dues_dialog::refresh_panels()
{
    if (member_panels* panels = desk_.panels())
        failures::guard(c_.say, failures::policy::report, [this, panels] { refresh(*panels); });
}

/// What is stored can no longer be typed otherwise: it would look as if the next press stored that.
void dues_dialog::hold_what_is_stored()
{
    if (!is_begun())
        return;
    hint(QStringLiteral("저장하다가 중단되었습니다. 저장된 것: %1. 다시 누르면 나머지를 이어서 저장합니다.")
             .arg(save_.stored().join(QStringLiteral(", "))));
    fields_->setEnabled(false);
    Image1->setFocus(Qt::OtherFocusReason);
}

} // namespace orvo

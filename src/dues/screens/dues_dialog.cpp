#include "dues/screens/dues_dialog.h"

#include "dues/rules/yearly_dues.h"
#include "ui/amount_field.h"

#include <algorithm>

namespace orvo {

namespace {

QString in_words(const QString& val_year)
{
    if (val_year.isEmpty())
        return QStringLiteral("회비년도 선택 안 함");
    const bool is_year = std::ranges::all_of(val_year, [](QChar c) { return c.isDigit(); });
    return is_year ? val_year + QStringLiteral("년") : val_year;
}

} // namespace

dues_dialog::dues_dialog(const QString& name, client& c, desk& at, QWidget* over, dues_year year,
                         failures::policy how, deed what)
    : save_dialog{name, c, at, over, how, what}, year_{std::move(year)}
{
}

QString dues_dialog::whose() const
{
    const QString name = member_name(c_.local_conn, year_.pers_no);
    return QStringLiteral("%1 (%2)  ·  %3").arg(name, year_.pers_no.left(6), in_words(year_.val_year));
}

bool dues_dialog::takes(amount_field* amount)
{
    const QString why = amount->text().trimmed().isEmpty() ? QStringLiteral("금액을 입력하지 않으셨습니다.")
                                                           : amount->refusal();
    if (!why.isEmpty())
        refuse({why, {}, sign::exclamation}, amount);
    return why.isEmpty();
}

} // namespace orvo

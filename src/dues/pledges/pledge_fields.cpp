#include "dues/pledges/pledge_fields.h"

#include "client/client.h"
#include "ui/enter_walk.h"

namespace orvo {

pledge_fields::pledge_fields(const client& c)
    : str_txt{new amount_field{QStringLiteral("str_txt"), 14, amount_kind::signed_won}},
      con_in{QStringLiteral("con_in_y_cbb"), QStringLiteral("con_in_m_cbb"), QStringLiteral("con_in_d_cbb"),
             c.now}
{
}

void pledge_fields::chain(enter_walk& walk, QWidget* last) const
{
    walk.chain({str_txt, con_in.year, con_in.month, con_in.day});
    if (last)
        walk.chain({con_in.day, last});
    walk.leave_alone(last ? last : con_in.day); // Enter there presses the main button
}

void pledge_fields::show(const instalment& paid) const
{
    str_txt->set_amount(paid.con_money);
    con_in.set(paid.con_date);
}

pledge_fields::refusal pledge_fields::check() const
{
    const QString missing = QStringLiteral("금액 및 날짜를 입력하지 않으셨습니다.");
    if (str_txt->text().trimmed().isEmpty())
        return {missing, str_txt};
    if (const QString why = str_txt->refusal(); !why.isEmpty())
        return {why, str_txt};
    if (const QString why = con_in.withdraw_refusal(); !why.isEmpty())
        return {why, con_in.year};
    for (code_list* each : {con_in.year, con_in.month, con_in.day})
        if (each->currentText().isEmpty())
            return {missing, each};
    return {{}, nullptr};
}

} // namespace orvo

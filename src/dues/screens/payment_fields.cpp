#include "dues/screens/payment_fields.h"

#include "client/client.h"
#include "ui/enter_walk.h"
#include "ui/form.h"

namespace orvo {

namespace {

constexpr int first_year_of_payments = 2000;

payment_date date_of(const QString& stem, const client& c)
{
    return {stem + QStringLiteral("_y_cbb"),
            stem + QStringLiteral("_m_cbb"),
            stem + QStringLiteral("_d_cbb"),
            c.now,
            {first_year_of_payments, true}};
}

} // namespace

void payment_date::show(const QString& stored_before)
{
    set(stored_before);
    stored_ = stored_before;
    shown_ = stored();
}

void payment_date::drop()
{
    show({});
}

payment_fields::payment_fields(const client& c)
    : receipt_cbb{new code_list{QStringLiteral("receipt_cbb"), 20}}, con_in{date_of(QStringLiteral("con_in"),
                                                                                    c)},
      b_in{date_of(QStringLiteral("b_in"), c)}, str_txt{new amount_field{QStringLiteral("str_txt"), 14,
                                                                         amount_kind::signed_won}}
{
}

QLayout* payment_fields::rows(bool place_is_required) const
{
    return form(
        {entry{QStringLiteral("입금장소"), {receipt_cbb}, place_is_required},
         entry{QStringLiteral("본회입금일"), {con_in.year, "년", con_in.month, "월", con_in.day, "일"}},
         entry{QStringLiteral("지회입금일"), {b_in.year, "년", b_in.month, "월", b_in.day, "일"}},
         entry{QStringLiteral("입금액"), {str_txt, "원"}, true}});
}

void payment_fields::chain(enter_walk& walk) const
{
    constexpr qsizetype whole_date = 8;
    for (const date_group& each : {con_in, b_in})
        for (code_list* list : {each.year, each.month, each.day})
            walk.ask(list, [each, amount = str_txt]() -> QWidget* {
                return each.stored().size() == whole_date ? amount : nullptr;
            });
    walk.leave_alone(str_txt); // Enter there presses the main button
}

void payment_fields::fill_places(const orvo::rows& places) const
{
    receipt_cbb->fill(places, "receipt_name", "code_receipt");
}

const date_group& payment_fields::chosen_side() const
{
    return receipt_cbb->currentText() == QStringLiteral("본회") ? con_in : b_in;
}

const date_group& payment_fields::other_side() const
{
    return &chosen_side() == &con_in ? b_in : con_in;
}

void payment_fields::drop_other_side()
{
    (&chosen_side() == &con_in ? b_in : con_in).drop();
}

void payment_fields::enable_by_place() const
{
    chosen_side().set_enabled(true);
    other_side().set_enabled(receipt_cbb->currentIndex() < 0);
}

void payment_fields::show(const payment& line)
{
    str_txt->set_amount(line.pres_money);
    con_in.show(line.pers_mem_day);
    b_in.show(line.pers_mem_b_day);
    receipt_cbb->choose_code(line.code_receipt.toLongLong());
}

payment payment_fields::read() const
{
    return {con_in.text(), b_in.text(), str_txt->amount(), receipt_cbb->code()};
}

QString payment_fields::withdraw_refusal(QWidget*& typed_into) const
{
    for (const date_group& each : {con_in, b_in})
        if (const QString why = each.withdraw_refusal(); !why.isEmpty()) {
            typed_into = each.year;
            return why;
        }
    return {};
}

QString payment_fields::unfinished_date() const
{
    for (const payment_date& each : {con_in, b_in}) {
        if (each.is_untouched())
            continue;
        const QString parts[] = {each.year->currentText(), each.month->currentText(),
                                 each.day->currentText()};
        const auto missing = std::ranges::count(parts, QString{});
        if (missing > 0 && missing < 3)
            return QStringLiteral("%1년 %2월 %3일").arg(parts[0], parts[1], parts[2]);
    }
    return {};
}

} // namespace orvo

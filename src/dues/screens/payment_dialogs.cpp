#include "dues/screens/payment_dialogs.h"

#include "base/amount.h"
#include "ui/controls.h"
#include "ui/enter_walk.h"
#include "ui/member_panels.h"

namespace orvo {

payment_dialog::payment_dialog(const QString& name, client& c, desk& at, QWidget* over, failures::policy how)
    : dues_dialog{name, c, at, over, {c.selected_pers_no, c.cur_val_year}, how}, fields{c}
{
    connect(fields.receipt_cbb, &QComboBox::activated, this, [this] { pick_place(); });
}

void payment_dialog::open_with(const QString& title, bool place_is_required,
                               const std::function<void()>& load)
{
    auto* walk = new enter_walk{*this};
    open(title, fields.rows(place_is_required), load);
    fields.chain(*walk);
    walk->begin();
    fields.receipt_cbb->setFocus();
}

void payment_dialog::pick_place()
{
    fields.drop_other_side();
    fields.enable_by_place();
}

bool payment_dialog::passes_checks()
{
    if (!takes(fields.str_txt))
        return false;
    QWidget* typed_into = nullptr;
    if (const QString why = fields.withdraw_refusal(typed_into); !why.isEmpty()) {
        refuse({why, {}, sign::exclamation}, typed_into);
        return false;
    }
    // The year is there by itself, so half a date is soon left; the reports by date would not find the line.
    const QString unfinished = fields.unfinished_date();
    if (unfinished.isEmpty() ||
        c_.say.ask(
            {QStringLiteral("입금일이 \"%1\"까지만 입력되어 있습니다. 이대로 저장할까요?").arg(unfinished),
             QStringLiteral("확인"), sign::exclamation},
            QStringLiteral("저장"), QStringLiteral("돌아가기"), answer::second))
        return true;
    fields.chosen_side().month->setFocus(Qt::OtherFocusReason);
    return false;
}

void payment_dialog::refresh(member_panels& panels)
{
    panels.show_dues();
    panels.show_dues_lines();
}

dues_in_dlg::dues_in_dlg(client& c, desk& at, QWidget* over)
    : payment_dialog{QStringLiteral("dues_in_dlg"), c, at, over, failures::policy::silent},
      code_member_{c.cur_code_member}
{
    for (const date_group& each : {fields.con_in, fields.b_in})
        each.set_enabled(false); // until the place tells which
    open_with(QStringLiteral("회비납입 추가"), true, [this] {
        const auto [places, header, ids] =
            ask_together(c_.db_conn, receipt_places(), header_of(year_), payment_ids_in(year_));
        known_ids_ = ids;
        fields.fill_places(places);
        if (header) // the kind that was clicked may have been changed since
            code_member_ = header->code_member;
        propose_the_rest(header);
    });
}

void dues_in_dlg::propose_the_rest(const std::optional<dues_header>& header)
{
    if (!header)
        return hint(year_.val_year.isEmpty()
                        ? QStringLiteral("회비년도를 선택하지 않았습니다. 입금은 년도 없이 저장됩니다.")
                        : QStringLiteral("이 년도의 회비가 등록되어 있지 않습니다."));
    if (header->yet_money < 0)
        hint(QStringLiteral(
                 "이 년도의 회비는 %1원이 더 납입되어 있습니다. 그대로 저장하면 돌려준 금액으로 기록됩니다.")
                 .arg(with_separators(-header->yet_money)));
    if (header->yet_money == 0)
        hint(QStringLiteral("이 년도의 회비는 모두 납입되어 있습니다."));
    fields.str_txt->set_amount(QString::number(header->yet_money));
}

void dues_in_dlg::pick_place()
{
    payment_dialog::pick_place();
    fields.chosen_side().year->choose_text(year_.val_year);
}

bool dues_in_dlg::passes_checks()
{
    if (fields.receipt_cbb->currentIndex() >= 0)
        return payment_dialog::passes_checks();
    refuse({QStringLiteral("입금장소를 입력하지 않으셨습니다."), QStringLiteral("확인"), sign::information},
           fields.receipt_cbb);
    return false;
}

planned_save dues_in_dlg::plan()
{
    return add_payment(year_, code_member_, fields.read(), c_.today(), known_ids_);
}

dues_ud_dlg::dues_ud_dlg(client& c, desk& at, QWidget* over)
    : payment_dialog{QStringLiteral("dues_ud_dlg"), c, at, over, failures::policy::report}, cur_dues_id_{
                                                                                                c.cur_dues_id}
{
    open_with(QStringLiteral("회비납입 수정"), false, [this] {
        const auto [places, line] =
            ask_together(c_.db_conn, receipt_places(), payment_of(year_.pers_no, cur_dues_id_));
        fields.fill_places(places);
        show_payment(line);
    });
}

/// A payment made at registration bears both dates. The one that does not belong to its place is shown, and
/// kept as long as no other place is picked: who corrects an amount does not mean to drop a date.
void dues_ud_dlg::show_payment(const std::optional<payment>& line)
{
    if (!line)
        return close_to_saving(QStringLiteral("이 입금 내역은 이미 삭제되었습니다."));
    before_ = *line;
    fields.show(*line);
    fields.enable_by_place();
}

planned_save dues_ud_dlg::plan()
{
    return change_payment(year_, cur_dues_id_, fields.read(), c_.today(), before_);
}

} // namespace orvo

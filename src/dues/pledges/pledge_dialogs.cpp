#include "dues/pledges/pledge_dialogs.h"

#include "base/amount.h"
#include "base/dates.h"
#include "dues/rules/yearly_dues.h"
#include "ui/enter_walk.h"
#include "ui/member_panels.h"

#include <QLabel>

namespace orvo {

namespace {

chosen_instalment chosen_in(const client& c)
{
    return {c.selected_pers_no, c.cur_con_date, c.cur_con_id};
}

entry amount_row(const pledge_fields& fields)
{
    return {QStringLiteral("입금액"), {fields.str_txt, "원"}, true};
}

entry date_row(const pledge_fields& fields)
{
    const date_group& day = fields.con_in;
    return {QStringLiteral("입금일"), {day.year, "년", day.month, "월", day.day, "일"}, true};
}

const QString is_gone = QStringLiteral("이 입금 내역은 이미 삭제되었습니다.");

} // namespace

pledge_dialog::pledge_dialog(const QString& name, client& c, desk& at, QWidget* over, deed what)
    : save_dialog{name, c, at, over, failures::policy::report, what}, selected_pers_no_{c.selected_pers_no}
{
}

QString pledge_dialog::whose() const
{
    return QStringLiteral("%1 (%2)").arg(member_name(c_.local_conn, selected_pers_no_),
                                         selected_pers_no_.left(6));
}

bool pledge_dialog::takes(const pledge_fields& fields)
{
    const auto [why, field] = fields.check();
    if (!why.isEmpty())
        refuse({why, {}, sign::exclamation}, field);
    return why.isEmpty();
}

void pledge_dialog::refresh(member_panels& panels)
{
    panels.show_contract();
}

con_in_dlg::con_in_dlg(client& c, desk& at, QWidget* over)
    : pledge_dialog{QStringLiteral("con_in_dlg"), c, at, over}, cur_con_day_{c.cur_con_day}, fields_{c}
{
    auto* walk = new enter_walk{*this};
    fields_.con_in.set(c.today());
    open(QStringLiteral("약정액 추가"), form({amount_row(fields_), date_row(fields_)}), [this] {
        pledge_ = ask(c_.db_conn, pledge_of(selected_pers_no_));
        show_pledge();
    });
    fields_.chain(*walk);
    walk->begin();
    fields_.str_txt->setFocus();
}

void con_in_dlg::show_pledge()
{
    fields_.str_txt->set_kind(pledge_ ? amount_kind::signed_won : amount_kind::won);
    if (!pledge_)
        // The day typed is that of no payment: a pledge is made on the day on which it is entered.
        return hint(
            QStringLiteral(
                "이 회원은 약정이 없습니다. 오늘(%1) 약정한 금액으로 등록하며, 입금일은 쓰지 않습니다.")
                .arg(with_hyphens(c_.today())));
    hint(QStringLiteral("%1에 약정한 %2원의 입금으로 저장합니다. 미수금액 %3원%4")
             .arg(with_hyphens(pledge_->con_day), with_separators(pledge_->con_amount),
                  with_separators(pledge_->con_amount - pledge_->con_money),
                  pledge_->is_given_up ? QStringLiteral(", 포기한 약정입니다.") : QString{}));
}

/// A pledge that came while the dialog was open, be it by this dialog over a line that broke, would turn what
/// the operator means as the sum pledged into a payment of it: so that is shown first.
bool con_in_dlg::passes_checks()
{
    if (!takes(fields_))
        return false;
    const bool was_pledged = pledge_.has_value();
    std::tie(pledge_, known_ids_) =
        ask_together(c_.db_conn, pledge_of(selected_pers_no_), instalment_ids_of(selected_pers_no_));
    show_pledge();
    if (pledge_.has_value() == was_pledged)
        return true;
    refuse({pledge_ ? QStringLiteral("그 사이에 약정이 등록되었습니다. 입금으로 저장하려면 다시 누르세요.")
                    : QStringLiteral("그 사이에 약정이 없어졌습니다. 약정으로 등록하려면 다시 누르세요."),
            {},
            sign::exclamation},
           fields_.str_txt);
    return false;
}

planned_save con_in_dlg::plan()
{
    const instalment paid = fields_.read();
    if (!pledge_)
        return add_pledge(selected_pers_no_, paid.con_money, c_.today());
    // The console may have shown the member before there was a pledge.
    return add_instalment(selected_pers_no_, cur_con_day_.isEmpty() ? pledge_->con_day : cur_con_day_, paid,
                          known_ids_);
}

con_ud_dlg::con_ud_dlg(client& c, desk& at, QWidget* over)
    : pledge_dialog{QStringLiteral("con_ud_dlg"), c, at, over}, chosen_{chosen_in(c)}, fields_{c},
      give_up_cbb{new code_list{QStringLiteral("give_up_cbb"), 10}}, state_{new QLabel}
{
    auto* walk = new enter_walk{*this};
    // Not the present state: an instalment that is corrected means that the member pays, so the pledge runs
    // again unless it is given up here once more. The present state stands beside the list.
    give_up_cbb->add(QStringLiteral("포기안함"), 0);
    give_up_cbb->add(QStringLiteral("포기"), 1);
    give_up_cbb->choose_code(0);
    state_->setObjectName(QStringLiteral("state"));
    state_->setForegroundRole(QPalette::PlaceholderText);
    open(QStringLiteral("약정액 수정"),
         form({amount_row(fields_), date_row(fields_),
               entry{QStringLiteral("포기여부"), {give_up_cbb, state_}}}),
         [this] { show_instalment(); });
    fields_.chain(*walk, give_up_cbb);
    walk->begin();
    fields_.str_txt->setFocus();
    fields_.str_txt->selectAll();
}

/// Of several instalments of the day the first is shown, whichever is chosen: then the fields are a proposal,
/// and what they will replace stands below them.
void con_ud_dlg::show_instalment()
{
    const auto [pledge, of_day] =
        ask_together(c_.db_conn, pledge_of(selected_pers_no_), instalments_of_day(chosen_));
    if (pledge)
        state_->setText(pledge->is_given_up ? QStringLiteral("현재 상태: 포기")
                                            : QStringLiteral("현재 상태: 진행"));
    const instalment* chosen = chosen_among(of_day, chosen_);
    if (!chosen)
        return close_to_saving(is_gone);
    con_money_before_ = chosen->con_money;
    fields_.show(of_day.front());
    if (chosen != &of_day.front())
        hint(QStringLiteral(
                 "같은 날의 입금이 %1건이라 첫 번째의 금액이 보입니다. 선택한 내역은 현재 %2원입니다.")
                 .arg(of_day.size())
                 .arg(with_separators(chosen->con_money.toLongLong())));
}

planned_save con_ud_dlg::plan()
{
    return change_instalment(chosen_, fields_.read(), give_up_cbb->code(), con_money_before_);
}

con_del_dlg::con_del_dlg(client& c, desk& at, QWidget* over)
    : pledge_dialog{QStringLiteral("con_del_dlg"), c, at, over, deed::deleting}, chosen_{chosen_in(c)}
{
    open_to_delete(
        QStringLiteral("약정액 삭제"), [this] { return what_goes(); },
        QStringLiteral("정말 삭제 하시겠습니까?"));
}

QString con_del_dlg::what_goes()
{
    const std::vector<instalment> of_day = ask(c_.db_conn, instalments_of_day(chosen_));
    const instalment* chosen = chosen_among(of_day, chosen_);
    if (!chosen) {
        close_to_saving(is_gone);
        return {};
    }
    hint(QStringLiteral("삭제하면 총입금액을 다시 계산합니다. 되돌릴 수 없습니다."));
    return QStringLiteral("입금일 %1\n입금액 %2원")
        .arg(with_hyphens(chosen->con_date), with_separators(chosen->con_money.toLongLong()));
}

planned_save con_del_dlg::plan()
{
    return delete_instalment(chosen_);
}

} // namespace orvo

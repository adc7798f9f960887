#include "dues/screens/delete_dialogs.h"

#include "base/amount.h"
#include "base/dates.h"
#include "dues/rules/payments.h"
#include "dues/rules/yearly_dues.h"
#include "ui/member_panels.h"

namespace orvo {

mem_del_dlg::mem_del_dlg(client& c, desk& at, QWidget* over)
    : dues_dialog{QStringLiteral("mem_del_dlg"),
                  c,
                  at,
                  over,
                  {c.selected_pers_no, c.cur_val_year},
                  failures::policy::report,
                  deed::deleting}
{
    open_to_delete(QStringLiteral("회비삭제"), [this] { return what_goes(); });
}

QString mem_del_dlg::what_goes()
{
    const auto [header, lines] = ask_together(c_.db_conn, header_of(year_), payments_in(year_));
    if (!header && lines.count == 0)
        hint(QStringLiteral("이 년도에는 삭제할 회비가 없습니다."));
    else
        hint(QStringLiteral("회비와 그 입금 내역을 함께 삭제합니다. 되돌릴 수 없습니다."));
    const QString dues = header
                             ? QStringLiteral("총회비 %1원, 미수금 %2원")
                                   .arg(with_separators(header->mem_dues), with_separators(header->yet_money))
                             : QStringLiteral("총회비 없음");
    return QStringLiteral("%1\n입금 %2건, 합계 %3원")
        .arg(dues)
        .arg(lines.count)
        .arg(with_separators(lines.sum));
}

planned_save mem_del_dlg::plan()
{
    return delete_year(year_);
}

void mem_del_dlg::refresh(member_panels& panels)
{
    panels.show_dues();
}

dues_del_dlg::dues_del_dlg(client& c, desk& at, QWidget* over)
    : dues_dialog{QStringLiteral("dues_del_dlg"),
                  c,
                  at,
                  over,
                  {c.selected_pers_no, c.cur_val_year},
                  failures::policy::report,
                  deed::deleting},
      cur_dues_id_{c.cur_dues_id}
{
    open_to_delete(QStringLiteral("회비납입 삭제"), [this] { return what_goes(); });
}

QString dues_del_dlg::what_goes()
{
    const auto line = ask(c_.db_conn, payment_of(year_.pers_no, cur_dues_id_));
    if (!line) {
        hint(QStringLiteral("이 입금 내역은 이미 삭제되었습니다."));
        return {};
    }
    hint(QStringLiteral("삭제하면 그 년도의 미수금을 다시 계산합니다. 되돌릴 수 없습니다."));
    return QStringLiteral("본회입금일 %1\n지회입금일 %2\n입금액 %3원")
        .arg(with_hyphens(line->pers_mem_day), with_hyphens(line->pers_mem_b_day),
             with_separators(line->pres_money.toLongLong()));
}

planned_save dues_del_dlg::plan()
{
    return delete_payment(year_, cur_dues_id_);
}

void dues_del_dlg::refresh(member_panels& panels)
{
    panels.show_dues();
    panels.show_dues_lines();
}

} // namespace orvo

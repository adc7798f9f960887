#include "dues/screens/delete_dialogs.h"

#include "base/amount.h"
#include "base/dates.h"
#include "dues/rules/payments.h"
#include "dues/rules/yearly_dues.h"
#include "ui/enter_walk.h"
#include "ui/icons.h"
#include "ui/member_panels.h"
#include "ui/theme.h"

#include <QLabel>
#include <QPushButton>

namespace orvo {

delete_dialog::delete_dialog(const QString& name, client& c, desk& at, QWidget* over)
    : dues_dialog{name, c, at, over, {c.selected_pers_no, c.cur_val_year}}
{
    Image1->setText(QStringLiteral("삭제(&D)"));
    Image1->setIcon(icon("eraser", colours().on_accent));
}

void delete_dialog::open_with(const QString& title, const std::function<QString()>& what_goes)
{
    auto* what = new QLabel;
    what->setObjectName(QStringLiteral("what_goes"));
    open(title, below({what}), [&] { what->setText(what_goes()); });
    (new enter_walk{*this})->begin();
    Image2->setFocus();
}

mem_del_dlg::mem_del_dlg(client& c, desk& at, QWidget* over)
    : delete_dialog{QStringLiteral("mem_del_dlg"), c, at, over}
{
    open_with(QStringLiteral("회비삭제"), [this] { return what_goes(); });
}

QString mem_del_dlg::what_goes()
{
    const auto header = read_header(c_.db_conn, year_);
    const payments_of_year lines = count_payments(c_.db_conn, year_);
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

void mem_del_dlg::store(save_steps& save)
{
    delete_year(save, year_);
}

void mem_del_dlg::refresh(member_panels& panels)
{
    panels.show_dues();
}

dues_del_dlg::dues_del_dlg(client& c, desk& at, QWidget* over)
    : delete_dialog{QStringLiteral("dues_del_dlg"), c, at, over}, cur_dues_id_{c.cur_dues_id}
{
    open_with(QStringLiteral("회비납입 삭제"), [this] { return what_goes(); });
}

QString dues_del_dlg::what_goes()
{
    const auto line = read_payment(c_.db_conn, year_.pers_no, cur_dues_id_);
    if (!line) {
        hint(QStringLiteral("이 입금 내역은 이미 삭제되었습니다."));
        return {};
    }
    hint(QStringLiteral("삭제하면 그 년도의 미수금을 다시 계산합니다. 되돌릴 수 없습니다."));
    return QStringLiteral("본회입금일 %1\n지회입금일 %2\n입금액 %3원")
        .arg(with_hyphens(line->pers_mem_day), with_hyphens(line->pers_mem_b_day),
             with_separators(line->pres_money.toLongLong()));
}

void dues_del_dlg::store(save_steps& save)
{
    delete_payment(save, year_, cur_dues_id_);
}

void dues_del_dlg::refresh(member_panels& panels)
{
    panels.show_dues();
    panels.show_dues_lines();
}

} // namespace orvo

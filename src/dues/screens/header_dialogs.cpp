#include "dues/screens/header_dialogs.h"

#include "base/amount.h"
#include "ui/amount_field.h"
#include "ui/controls.h"
#include "ui/enter_walk.h"
#include "ui/member_panels.h"

namespace orvo {

header_dialog::header_dialog(const QString& name, client& c, desk& at, QWidget* over, dues_year year)
    : dues_dialog{name, c, at, over, std::move(year)},
      mem_kind_cbb{new code_list{QStringLiteral("mem_kind_cbb"), 20}}, str_txt{new amount_field{
                                                                           QStringLiteral("str_txt"), 14}}
{
    connect(mem_kind_cbb, &QComboBox::activated, this,
            [this] { failures::guard(c_.say, failures::policy::report, [this] { pick_member_kind(); }); });
}

void header_dialog::open_with(const QString& title, const std::function<void()>& load)
{
    auto* walk = new enter_walk{*this};
    open(title,
         form({entry{QStringLiteral("회원종류"), {mem_kind_cbb}},
               entry{QStringLiteral("총회비"), {str_txt, "원"}, true}}),
         load);
    walk->leave_alone(str_txt); // Enter there presses the main button
    walk->begin();
    mem_kind_cbb->setFocus();
}

void header_dialog::fill_kinds(const rows& kinds)
{
    mem_kind_cbb->fill(kinds, "mem_kind", "code_member");
}

void header_dialog::pick_member_kind()
{
    const auto fee = fee_of_kind(c_.db_conn, mem_kind_cbb->code());
    if (!fee)
        return c_.say.tell(
            {QStringLiteral("회원종류에 대한 내용이 없습니다. [환경설정],[회비관리]를 이용하여 주십시요"),
             {},
             sign::exclamation});
    str_txt->set_amount(*fee);
}

bool header_dialog::passes_checks()
{
    return takes(str_txt);
}

void header_dialog::refresh(member_panels& panels)
{
    panels.show_dues();
}

mem_in_dlg::mem_in_dlg(client& c, desk& at, QWidget* over)
    : header_dialog{QStringLiteral("mem_in_dlg"), c, at, over, {c.selected_pers_no, c.today().left(4)}}
{
    open_with(QStringLiteral("회비추가"), [this] { fill_kinds(ask(c_.db_conn, member_kinds())); });
}

planned_save mem_in_dlg::plan()
{
    return add_year(year_, mem_kind_cbb->code(), str_txt->amount(), c_.today());
}

mem_ud_dlg::mem_ud_dlg(client& c, desk& at, QWidget* over)
    : header_dialog{QStringLiteral("mem_ud_dlg"), c, at, over, {c.selected_pers_no, c.cur_val_year}}
{
    open_with(QStringLiteral("회비수정"), [this] {
        const auto [kinds, header] = ask_together(c_.db_conn, member_kinds(), header_of(year_));
        fill_kinds(kinds);
        show_header(header);
    });
}

/// The kind is picked as by the operator, so that the amount is that of the fee table as it is now: as in
/// use; must not change. What is stored stands below it.
void mem_ud_dlg::show_header(const std::optional<dues_header>& header)
{
    if (!header)
        return close_to_saving(QStringLiteral("이 년도의 회비가 등록되어 있지 않습니다."));
    before_ = *header;
    mem_kind_cbb->choose_code(header->code_member.toLongLong());
    if (mem_kind_cbb->currentIndex() >= 0)
        pick_member_kind();
    hint(QStringLiteral("저장되어 있는 총회비 %1원, 미수금 %2원")
             .arg(with_separators(header->mem_dues), with_separators(header->yet_money)));
}

planned_save mem_ud_dlg::plan()
{
    return change_year(year_, mem_kind_cbb->code(), str_txt->amount(), c_.today(), before_);
}

} // namespace orvo

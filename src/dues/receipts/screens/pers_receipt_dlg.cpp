#include "dues/receipts/screens/pers_receipt_dlg.h"

#include "ui/controls.h"

namespace orvo {

pers_receipt_dlg::pers_receipt_dlg(client& c, desk& at, QWidget* over)
    : receipt_dlg{QStringLiteral("pers_receipt_dlg"), QStringLiteral("일자"), c, at, over},
      cbb_memkind{new code_list{QStringLiteral("cbb_memkind"), 20}},
      item_cbb{new code_list{QStringLiteral("item_cbb")}}, str_txt{text_field(QStringLiteral("str_txt"), 24)}
{
    for (const char* text : {"회원명", "주민번호", "면허번호"})
        item_cbb->add(QString::fromUtf8(text), item_cbb->count());
    lay_out(below({heading(QStringLiteral("회원별 영수증 출력")),
                   form({entry{QStringLiteral("회원종류(&M)"), {cbb_memkind}},
                         entry{QStringLiteral("검색종류(&I)"), {item_cbb}},
                         entry{QStringLiteral("검색어(&K)"), {str_txt, search_img}}}),
                   list_part(), button_part()},
                  2));
    on_enter(str_txt, [this] { find(); });
    on_click(search_img, [this] { find(); });
    failures::guard(c_.say, failures::policy::report, [this] {
        cbb_memkind->fill(receipt_member_kinds(c_.db_conn), "mem_kind", "code_member");
        cbb_memkind->setCurrentIndex(0);
    });
    str_txt->setFocus();
}

void pers_receipt_dlg::find()
{
    const member_receipts wanted{static_cast<receipt_item>(std::max(0, item_cbb->currentIndex())),
                                 str_txt->text(), cbb_memkind->code(), c_.session_branch};
    run([&](progress* follow) { return queue_receipts(c_.db_conn, c_.local_conn, wanted, who(), follow); });
}

} // namespace orvo

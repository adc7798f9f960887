#include "dues/receipts/screens/dues_receipt_dlg.h"
#include "dues/rules/payments.h"
#include "ui/enter_walk.h"

#include <QLabel>

namespace orvo {

namespace {

const QString hint = QStringLiteral("영수증 출력을 원하는 기간을 입력하세요");
constexpr date_group::choices offered{2000, false};

} // namespace

dues_receipt_dlg::dues_receipt_dlg(client& c, desk& at, QWidget* over)
    : receipt_dlg{QStringLiteral("dues_receipt_dlg"), QStringLiteral("납입일"), c, at, over},
      Text1{new QLabel{hint}}, from_{QStringLiteral("y1_cbb"), QStringLiteral("m1_cbb"),
                                     QStringLiteral("d1_cbb"), c.now, offered},
      to_{QStringLiteral("y2_cbb"), QStringLiteral("m2_cbb"), QStringLiteral("d2_cbb"), c.now, offered},
      receipt_cbb{new code_list{QStringLiteral("receipt_cbb")}}
{
    Text1->setObjectName(QStringLiteral("Text1"));
    Text1->setForegroundRole(QPalette::PlaceholderText);
    from_.set(c_.today());
    to_.set(c_.today());
    lay_out(below(
        {heading(QStringLiteral("기간별 영수증 출력")), Text1,
         form({entry{QStringLiteral("시작일(&F)"), {from_.year, "년", from_.month, "월", from_.day, "일"}},
               entry{QStringLiteral("끝일(&T)"), {to_.year, "년", to_.month, "월", to_.day, "일"}},
               entry{QStringLiteral("입금장소(&R)"), {receipt_cbb, search_img}, true}}),
         list_part(), button_part()},
        3));
    on_click(search_img, [this] { find(); });
    auto* walk = new enter_walk{*this};
    walk->chain({from_.year, from_.month, from_.day, to_.year, to_.month, to_.day, receipt_cbb});
    walk->leave_alone(receipt_cbb); // Enter there searches
    walk->begin();
    failures::guard(c_.say, failures::policy::report, [this] {
        receipt_cbb->fill(ask(c_.local_conn, receipt_places()), "receipt_name", "code_receipt");
    });
    from_.year->setFocus();
}

bool dues_receipt_dlg::has_period()
{
    for (const date_group* each : {&from_, &to_}) {
        QString why = each->withdraw_refusal();
        if (why.isEmpty() && each->stored().size() != 8)
            why = hint; // a part is missing, and the day would be another one
        if (why.isEmpty())
            continue;
        refuse({why, {}, sign::exclamation}, each->year);
        return false;
    }
    return true;
}

void dues_receipt_dlg::find()
{
    const int place = receipt_cbb->code().toInt();
    if (place == 0)
        return refuse({QStringLiteral("입금장소를 입력하여 주세요"), {}, sign::exclamation}, receipt_cbb);
    if (!has_period())
        return;
    // The other places have no date of their own to search by.
    if (place != static_cast<int>(paid_at::head_office) && place != static_cast<int>(paid_at::branch))
        return say_quietly(
            QStringLiteral("%1은(는) 기간으로 검색하지 않습니다.").arg(receipt_cbb->currentText()));
    const period_receipts wanted{static_cast<paid_at>(place), from_.stored(), to_.stored(),
                                 c_.session_branch};
    const struct hint_guard {
        QLabel& shown;
        ~hint_guard()
        {
            if (shown.text() != hint)
                shown.setText(hint + u'.');
        }
    } at_the_end{*Text1};
    run([&](progress* follow) {
        return queue_receipts(c_.db_conn, c_.local_conn, wanted, who(), follow, [this] {
            Text1->setText(QStringLiteral("현재 검색 중 입니다. 잠시 기다려 주십시요."));
            Text1->repaint();
        });
    });
}

} // namespace orvo

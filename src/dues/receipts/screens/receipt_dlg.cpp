#include "dues/receipts/screens/receipt_dlg.h"

#include "base/amount.h"
#include "dues/receipts/rules/receipt_queue.h"
#include "dues/receipts/screens/receipt_progress.h"
#include "ui/controls.h"
#include "ui/form.h"
#include "ui/grid.h"

#include <QLabel>
#include <QSet>

namespace orvo {

receipt_dlg::receipt_dlg(const QString& name, const QString& day_caption, client& c, desk& at, QWidget* over)
    : dialog{name, c, over}, search_img{primary_button(QStringLiteral("search_img"),
                                                       QStringLiteral("검색(&S)"), "search")},
      desk_{at}, print_lst{new grid{QStringLiteral("print_lst"),
                                    {{QStringLiteral("선택"), 44, false, false, true},
                                     {QStringLiteral("주민등록번호"), 130},
                                     {QStringLiteral("이름"), 140, false, true},
                                     {day_caption, 100}},
                                    c}},
      note_txt{new QLabel}, print_img{button(QStringLiteral("print_img"), QStringLiteral("출력(&P)"),
                                             "printer")},
      close_img{button(QStringLiteral("close_img"), QStringLiteral("닫기(&C)"), "x")},
      left_img{button(QStringLiteral("left_img"), QStringLiteral("남은 영수증(&L)"), "history")}
{
    print_lst->setAccessibleName(QStringLiteral("영수증 목록"));
    print_lst->setMinimumSize(460, 320);
    print_lst->set_empty_text(QStringLiteral(
        "검색하면 영수증이 나올 납입 내역이 여기에 모두 선택되어 나타납니다. 줄을 누르거나 스페이스 키로 "
        "선택을 바꿉니다."));
    note_txt->setObjectName(QStringLiteral("note_txt"));
    note_txt->setForegroundRole(QPalette::PlaceholderText);
    note_txt->setWordWrap(true);
    note_txt->setMinimumHeight(note_txt->fontMetrics().height() * 2); // nothing moves when it speaks
    note_txt->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    print_lst->on_tick([this] { show_count(); });
    on_click(print_img, [this] { print(); });
    left_img->setToolTip(QStringLiteral("전에 만든 영수증을 목록에 불러옵니다"));
    on_click(left_img, [this] { take_what_is_left(); });
    failures::guard(c_.say, failures::policy::report, [this] { offer_what_is_left(); });
    connect(close_img, &QPushButton::clicked, this, &receipt_dlg::reject);
    keep_enter(print_lst); // a search ticks every line anew: Enter in the list must not begin one
}

QLayout* receipt_dlg::list_part()
{
    return below({print_lst, note_txt}, 0);
}

QLayout* receipt_dlg::button_part()
{
    return line({left_img, static_cast<QWidget*>(nullptr), print_img, close_img});
}

void receipt_dlg::say_quietly(const QString& text)
{
    note_txt->setText(text);
}

/// A queue is offered to who made it, and goes to the printer only when it stands in the list.
void receipt_dlg::offer_what_is_left()
{
    const auto left = queue_left_by(c_.local_conn, {c_.session_id, c_.session_branch});
    if (!left)
        left_img->hide();
    else
        say_quietly(QStringLiteral("%1에 만든 영수증 %2장이 남아 있습니다.")
                        .arg(left->made_at.toString(QStringLiteral("yyyy-MM-dd HH:mm")),
                             with_separators(left->size)));
}

void receipt_dlg::take_what_is_left()
{
    show_found(receipts_in_queue(c_.local_conn));
}

void receipt_dlg::run(const search& wanted)
{
    std::optional<listed_receipts> found;
    {
        receipt_progress follow{this, QStringLiteral("현재 검색 중 입니다. 잠시 기다려 주십시요.")};
        found = wanted(&follow);
    }
    if (!found)
        return c_.say.tell({QStringLiteral("찾으시는 회원이 없습니다."), {}, sign::information});
    show_found(*found);
}

void receipt_dlg::show_found(const listed_receipts& found)
{
    const QString ticked = QStringLiteral("1");
    std::vector<grid_row> filled;
    filled.reserve(found.size());
    for (const listed_receipt& each : found)
        filled.push_back({{ticked, each.pers_no, each.pers_name, each.day}});
    print_lst->fill(std::move(filled));
    is_listed_ = true;
    left_img->hide();
    show_count();
}

/// An unticked line takes all lines of its member along, which the operator is to know before he prints.
void receipt_dlg::show_count()
{
    QSet<QString> out;
    for (int at = 0; at < print_lst->filled_rows(); ++at)
        if (!print_lst->is_ticked(at))
            out.insert(print_lst->cell(at, 1));
    int printed = 0;
    int along = 0;
    for (int at = 0; at < print_lst->filled_rows(); ++at)
        if (print_lst->is_ticked(at))
            ++(out.contains(print_lst->cell(at, 1)) ? along : printed);
    QString text = QStringLiteral("영수증 %1장을 출력합니다.").arg(with_separators(printed));
    if (along > 0)
        text += QStringLiteral(" 선택을 푼 회원의 영수증은 모두 빠지므로, 선택된 %1줄도 출력되지 않습니다.")
                    .arg(with_separators(along));
    say_quietly(text);
}

void receipt_dlg::print()
{
    if (!is_listed_)
        return refuse(
            {QStringLiteral("출력할 영수증이 목록에 없습니다. 먼저 검색하십시오."), {}, sign::exclamation},
            search_img);
    QStringList out;
    for (int at = 0; at < print_lst->filled_rows(); ++at)
        if (!print_lst->is_ticked(at))
            out.append(print_lst->cell(at, 1));
    take_out_members(c_.local_conn, out);
    accept();
    desk_.open_above(QStringLiteral("receipt_dsg"), parentWidget());
}

} // namespace orvo

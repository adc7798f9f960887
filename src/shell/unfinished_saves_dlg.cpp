#include "shell/unfinished_saves_dlg.h"

#include "dues/rules/payments.h"
#include "dues/rules/pledges.h"
#include "dues/rules/yearly_dues.h"
#include "members/rules/member_update.h"
#include "members/rules/registration.h"
#include "members/rules/workplaces.h"
#include "ui/controls.h"
#include "ui/grid.h"

#include <QLabel>

#include <algorithm>

namespace orvo {

std::span<const save_act* const> known_saves()
{
    static constexpr const save_act* all[]{
        &registration_act,  &member_changed,    &member_deleted,     &workplace_added,
        &workplace_changed, &workplace_deleted, &year_added,         &year_changed,
        &year_deleted,      &payment_added,     &payment_changed,    &payment_deleted,
        &pledge_added,      &instalment_added,  &instalment_changed, &instalment_deleted};
    return all;
}

void offer_unfinished_saves(client& c, QWidget* over)
{
    QStringList others;
    bool is_asked = false;
    for (const save_note& each : c.saves.unfinished()) {
        if (c.may_finish(each))
            is_asked = true;
        else if (!others.contains(each.operator_name))
            others.append(each.operator_name);
    }
    if (!others.isEmpty())
        c.say.tell(
            {QStringLiteral(
                 "이 PC에 %1님이 마치지 못한 저장이 있습니다. 그 담당자나 본회가 이어서 저장할 수 있습니다.")
                 .arg(others.join(QStringLiteral(", "))),
             QStringLiteral("확인"), sign::information});
    if (is_asked)
        unfinished_saves_dlg{c, over}.exec();
}

unfinished_saves_dlg::unfinished_saves_dlg(client& c, QWidget* over)
    : dialog{QStringLiteral("unfinished_saves_dlg"), c, over},
      save_grd{new grid{QStringLiteral("save_grd"),
                        {{QStringLiteral("시작"), 110},
                         {QStringLiteral("담당자"), 90},
                         {QStringLiteral("한 일"), 110},
                         {QStringLiteral("회원"), 140},
                         {QStringLiteral("저장된 것"), 220, false, true}},
                        c}},
      finish_img{primary_button(QStringLiteral("finish_img"), QStringLiteral("이어서 저장(&S)"), "save")},
      give_up_img{button(QStringLiteral("give_up_img"), QStringLiteral("기록 버리기(&D)"), "trash-2")},
      close_img{button(QStringLiteral("close_img"), QStringLiteral("나중에(&C)"), "x")}
{
    save_grd->setAccessibleName(QStringLiteral("마치지 못한 저장"));
    save_grd->set_empty_text(QStringLiteral("마치지 못한 저장이 없습니다."));
    save_grd->setMinimumSize(720, 220);
    QWidget* const apart = nullptr;
    lay_out(below({heading(QStringLiteral("마치지 못한 저장")),
                   new QLabel{QStringLiteral(
                       "저장하던 중에 중단된 것입니다. 이어서 저장하면 저장된 것을 확인하고 나머지를 "
                       "그때의 내용으로 저장합니다.")},
                   save_grd, line({give_up_img, apart, finish_img, close_img})},
                  2));
    on_click(finish_img, [this] { finish(); });
    on_click(give_up_img, [this] { give_up(); });
    connect(close_img, &QPushButton::clicked, this, &QDialog::reject);
    failures::guard(c_.say, failures::policy::report, [this] { show_notes(); });
    save_grd->setFocus();
}

void unfinished_saves_dlg::show_notes()
{
    notes_ = c_.saves.unfinished();
    std::erase_if(notes_, [this](const save_note& each) { return !c_.may_finish(each); });
    std::vector<grid_row> shown;
    for (const save_note& each : notes_) {
        const auto member = ask(c_.db_conn, row_on_server(each.pers_no));
        const QString name = member ? member->front().text("pers_name") : QString{};
        shown.push_back({{each.begun_at.toString(QStringLiteral("MM-dd HH:mm")), each.operator_name,
                          each.act_words, name + u' ' + each.pers_no.left(6) + QStringLiteral("-*******"),
                          each.stored_words.isEmpty() ? QStringLiteral("알 수 없음")
                                                      : each.stored_words.join(QStringLiteral(", "))},
                         each.id});
    }
    save_grd->fill(std::move(shown));
    if (!notes_.empty())
        save_grd->selectRow(0);
    finish_img->setEnabled(!notes_.empty());
    give_up_img->setEnabled(!notes_.empty());
}

const save_note* unfinished_saves_dlg::chosen()
{
    const QString id = save_grd->is_filled(save_grd->chosen_row())
                           ? save_grd->key(save_grd->chosen_row()).toString()
                           : QString{};
    const auto found = std::ranges::find(notes_, id, &save_note::id);
    if (found != notes_.end())
        return &*found;
    refuse({QStringLiteral("저장을 선택하여 주십시오."), {}, sign::exclamation}, save_grd);
    return nullptr;
}

void unfinished_saves_dlg::finish()
{
    const save_note* note = chosen();
    if (!note)
        return;
    std::optional<save> begun = c_.take_up(*note, known_saves());
    QString why = begun ? begun->objection() : QStringLiteral("이 프로그램이 알지 못하는 저장입니다.");
    if (!why.isEmpty())
        return refuse(
            {QStringLiteral("이어서 저장할 수 없습니다.\n%1\n회원을 조회하여 확인한 뒤에 기록을 버리십시오.")
                 .arg(why),
             QStringLiteral("확인"), sign::exclamation},
            save_grd);
    begun->carry_out();
    const bool lacks_password = begun->plan().act == &member_changed && !begun->has("passwd");
    c_.say.tell({lacks_password ? QStringLiteral("나머지를 저장하였습니다. 웹 비밀번호는 기록하지 않으므로, "
                                                 "바꾸려던 것이면 다시 입력하십시오.")
                                : QStringLiteral("나머지를 저장하였습니다."),
                 QStringLiteral("확인"), sign::information});
    show_notes();
    if (notes_.empty())
        accept();
}

void unfinished_saves_dlg::give_up()
{
    const save_note* note = chosen();
    if (!note || !c_.say.ask({QStringLiteral("이 저장의 기록을 버리면 나머지는 저장되지 않습니다. 버릴까요?"),
                              QStringLiteral("확인"), sign::exclamation},
                             QStringLiteral("버리기"), QStringLiteral("그만두기"), answer::second))
        return;
    c_.saves.end(note->id, save_end::given_up);
    show_notes();
}

} // namespace orvo

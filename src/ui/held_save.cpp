#include "ui/held_save.h"

namespace orvo {

held_save::~held_save()
{
    if (is_under_way())
        c_.say.note(
            QStringLiteral("마치지 못한 저장은 [관리자 인증]-[마치지 못한 저장]에서 이어서 할 수 있습니다."));
}

bool held_save::press(failures::policy how, const std::function<planned_save()>& plan)
{
    return failures::guard(c_.say, how, [&] {
        if (!is_under_way())
            save_.emplace(c_.begin(plan()));
        save_->carry_out();
    });
}

QString held_save::state() const
{
    const QString stored =
        save_->stored().isEmpty() ? QStringLiteral("확인 중") : save_->stored().join(QStringLiteral(", "));
    return QStringLiteral("저장하다가 중단되었습니다. 저장된 것: %1. 다시 누르면 나머지를 이어서 저장합니다.")
        .arg(stored);
}

void held_save::give_up()
{
    if (save_)
        save_->give_up();
    save_.reset();
}

std::optional<save> broken_save_to_finish(client& c, const QString& pers_no,
                                          std::initializer_list<const save_act*> acts)
{
    std::optional<save> broken = c.broken_save_of(pers_no, acts);
    if (!broken)
        return {};
    if (const QString why = broken->objection(); !why.isEmpty()) {
        c.say.tell(
            {QStringLiteral("앞서 이 회원을 저장하다가 중단되었으나 이어서 저장할 수 없습니다.\n%1").arg(why),
             QStringLiteral("확인"), sign::exclamation});
        return {};
    }
    const bool goes_on =
        c.say.ask({QStringLiteral("앞서 이 회원을 저장하다가 중단되었습니다.\n저장된 것: %1\n\n"
                                  "그때의 내용으로 나머지를 이어서 저장할까요?")
                       .arg(broken->stored().join(QStringLiteral(", "))),
                   QStringLiteral("확인"), sign::exclamation},
                  QStringLiteral("이어서 저장"), QStringLiteral("그만두기"));
    if (!goes_on)
        broken.reset();
    return broken;
}

} // namespace orvo

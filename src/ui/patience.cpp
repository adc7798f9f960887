#include "ui/patience.h"

#include "ui/wait_sign.h"

#include <QApplication>

namespace orvo {

using namespace std::chrono_literals;

patience::patience(prompts& say) : say_{say} {}

patience::~patience() = default;

bool patience::try_again(const db_failure& lost)
{
    sign_.reset();
    message what{QStringLiteral("서버와의 연결이 끊어졌습니다.\n"
                                "다시 시도하면 하던 작업을 그 자리에서 이어서 합니다."),
                 QStringLiteral("서버연결 에러"), sign::exclamation};
    what.details = lost.text();
    return say_.ask(what, QStringLiteral("다시 시도"), QStringLiteral("포기"), answer::first);
}

bool patience::keep_waiting(std::chrono::milliseconds waited, bool can_end)
{
    if (waited < 1s)
        return true;
    if (!sign_)
        sign_ = std::make_unique<wait_sign>(QApplication::activeWindow());
    const QString text = QStringLiteral("서버의 응답을 기다리고 있습니다... %1초").arg(waited / 1s);
    return sign_->show_wait(text, can_end) || !can_end;
}

void patience::done_waiting()
{
    sign_.reset();
}

} // namespace orvo

#include "ui/patience.h"

#include "ui/input_gate.h"

#include <QApplication>
#include <QBoxLayout>
#include <QFrame>
#include <QLabel>
#include <QPushButton>

namespace orvo {

using namespace std::chrono_literals;

/// A small box over the window in use. It goes by itself when the event that waited is over.
class patience::wait_sign : public QFrame {
public:
    explicit wait_sign(QWidget* over)
        : QFrame{over}, text_{new QLabel}, cancel_{new QPushButton{QStringLiteral("취소")}},
          gate_{cancel_, [this] { ended_ = true; }}
    {
        setObjectName(QStringLiteral("wait_sign"));
        setFrameShape(QFrame::StyledPanel);
        setAutoFillBackground(true);
        auto* box = new QHBoxLayout{this};
        box->addWidget(text_);
        box->addWidget(cancel_);
        connect(cancel_, &QPushButton::clicked, this, [this] { ended_ = true; });
    }

    /// False where the operator has had enough.
    bool show_wait(std::chrono::milliseconds waited, bool can_end)
    {
        text_->setText(QStringLiteral("서버의 응답을 기다리고 있습니다... %1초").arg(waited / 1s));
        cancel_->setVisible(can_end);
        adjustSize();
        if (QWidget* over = parentWidget())
            move((over->width() - width()) / 2, (over->height() - height()) / 2);
        show();
        raise();
        gate_.look_up();
        return !ended_;
    }

private:
    QLabel* text_;
    QPushButton* cancel_;
    bool ended_ = false;
    input_gate gate_;
};

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
    return sign_->show_wait(waited, can_end) || !can_end;
}

void patience::done_waiting()
{
    sign_.reset();
}

} // namespace orvo

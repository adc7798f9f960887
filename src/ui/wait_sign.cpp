#include "ui/wait_sign.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace orvo {

wait_sign::wait_sign(QWidget* over)
    : QFrame{over}, text_{new QLabel}, cancel_{new QPushButton{QStringLiteral("취소")}}, gate_{cancel_,
                                                                                               [this] {
                                                                                                   ended_ =
                                                                                                       true;
                                                                                               }}
{
    setObjectName(QStringLiteral("wait_sign"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    auto* box = new QHBoxLayout{this};
    box->addWidget(text_);
    box->addWidget(cancel_);
    connect(cancel_, &QPushButton::clicked, this, [this] { ended_ = true; });
}

bool wait_sign::show_wait(const QString& text, bool can_end)
{
    text_->setText(text);
    cancel_->setVisible(can_end);
    adjustSize();
    if (QWidget* over = parentWidget())
        move((over->width() - width()) / 2, (over->height() - height()) / 2);
    show();
    raise();
    gate_.look_up();
    return !ended_;
}

} // namespace orvo

#include "ui/wait_box.h"

#include "ui/form.h"

#include <QLabel>
#include <QVBoxLayout>

namespace orvo {

msg_frm::msg_frm(QWidget* over) : QFrame{over}
{
    setObjectName(QStringLiteral("msg_frm"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    auto* box = new QVBoxLayout{this};
    box->setContentsMargins(rhythm * 4, rhythm * 3, rhythm * 4, rhythm * 3);
    box->addWidget(new QLabel{QStringLiteral("폼을 준비 중 입니다. 잠시 기다려 주세요")});
    hide();
}

void msg_frm::show_now()
{
    adjustSize();
    move((parentWidget()->width() - width()) / 2, (parentWidget()->height() - height()) / 2);
    show();
    raise();
    repaint();
}

} // namespace orvo

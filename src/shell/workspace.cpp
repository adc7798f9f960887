#include "shell/workspace.h"

#include "ui/theme.h"
#include "ui/wait_box.h"
#include "ui/work_screen.h"

#include <QPainter>

namespace orvo {

workspace::workspace(QWidget* over) : QWidget{over}, wait_box_{new msg_frm{this}}
{
    setObjectName(QStringLiteral("workspace"));
}

void workspace::set_hint(const QString& hint)
{
    hint_ = hint;
    update();
}

void workspace::show_wait_box()
{
    wait_box_->show_now();
}

void workspace::open(work_screen* made)
{
    screen_ = made;
    made->setAutoFillBackground(true);
    made->setGeometry(rect());
    made->show();
    made->raise(); // over the wait box, which stays behind
}

void workspace::close_screen()
{
    wait_box_->hide(); // the one that the screen covered
    if (!screen_)
        return;
    screen_->hide();
    screen_->deleteLater();
    screen_.clear();
}

void workspace::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    wait_box_->hide();
    if (screen_)
        screen_->setGeometry(rect());
}

void workspace::paintEvent(QPaintEvent*)
{
    if (screen_)
        return;
    QPainter painter{this};
    painter.setPen(colours().quiet_text);
    painter.drawText(rect(), Qt::AlignCenter, hint_);
}

} // namespace orvo

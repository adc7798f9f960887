#include "ui/input_gate.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace orvo {

input_gate::input_gate(QWidget* way_out, std::function<void()> escape)
    : way_out_{way_out}, escape_{std::move(escape)}
{
    qApp->installEventFilter(this);
}

input_gate::~input_gate()
{
    qApp->removeEventFilter(this);
}

void input_gate::look_up()
{
    QCoreApplication::processEvents();
}

bool input_gate::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape && escape_)
            escape_();
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        return way_out_ == nullptr || (watched != way_out_ && watched->isWidgetType());
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::InputMethod:
    case QEvent::Close:
        event->ignore();
        return true;
    default:
        return false;
    }
}

} // namespace orvo

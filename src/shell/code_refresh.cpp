#include "shell/code_refresh.h"

#include "client/client.h"
#include "client/code_mirror.h"
#include "client/quick_glance.h"
#include "db/schema/schema.h"

#include <QApplication>
#include <QEvent>

namespace orvo {

code_refresh::code_refresh(client& c, pace of) : c_{c}, pace_{of}
{
    resting_.start();
    next_.setSingleShot(true);
    next_.callOnTimeout(this, [this] { look(); });
    next_.start(pace_.between);
    qApp->installEventFilter(this);
}

bool code_refresh::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::Wheel:
        resting_.restart();
        break;
    default:
        break;
    }
    return false;
}

bool code_refresh::may_look() const
{
    const bool is_free = !c_.db_conn.is_busy() && !c_.local_conn.is_busy() && c_.db_conn.is_up();
    return c_.session_ok && is_free && resting_.hasExpired(pace_.rest.count()) &&
           !QApplication::activeModalWidget() && !QApplication::activePopupWidget();
}

void code_refresh::look()
{
    if (!may_look())
        return next_.start(pace_.between);
    const std::string_view name = mirrored_tables()[at_];
    try {
        const quick_glance server{c_.db_conn};
        sync_code_table(c_.db_conn, c_.local_conn, name);
        c_.mirrors_behind.erase(name);
    } catch (const db_failure&) {
        // It is looked at again in the next round; whoever cannot wait has the menu item, which tells why.
    }
    at_ = (at_ + 1) % mirrored_tables().size();
    next_.start(at_ == 0 ? pace_.period : pace_.between);
}

} // namespace orvo

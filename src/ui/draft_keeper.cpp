#include "ui/draft_keeper.h"

#include "client/client.h"
#include "ui/form_state.h"

#include <QWidget>

namespace orvo {

namespace {

constexpr int pause = 800; // milliseconds without a change

} // namespace

draft_keeper::draft_keeper(client& c, QWidget& form, QStringList but_not)
    : c_{c}, form_{form}, but_not_{std::move(but_not)}
{
    soon_.setSingleShot(true);
    soon_.setInterval(pause);
    QObject::connect(&soon_, &QTimer::timeout, &soon_, [this] { keep(); });
}

draft_keeper::~draft_keeper()
{
    if (soon_.isActive())
        keep();
}

void draft_keeper::start()
{
    untouched_ = form_state(form_, but_not_);
    if (!std::exchange(is_watching_, true))
        watch_form(form_, &soon_, [this] {
            if (is_watching_)
                soon_.start();
        });
}

std::optional<draft> draft_keeper::kept() const
{
    return kept_draft(c_.local_conn, c_.session_id, form_.objectName());
}

void draft_keeper::keep()
{
    if (c_.local_conn.is_busy())
        return soon_.start();
    soon_.stop();
    const QJsonObject now = form_state(form_, but_not_);
    try {
        if (now == untouched_)
            forget_draft(c_.local_conn, c_.session_id, form_.objectName());
        else
            keep_draft(c_.local_conn, c_.session_id, form_.objectName(), {now, c_.now()});
    } catch (const db_failure&) {
        // A workstation that cannot write drafts works without them: to say so at every word would help
        // nobody.
        is_watching_ = false;
    }
}

void draft_keeper::forget()
{
    is_watching_ = false;
    soon_.stop();
    forget_draft(c_.local_conn, c_.session_id, form_.objectName());
}

} // namespace orvo

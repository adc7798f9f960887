#include "client/login_log.h"

#include "base/for_owner_alone.h"

#include <QFile>

#include <algorithm>

namespace orvo {

namespace {

const char* word_of(login_event what)
{
    switch (what) {
    case login_event::success:
        return "success";
    case login_event::refused:
        return "refused";
    case login_event::slowed:
        break;
    }
    return "slowed";
}

/// An id must not pass for another line.
QString on_one_line(QString id)
{
    std::ranges::replace_if(
        id, [](QChar each) { return !each.isPrint() || each == QChar::LineSeparator; }, u'?');
    return id;
}

} // namespace

void write_login_log(const program_folder& folder, const QDateTime& now, login_event what, const QString& id)
{
    const for_owner_alone who_works_here;
    QFile log{folder.file(QStringLiteral("login.log"))};
    if (!log.open(QIODevice::Append | QIODevice::Text))
        return;
    log.write(QStringLiteral("%1 %2 %3\n")
                  .arg(now.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")), QLatin1String{word_of(what)},
                       id.isEmpty() ? QStringLiteral("unknown") : on_one_line(id))
                  .toUtf8());
}

} // namespace orvo

#include "shell/login_attempts.h"

#include "client/client.h"

#include <QCryptographicHash>

#include <algorithm>

namespace orvo {

namespace {

using namespace std::chrono_literals;

constexpr int free_tries = 5;
constexpr std::chrono::milliseconds remembered = 30min;

QString mark_of(const QString& id)
{
    return QString::fromLatin1(QCryptographicHash::hash(id.toUtf8(), QCryptographicHash::Sha256).toHex());
}

std::chrono::milliseconds wait_after(int times)
{
    constexpr int doublings = 4; // and then it is the longest
    return times < free_tries ? 0s : std::min(5s * (1 << std::min(times - free_tries, doublings)), 60s);
}

} // namespace

void login_attempts::load()
{
    for (const auto row : c_.local_conn.read("select id_mark,times,last_at from wrong_passwords"))
        by_mark_[row.text("id_mark")] = {static_cast<int>(row.number("times")),
                                         QDateTime::fromString(row.text("last_at"), Qt::ISODateWithMs)};
}

bool login_attempts::is_forgotten(const wrong& one) const
{
    // A clock that was set back must not lock anybody out.
    return !one.last_at.isValid() || std::abs(one.last_at.msecsTo(c_.now())) > remembered.count();
}

std::chrono::milliseconds login_attempts::wait_left(const QString& id)
{
    const auto found = by_mark_.find(mark_of(id));
    if (found == by_mark_.end() || is_forgotten(found->second))
        return 0ms;
    wrong& one = found->second;
    one.last_at = std::min(one.last_at, c_.now());
    return std::max(0ms, wait_after(one.times) - std::chrono::milliseconds{one.last_at.msecsTo(c_.now())});
}

void login_attempts::count_wrong(const QString& id)
{
    std::erase_if(by_mark_, [this](const auto& each) { return is_forgotten(each.second); });
    const QString mark = mark_of(id);
    wrong& one = by_mark_[mark];
    one = {one.times + 1, c_.now()};
    if (!c_.folder.is_writable)
        return;
    transaction both{c_.local_conn};
    c_.local_conn.write(
        "delete from wrong_passwords where id_mark='{mark}' or last_at<'{forgotten}'",
        {{"mark", mark}, {"forgotten", c_.now().addMSecs(-remembered.count()).toString(Qt::ISODateWithMs)}});
    c_.local_conn.write(
        "insert into wrong_passwords(id_mark,times,last_at) values ('{mark}','{times}','{last_at}')",
        {{"mark", mark}, {"times", one.times}, {"last_at", one.last_at.toString(Qt::ISODateWithMs)}});
    both.commit();
}

void login_attempts::forget(const QString& id)
{
    if (by_mark_.erase(mark_of(id)) > 0 && c_.folder.is_writable)
        c_.local_conn.write("delete from wrong_passwords where id_mark='{mark}'", {{"mark", mark_of(id)}});
}

} // namespace orvo

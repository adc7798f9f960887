#include "reference/screens/fetch_codes.h"

#include "client/client.h"
#include "client/code_mirror.h"
#include "db/schema/schema.h"
#include "reference/rules/code_editor.h"
#include "ui/wait_sign.h"

#include <QElapsedTimer>

#include <algorithm>
#include <memory>

namespace orvo {

namespace {

QString heading_of(std::string_view name)
{
    const auto found = std::ranges::find(code_editors(), name, &code_editor::table);
    return found == code_editors().end() ? QStringLiteral("회원구분과 회비") // which no editor keeps
                                         : QString::fromUtf8(found->heading);
}

/// Shows after a second how far it is.
class fetch_sign {
public:
    explicit fetch_sign(QWidget* over) : over_{over} { running_.start(); }

    void show(std::size_t done, std::size_t all)
    {
        if (running_.elapsed() < 1000)
            return;
        if (!sign_)
            sign_ = std::make_unique<wait_sign>(over_);
        if (!sign_->show_wait(QStringLiteral("코드표를 받고 있습니다... %1/%2").arg(done).arg(all), true))
            throw db_failure{failure_kind::cancelled, QStringLiteral("interrupted")};
    }

private:
    QWidget* over_;
    QElapsedTimer running_;
    std::unique_ptr<wait_sign> sign_;
};

/// The headings of the tables that were different.
QStringList fetch_all(client& c, QWidget* over)
{
    QStringList changed;
    fetch_sign sign{over};
    std::size_t done = 0;
    for (const std::string_view name : mirrored_tables()) {
        if (sync_code_table(c.db_conn, c.local_conn, name))
            changed.append(heading_of(name));
        c.mirrors_behind.erase(name);
        sign.show(++done, mirrored_tables().size());
    }
    return changed;
}

} // namespace

void fetch_codes(client& c, QWidget* over)
{
    const QStringList changed = fetch_all(c, over);
    c.say.tell({changed.isEmpty() ? QStringLiteral("코드표가 서버와 같습니다. 바뀐 것이 없습니다.")
                                  : QStringLiteral("코드표를 새로 받았습니다.\n바뀐 코드표: %1\n\n"
                                                   "열려 있는 화면의 목록은 그 화면을 다시 열면 바뀝니다.")
                                        .arg(changed.join(QStringLiteral(", "))),
                QStringLiteral("확인"), sign::information});
}

} // namespace orvo

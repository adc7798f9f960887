#include "members/screens/lookalike_list.h"

#include "base/dates.h"
#include "client/client.h"
#include "client/quick_glance.h"
#include "members/rules/lookalikes.h"
#include "members/screens/member_fields.h"
#include "ui/form.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>

namespace orvo {

namespace {

constexpr int pause = 300; // milliseconds without a key

QString line_of(const lookalike& each)
{
    if (!each.is_seen)
        return QStringLiteral("다른 지부의 회원  %1에 문의하십시오.")
            .arg(each.branch.isEmpty() ? QStringLiteral("본회") : each.branch);
    return QStringLiteral("%1  %2-*******  %3  %4")
        .arg(each.pers_name, each.birth, each.branch, with_hyphens(each.regi_date));
}

} // namespace

lookalike_list::lookalike_list(client& c, const member_fields& fields)
    : c_{c}, name_txt_{fields.name_txt}, pers_no1_txt_{fields.pers_no1_txt},
      pers_no2_txt_{fields.pers_no2_txt}, hint_{new QLabel}, list_{new QListWidget}
{
    setObjectName(QStringLiteral("lookalikes"));
    hint_->setObjectName(QStringLiteral("lookalike_hint"));
    list_->setObjectName(QStringLiteral("lookalike_lst"));
    list_->setAccessibleName(QStringLiteral("같아 보이는 회원"));
    list_->setFocusPolicy(Qt::ClickFocus);
    auto* box = new QHBoxLayout{this};
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(rhythm);
    box->addWidget(hint_);
    box->addWidget(list_, 1);
    soon_.setSingleShot(true);
    soon_.setInterval(pause);
    connect(&soon_, &QTimer::timeout, this, [this] { look(); });
    for (QLineEdit* field : {name_txt_, pers_no1_txt_, pers_no2_txt_})
        connect(field, &QLineEdit::textChanged, this, [this] { soon_.start(); });
    look();
}

void lookalike_list::look()
{
    if (c_.db_conn.is_busy() || c_.local_conn.is_busy())
        return soon_.start();
    list_->clear();
    std::vector<lookalike> alike;
    try {
        const quick_glance server{c_.db_conn};
        alike = find_lookalikes(c_.db_conn, c_.local_conn, c_.session_branch, name_txt_->text(),
                                pers_no1_txt_->text(), pers_no2_txt_->text());
    } catch (const db_failure&) {
        // The save asks the register again, and says what is wrong with the line.
    }
    bool same_number = false;
    for (const lookalike& each : alike) {
        list_->addItem(line_of(each));
        same_number = same_number || each.same_number;
    }
    list_->setVisible(!alike.empty());
    hint_->setForegroundRole(same_number ? QPalette::BrightText : QPalette::PlaceholderText);
    hint_->setText(same_number ? QStringLiteral("같은 주민등록번호의 회원이 있습니다.")
                   : alike.empty() ? QStringLiteral("이름과 생년월일이 같은 회원이 있으면 여기에 보입니다.")
                                   : QStringLiteral("이름과 생년월일이 같은 회원이 있습니다."));
}

} // namespace orvo

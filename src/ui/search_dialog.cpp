#include "ui/search_dialog.h"

#include "base/amount.h"
#include "ui/controls.h"
#include "ui/search_progress.h"

#include <QLabel>

namespace orvo {

namespace {

const QString searching = QStringLiteral("현재 검색 중 입니다.잠시 기다려 주십시요.");

} // namespace

search_dialog::search_dialog(const QString& name, client& c, QWidget* over, const QString& hint)
    : dialog{name, c, over}, Text1{new QLabel{hint}}, search{primary_button(QStringLiteral("search"),
                                                                            QStringLiteral("검색(&S)"),
                                                                            "search")},
      Image2{button(QStringLiteral("Image2"), QStringLiteral("닫기(&C)"), "x")}, hint_{hint}
{
    Text1->setObjectName(QStringLiteral("Text1"));
    Text1->setForegroundRole(QPalette::PlaceholderText);
    connect(Image2, &QPushButton::clicked, this, [this] { reject(); });
}

void search_dialog::reject()
{
    if (!is_searching_) // while it searches, Image2 and Esc end the search
        dialog::reject();
}

search_dialog::search_progress::search_progress(search_dialog& over)
    : over_{over}, gate_{over.Image2, [this] { ended_ = true; }}, clicked_{connect(
                                                                      over.Image2, &QPushButton::clicked,
                                                                      &over, [this] { ended_ = true; })}
{
    running_.start();
    over_.is_searching_ = true;
    over_.Image2->setText(QStringLiteral("중지(&C)"));
}

search_dialog::search_progress::~search_progress()
{
    disconnect(clicked_);
    over_.is_searching_ = false;
    over_.Image2->setText(QStringLiteral("닫기(&C)"));
    over_.Text1->setText(over_.hint_);
}

bool search_dialog::search_progress::go_on(qint64 so_far)
{
    if (running_.elapsed() > 1000) {
        over_.Text1->setText(QStringLiteral("%1 %2명").arg(searching, with_separators(so_far)));
        gate_.look_up();
    }
    return !ended_;
}

void search_dialog::search_progress::found_some()
{
    over_.Text1->setText(searching);
    over_.Text1->repaint();
}

} // namespace orvo

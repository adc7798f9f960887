#include "members/screens/search_dlg.h"

#include "members/rules/member_search.h"
#include "members/rules/recent.h"
#include "ui/controls.h"
#include "ui/enter_walk.h"
#include "ui/search_progress.h"

#include <QLabel>
#include <QListWidget>

namespace orvo {

namespace {

QListWidget* recent_list(const QString& name)
{
    auto* list = new QListWidget;
    list->setObjectName(name);
    list->setFixedHeight(list->fontMetrics().height() * 6);
    list->setMinimumWidth(200);
    return list;
}

} // namespace

search_dlg::search_dlg(client& c, desk& at, QWidget* over)
    : search_dialog{QStringLiteral("search_dlg"), c, over,
                    QStringLiteral("회원명, 주민번호, 면허번호, 근무처명, e_mail로 찾습니다.")},
      desk_{at}, item_cbb{new code_list{QStringLiteral("item_cbb"), 10}},
      str_txt{text_field(QStringLiteral("str_txt"), 30)}, word_lst{recent_list(QStringLiteral("word_lst"))},
      member_lst{recent_list(QStringLiteral("member_lst"))}, recents{new QWidget}
{
    for (const char* text : {"회원명", "주민번호", "면허번호", "근무처명", "e_mail"})
        item_cbb->add(QString::fromUtf8(text), item_cbb->count());
    auto* side_by_side = beside(
        {below({group(QStringLiteral("recent_words"), QStringLiteral("최근 검색어"), below({word_lst}))}),
         below({group(QStringLiteral("recent_members"), QStringLiteral("최근에 연 회원"),
                      below({member_lst}))})});
    side_by_side->setContentsMargins(0, 0, 0, 0);
    recents->setLayout(side_by_side);
    lay_out(below({heading(QStringLiteral("일반검색")),
                   form({entry{QStringLiteral("검색항목(&I)"), {item_cbb}},
                         entry{QStringLiteral("검색어(&K)"), {str_txt}, false, true}}),
                   Text1, recents, line({static_cast<QWidget*>(nullptr), search, Image2})}));

    connect(item_cbb, &QComboBox::activated, this, [this] {
        failures::guard(c_.say, failures::policy::report, [this] { show_recent_words(); });
        if (!item_cbb->is_stepped_through())
            str_txt->setFocus();
    });
    auto* walk = new enter_walk{*this};
    walk->chain({item_cbb, str_txt});
    walk->leave_alone(str_txt);
    walk->begin();
    on_enter(str_txt, [this] { run_search(); });
    on_click(search, [this] { run_search(); });
    connect(word_lst, &QListWidget::itemActivated, this, [this](QListWidgetItem* chosen) {
        str_txt->setText(chosen->text());
        failures::guard(c_.say, failures::policy::report, [this] { run_search(); });
    });
    connect(member_lst, &QListWidget::itemActivated, this, [this](QListWidgetItem* chosen) {
        const QString pers_no = chosen->data(Qt::UserRole).toString();
        failures::guard(c_.say, failures::policy::report, [this, pers_no] { search_again_for(pers_no); });
    });
    keep_enter(word_lst);
    keep_enter(member_lst);
    word_lst->setAccessibleName(QStringLiteral("최근 검색어"));
    member_lst->setAccessibleName(QStringLiteral("최근에 연 회원"));
    failures::guard(c_.say, failures::policy::report, [this] {
        show_recent_words();
        show_recent_members();
    });
    recents->setVisible(word_lst->count() + member_lst->count() > 0);
    str_txt->setFocus();
}

int search_dlg::item() const
{
    return std::max(0, item_cbb->currentIndex());
}

void search_dlg::show_recent_words()
{
    word_lst->clear();
    word_lst->addItems(recent_words(c_.local_conn, c_.session_id, item()));
}

void search_dlg::show_recent_members()
{
    member_lst->clear();
    for (const recent_member& each : recent_members(c_.local_conn, c_.session_id)) {
        auto* line = new QListWidgetItem{QStringLiteral("%1  %2").arg(each.pers_name, each.pers_no.left(6))};
        line->setData(Qt::UserRole, each.pers_no);
        member_lst->addItem(line);
    }
}

bool search_dlg::find(int by_item, const QString& key)
{
    search_progress progress{*this};
    const auto query = search_query(static_cast<search_item>(by_item), key, c_.session_branch);
    const qint64 found =
        copy_members(c_.db_conn, c_.local_conn, query, &progress, [&progress] { progress.found_some(); });
    return found > 0;
}

void search_dlg::run_search()
{
    const QString key = str_txt->text();
    if (key.isEmpty())
        return refuse({QStringLiteral("찾고자하는 키워드를 적으십시요"), {}, sign::exclamation}, str_txt);
    if (!find(item(), key)) {
        c_.say.tell({QStringLiteral("찾으시는 회원이 없습니다."), {}, sign::information});
        str_txt->clear();
        str_txt->setFocus();
        return;
    }
    accept();
    desk_.show(screen_code::manager_main_frm);
    failures::guard(c_.say, failures::policy::silent,
                    [&] { remember_word(c_.local_conn, c_.session_id, item(), key, c_.now()); });
}

void search_dlg::search_again_for(const QString& pers_no)
{
    if (!find(static_cast<int>(search_item::resident_number), pers_no)) {
        c_.say.tell({QStringLiteral("찾으시는 회원이 없습니다."), {}, sign::information});
        return;
    }
    c_.member_to_open = pers_no;
    accept();
    desk_.show(screen_code::manager_main_frm);
}

} // namespace orvo

#include "dues/search/dues_search_dlg.h"

#include "dues/search/dues_query.h"
#include "ui/enter_walk.h"
#include "ui/search_progress.h"

namespace orvo {

namespace {

const QString hint = QStringLiteral("회비 납입기간과 납입여부를 입력하세요");

date_group date_of(const char* end, const client& c)
{
    const auto list = [end](const char* part) { return QString::fromLatin1(part) + end + "_cbb"; };
    const date_group date{list("y"), list("m"), list("d"), c.now};
    date.set(c.today());
    return date;
}

} // namespace

dues_search_dlg::dues_search_dlg(client& c, desk& at, QWidget* over)
    : search_dialog{QStringLiteral("dues_search_dlg"), c, over, hint}, desk_{at}, from_{date_of("1", c)},
      to_{date_of("2", c)}, yet_cbb{new code_list{QStringLiteral("yet_cbb"), 10}}
{
    yet_cbb->add(QStringLiteral("완납"), 1);
    yet_cbb->add(QStringLiteral("미납"), 0);
    yet_cbb->choose_code(1);
    lay_out(below(
        {heading(QStringLiteral("회원가입 여부 검색")),
         form({entry{QStringLiteral("기간"), {from_.year, "년", from_.month, "월", from_.day, "일 부터"}},
               entry{{}, {to_.year, "년", to_.month, "월", to_.day, "일 까지"}},
               entry{QStringLiteral("회비납입여부"), {yet_cbb}}}),
         Text1, line({static_cast<QWidget*>(nullptr), search, Image2})}));
    on_click(search, [this] { run_search(); });
    auto* walk = new enter_walk{*this};
    walk->chain({from_.year, from_.month, from_.day, to_.year, to_.month, to_.day, yet_cbb});
    walk->leave_alone(yet_cbb); // Enter there searches
    walk->begin();
    from_.year->setFocus();
}

/// Half a day would be compared as text, and find what no operator means by it.
bool dues_search_dlg::takes(const date_group& date)
{
    if (const QString why = date.withdraw_refusal(); !why.isEmpty()) {
        refuse({why, {}, sign::exclamation}, date.year);
        return false;
    }
    for (code_list* each : {date.year, date.month, date.day})
        if (each->currentText().isEmpty()) {
            refuse({hint, {}, sign::exclamation}, each);
            return false;
        }
    return true;
}

void dues_search_dlg::run_search()
{
    if (!takes(from_) || !takes(to_))
        return;
    qint64 found = 0;
    {
        search_progress progress{*this};
        found = copy_members(c_.db_conn, c_.local_conn,
                             dues_query(from_.stored(), to_.stored(), yet_cbb->code(), c_.session_branch),
                             &progress, [&progress] { progress.found_some(); });
    }
    if (found == 0)
        return c_.say.tell({QStringLiteral("찾으시는 회원이 없습니다."), {}, sign::information});
    accept();
    desk_.show(screen_code::manager_main_frm);
}

} // namespace orvo

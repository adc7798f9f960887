#include "members/screens/manager_main_frm.h"

#include "members/rules/member_record.h"
#include "members/rules/member_update.h"
#include "members/rules/recent.h"
#include "members/screens/member_details.h"
#include "members/screens/member_list.h"
#include "ui/controls.h"
#include "ui/enter_walk.h"
#include "ui/form.h"
#include "ui/grid.h"

#include <QKeyEvent>
#include <QLabel>
#include <QShortcut>

#include <algorithm>
#include <array>

namespace orvo {

namespace {

QPushButton* page_button(const char* name, const char* caption, const char* icon_name, QKeySequence key)
{
    QPushButton* made = button(QString::fromLatin1(name), QString::fromUtf8(caption), icon_name);
    made->setToolTip(key.toString(QKeySequence::NativeText));
    return made;
}

void fill(grid* panel, const std::vector<panel_row>& lines)
{
    std::vector<grid_row> filled;
    for (const panel_row& each : lines)
        filled.push_back({each.cells, each.key});
    panel->fill(std::move(filled));
}

} // namespace

manager_main_frm::manager_main_frm(client& c, desk& at, QWidget* over)
    : work_screen{QStringLiteral("manager_main_frm"), screen_code::manager_main_frm, c, at, over},
      pick_target{at, screen_code::manager_main_frm}, member_panels{at}, pages_{c.local_conn},
      custom_lst{new member_list{QStringLiteral("custom_lst"), c}}, page_txt{new QLabel}, con_txt{new QLabel},
      search_im{button(QStringLiteral("search_im"), QStringLiteral("검색(&F)"), "search")},
      insert_img{button(QStringLiteral("insert_img"), QStringLiteral("회원 등록(&N)"), "user-plus")},
      pre_img{page_button("pre_img", "이전", "chevron-left", Qt::Key_PageUp)},
      next_img{page_button("next_img", "다음", "chevron-right", Qt::Key_PageDown)},
      cmd_edit{primary_button(QStringLiteral("cmd_edit"), QStringLiteral("수정(&E)"), "save")},
      cmd_del{button(QStringLiteral("cmd_del"), QStringLiteral("회원 삭제"), "trash-2")},
      year_buttons{QStringLiteral("mem"), QStringLiteral("회비현황")},
      dues_buttons{QStringLiteral("dues"), QStringLiteral("회비 입금")},
      comp_buttons{QStringLiteral("comp"), QStringLiteral("근무처현황")},
      con_buttons{QStringLiteral("con"), QStringLiteral("약정현황")}, details{new member_details{c, at}},
      dues_h_grd{new grid{QStringLiteral("dues_h_grd"),
                          {{QStringLiteral("유효년도"), 66},
                           {QStringLiteral("회원종류"), 92, false, true},
                           {QStringLiteral("총회비"), 66, true},
                           {QStringLiteral("미수금"), 66, true}},
                          c}},
      dues_b_grd{new grid{QStringLiteral("dues_b_grd"),
                          {{QStringLiteral("본회"), 86},
                           {QStringLiteral("지회"), 86},
                           {QStringLiteral("입금액"), 86, true, true}},
                          c}},
      com_grd{new grid{QStringLiteral("com_grd"),
                       {{QStringLiteral("근무처명"), 130, false, true},
                        {QStringLiteral("구분"), 76},
                        {QStringLiteral("퇴사일"), 66},
                        {QStringLiteral("교육"), 40}},
                       c}},
      contract_grd{new grid{QStringLiteral("contract_grd"),
                            {{QStringLiteral("입금일"), 100}, {QStringLiteral("입금액"), 100, true, true}},
                            c}}
{
    page_txt->setObjectName(QStringLiteral("page_txt"));
    con_txt->setObjectName(QStringLiteral("con_txt"));
    // The text of a pledge has five lines; their place is kept, so that the table below does not jump.
    con_txt->setMinimumHeight(con_txt->fontMetrics().lineSpacing() * 5);
    con_txt->setAlignment(Qt::AlignTop);
    con_txt->setTextInteractionFlags(Qt::TextSelectableByMouse);
    for (grid* panel : {dues_h_grd, dues_b_grd, com_grd, contract_grd})
        panel->set_empty_text(QStringLiteral("회원을 선택하면 보입니다."));
    custom_lst->setAccessibleName(QStringLiteral("회원리스트"));
    dues_h_grd->setAccessibleName(QStringLiteral("회비현황"));
    dues_b_grd->setAccessibleName(QStringLiteral("회비 입금 내역"));
    com_grd->setAccessibleName(QStringLiteral("근무처현황"));
    contract_grd->setAccessibleName(QStringLiteral("약정 입금 내역"));
    con_txt->setAccessibleDescription(QStringLiteral("약정현황")); // its name is what it says
    arrange();
    attach();
    show_member_page(1);
    custom_lst->setFocus();
    if (!c_.member_to_open.isEmpty())
        guard([this] { open_member(std::exchange(c_.member_to_open, {})); });
}

void manager_main_frm::attach()
{
    on_click(search_im, [this] { desk_.ask(QStringLiteral("search_dlg")); });
    on_click(insert_img, [this] { desk_.show(screen_code::insert_frm); });
    on_click(pre_img, [this] { turn_page(-1); });
    on_click(next_img, [this] { turn_page(1); });
    custom_lst->on_row([this](int row) { click_member(row); });
    dues_h_grd->on_row([this](int row) { guard([this, row] { click_dues_year(row); }); });
    attach_record_buttons();
    attach_keys();
    (new enter_walk{*this})->begin();
}

void manager_main_frm::attach_keys()
{
    // A button's own shortcut turns the page a moment late, and not at all while the key repeats itself.
    for (const auto& [key, by] : {std::pair{Qt::Key_PageUp, -1}, std::pair{Qt::Key_PageDown, 1}})
        connect(new QShortcut{QKeySequence{key}, this}, &QShortcut::activated, this,
                [this, by = by] { guard([this, by] { turn_page(by); }); });
    auto* again = new QShortcut{QKeySequence{Qt::Key_F5}, this};
    connect(again, &QShortcut::activated, this, [this] { guard([this] { refresh(); }); });
    auto* pay = new QShortcut{QKeySequence{Qt::Key_F7}, this};
    connect(pay, &QShortcut::activated, dues_buttons.in_img, &QPushButton::click);
    dues_buttons.in_img->setToolTip(QStringLiteral("회비 입금 추가 (F7)"));
    auto* onward = new QShortcut{QKeySequence{Qt::Key_F6}, this};
    connect(onward, &QShortcut::activated, this, [this] { go_to_next_panel(); });
}

code_list* manager_main_frm::list_for(std::string_view table)
{
    return details->list_for(table);
}

std::optional<address_fields> manager_main_frm::fields_for_address()
{
    return details->fields.home_address();
}

void manager_main_frm::show_member_page(int page)
{
    page_ = page;
    page_txt->setText(QStringLiteral("총 %1 페이지 중\n현재 %2 페이지").arg(pages_.page_count()).arg(page_));
    custom_lst->fill(pages_.page(page_));
}

void manager_main_frm::turn_page(int by)
{
    if (page_ + by >= 1 && page_ + by <= pages_.page_count())
        show_member_page(page_ + by);
}

void manager_main_frm::click_member(int row)
{
    guard([this, row] { show_member(custom_lst->pers_no_of(row)); });
}

void manager_main_frm::show_nobody()
{
    shown_.reset();
    details->clear();
    for (grid* panel : {dues_h_grd, dues_b_grd, com_grd, contract_grd})
        panel->clear_rows();
    con_txt->clear();
}

/// All of a member or nothing: half of one could be saved over what he has.
void manager_main_frm::show_member(const QString& pers_no)
{
    show_nobody();
    if (pers_no != c_.selected_pers_no) // what was clicked at another member is none of this one's
        for (QString* each : {&c_.cur_val_year, &c_.cur_code_member, &c_.cur_con_day})
            each->clear();
    std::optional<rows> found = read_member(c_.local_conn, pers_no);
    if (!found)
        throw db_failure{failure_kind::other,
                         QStringLiteral("이 회원은 검색 결과에 더 이상 없습니다. 다시 검색하여 주십시오.")};
    c_.selected_pers_no = found->front().text("pers_no");
    const member_records records = open_records(c_.db_conn, c_.selected_pers_no);
    shown_ = std::move(found);
    login_ = records.login;
    const auto member = shown_->front();
    details->show_member(member);
    untouched_ = edited_columns(details->fields.read(), {});
    details->show_web_identity(login_);
    show_pledge(records.pledged);
    show_years(records.years);
    show_workplaces(records.places);
    guard(
        [&] {
            remember_member(c_.local_conn, c_.session_id, {c_.selected_pers_no, member.text("pers_name")},
                            c_.now());
        },
        failures::policy::silent);
}

void manager_main_frm::open_member(const QString& pers_no)
{
    const int page = pages_.page_of(pers_no);
    if (page == 0)
        return;
    show_member_page(page);
    custom_lst->setCurrentRow(custom_lst->row_of(pers_no));
    show_member(pers_no);
}

void manager_main_frm::click_dues_year(int row)
{
    if (!dues_h_grd->is_filled(row))
        return c_.say.tell({QStringLiteral("없는행을 선택 하셨습니다."), {}, sign::exclamation});
    c_.cur_val_year = dues_h_grd->cell(row, 0);
    c_.cur_code_member = dues_h_grd->key(row).toString();
    show_dues_lines();
}

void manager_main_frm::show_dues()
{
    show_years(dues_years(c_.db_conn, c_.selected_pers_no));
}

/// A year that was chosen stays so: who has just entered a payment sees it.
void manager_main_frm::show_years(const std::vector<panel_row>& years)
{
    const int before = dues_h_grd->chosen_row();
    const QString year = before < 0 ? QString{} : dues_h_grd->cell(before, 0);
    dues_b_grd->set_empty_text(QStringLiteral("회비년도를 선택하면 입금 내역이 보입니다."));
    dues_b_grd->clear_rows();
    dues_h_grd->set_empty_text(QStringLiteral("등록된 회비가 없습니다."));
    fill(dues_h_grd, years);
    for (int row = 0; before >= 0 && row < dues_h_grd->filled_rows(); ++row)
        if (dues_h_grd->cell(row, 0) == year) {
            dues_h_grd->selectRow(row);
            return show_dues_lines();
        }
}

void manager_main_frm::show_dues_lines()
{
    const int year = dues_h_grd->chosen_row();
    dues_b_grd->set_empty_text(QStringLiteral("이 년도에 입금 내역이 없습니다."));
    fill(dues_b_grd, year < 0 ? std::vector<panel_row>{}
                              : dues_lines(c_.db_conn, c_.selected_pers_no, dues_h_grd->cell(year, 0)));
}

void manager_main_frm::show_contract()
{
    show_pledge(read_pledge(c_.db_conn, c_.selected_pers_no));
}

void manager_main_frm::show_pledge(const pledge& found)
{
    c_.cur_con_day = found.con_day;
    con_txt->setText(found.text);
    contract_grd->set_empty_text(QStringLiteral("약정 입금 내역이 없습니다."));
    fill(contract_grd, found.instalments);
}

void manager_main_frm::show_company()
{
    show_workplaces(workplaces(c_.db_conn, c_.selected_pers_no));
}

void manager_main_frm::show_workplaces(const std::vector<panel_row>& places)
{
    com_grd->set_empty_text(QStringLiteral("등록된 근무처가 없습니다."));
    fill(com_grd, places);
}

/// From the list to the panels and round again, past the many fields between them.
void manager_main_frm::go_to_next_panel()
{
    const std::array<QWidget*, 5> round{custom_lst, dues_h_grd, dues_b_grd, com_grd, contract_grd};
    const auto here =
        std::find_if(round.begin(), round.end(), [](QWidget* each) { return each->hasFocus(); });
    const bool at_end = here == round.end() || std::next(here) == round.end();
    (at_end ? round.front() : *std::next(here))->setFocus(Qt::TabFocusReason);
}

void manager_main_frm::refresh()
{
    const QString shown = shown_ ? c_.selected_pers_no : QString{};
    pages_ = member_pages{c_.local_conn};
    show_member_page(std::clamp(page_, 1, std::max(1, pages_.page_count())));
    if (!shown.isEmpty())
        open_member(shown);
}

} // namespace orvo

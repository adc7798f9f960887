#include "members/screens/workplace_dialogs.h"

#include "members/rules/member_record.h"
#include "members/rules/member_update.h"
#include "members/screens/member_fields.h"
#include "ui/amount_field.h"
#include "ui/controls.h"
#include "ui/enter_walk.h"
#include "ui/grid.h"
#include "ui/member_panels.h"

#include <QBoxLayout>
#include <QLabel>

#include <algorithm>

namespace orvo {

namespace {

const QString confirmation = QStringLiteral("확인");

/// The first item is empty and stands where the others' first would, in the months that of January: as in
/// use; must not change.
QStringList behind_an_empty_item(QStringList texts)
{
    texts.prepend(QString{});
    return texts;
}

QStringList leaving_years()
{
    QStringList years;
    for (int year = 1971; year <= 2050; ++year)
        years.append(QString::number(year));
    return behind_an_empty_item(years);
}

void refresh_panel(const desk& at)
{
    if (member_panels* panels = at.panels())
        panels->show_company();
}

} // namespace

workplace_dlg::workplace_dlg(const QString& name, qint16 code, client& c, desk& at, QWidget* over)
    : dialog{name, c, over}, pick_target{at, code}, desk_{at}, fields_{c, at, this},
      out_y_cbb{text_list(QStringLiteral("out_y_cbb"), leaving_years(), 5)},
      out_m_cbb{text_list(QStringLiteral("out_m_cbb"), behind_an_empty_item(two_digit_texts(2, 12)), 3)},
      submit_img{primary_button(QStringLiteral("submit_img"), QStringLiteral("저장(&S)"), "save")},
      Image2{button(QStringLiteral("Image2"), QStringLiteral("취소(&C)"), "x")},
      no_name_{quiet_line(QStringLiteral("no_name"), 2)}, save_{c}
{
    const auto look_at_name = [this](const QString& typed) {
        no_name_->setText(typed.isEmpty()
                              ? QStringLiteral("근무처명이 비어 있으면 저장하지 않고 창을 닫습니다.")
                              : QString{});
    };
    connect(fields_.com_name_txt, &QLineEdit::textChanged, this, look_at_name);
    look_at_name({});
    fields_.fill(read_workplace_choices(c.local_conn));
    on_click(
        submit_img, [this] { submit(); }, failures::policy::silent);
    connect(Image2, &QPushButton::clicked, this, &QDialog::reject);
}

QLayout* workplace_dlg::arrange(QLabel* below_fax)
{
    const workplace_fields& w = fields_;
    const auto row = [](const char* caption, std::vector<entry::piece> pieces, bool fills = false) {
        return entry{QString::fromUtf8(caption), std::move(pieces), false, fills};
    };
    auto* place = form({{QStringLiteral("근무처명"), {w.com_name_txt}, true, true},
                        row("", {no_name_}, true),
                        row("근무처구분", {w.part_cbb}, true),
                        row("근무처대분류", {w.great_div_cbb, w.great_img}, true),
                        row("근무처소분류", {w.small_div_cbb, w.small_img}, true),
                        row("입사일", {w.emp.year, "년", w.emp.month, "월"}),
                        row("퇴사일", {out_y_cbb, "년", out_m_cbb, "월"}),
                        row("부서 및 직급", {w.job_part_txt}, true),
                        row("직렬", {w.job_line_cbb, w.job_line_img}, true),
                        row("직급", {w.job_level_cbb, w.job_level_img}, true),
                        row("운영형태", {w.use_cbb}, true),
                        row("허가병상", {w.sick_txt})});
    std::vector<entry> reach_rows{
        row("회사주소", {w.com_post1_txt, "-", w.com_post2_txt, w.com_img}),
        row("", {w.com_addr_txt}, true),
        row("전화번호", {w.com_tel[0], "-", w.com_tel[1], "-", w.com_tel[2]}),
        row("팩스번호", {w.fax[0], "-", w.fax[1], "-", w.fax[2]}),
        row("1식재료비", {w.meal_s_txt, "원"}),
        row("1일급식인원", {"아침", w.np[0], "점심", w.np[1], "저녁", w.np[2], "야식", w.np[3]}),
        row("급식종사자수", {"영양사", w.mnp[0], "조리사", w.mnp[1], "조리원", w.mnp[2]}),
        row("겸직여부", {w.pers_multy_cbb}),
        row("공동관리", {w.join_con_cbb, "공동조리", w.join_cook_cbb}),
        row("위생교육여부", {w.san_edu_cbb}),
        row("우선 근무처여부", {w.primary_cbb})};
    if (below_fax)
        reach_rows.insert(reach_rows.begin() + 4, row("", {below_fax}, true));
    auto* reach = form(reach_rows);
    QWidget* const to_the_right = nullptr;
    held_ = new QWidget;
    held_->setLayout(beside({place, reach}));
    held_->layout()->setContentsMargins(0, 0, 0, 0);
    return below({held_, line({to_the_right, submit_img, Image2})});
}

void workplace_dlg::begin_to_walk()
{
    const workplace_fields& w = fields_;
    auto* walk = new enter_walk{*this};
    walk->chain({w.com_name_txt, w.part_cbb});
    walk->chain({w.sick_txt, w.com_post1_txt});
    walk->chain({w.com_addr_txt, w.com_tel[0], w.com_tel[1], w.com_tel[2], w.fax[0], w.fax[1], w.fax[2],
                 w.meal_s_txt, w.np[0], w.np[1], w.np[2], w.np[3], w.mnp[0], w.mnp[1], w.mnp[2],
                 w.pers_multy_cbb});
    walk->chain({w.job_part_txt, w.job_line_cbb});
    if (auto* key = findChild<QLineEdit*>(QStringLiteral("str_txt")))
        walk->leave_alone(key);
    walk->begin();
}

void workplace_dlg::show_leaving_date(const QString& pers_out_date)
{
    out_y_cbb->choose_text(pers_out_date.left(4));
    out_m_cbb->choose_text(pers_out_date.right(2));
}

workplace_data workplace_dlg::read() const
{
    workplace_data typed = fields_.read();
    typed.pers_out_date = out_y_cbb->currentText() + out_m_cbb->currentText();
    return typed;
}

bool workplace_dlg::is_readable()
{
    std::optional<refusal> why = withdrawn_date({fields_.emp});
    if (!why)
        why = fields_.unreadable_count();
    if (why)
        refuse({why->text, {}, sign::exclamation}, findChild<QWidget*>(why->control));
    return !why;
}

void workplace_dlg::submit()
{
    if (!save_.is_under_way() && !is_readable())
        return;
    if (fields_.com_name_txt->text().isEmpty()) { // and on to the end, as operators know it
        c_.say.tell({QStringLiteral("근무처명을 입력하세요"), confirmation, sign::exclamation});
        return finish();
    }
    if (save_.press(failures::policy::silent, [this] { return plan(); }))
        return finish();
    if (!save_.is_under_way())
        return;
    // What is stored can no longer be typed otherwise; the same press goes on behind it. A row that was
    // refused can still be mended, though the others have lost their mark to it.
    if (is_workplace_stored(*save_.get()) || save_.get()->is_in_doubt())
        return held_->setEnabled(false);
    save_.give_up();
    fields_.primary_cbb->setEnabled(false);
}

void workplace_dlg::finish()
{
    c_.say.tell({done_text(), confirmation, sign::information});
    accept();
    if (c_.current_screen == screen_code::comp_in_dlg || c_.comp_ud_caller == QLatin1String("1"))
        failures::guard(c_.say, failures::policy::report, [this] { refresh_panel(desk_); });
}

comp_in_dlg::comp_in_dlg(client& c, desk& at, QWidget* over)
    : workplace_dlg{QStringLiteral("comp_in_dlg"), screen_code::comp_in_dlg, c, at, over},
      str_txt{text_field(QStringLiteral("str_txt"), 24, 100)}, search_img{button(QStringLiteral("search_img"),
                                                                                 QStringLiteral("검색(&F)"),
                                                                                 "search")},
      com_lst{
          new grid{QStringLiteral("com_lst"),
                   {{QStringLiteral("회사코드"), 80, true}, {QStringLiteral("회사이름"), 200, false, true}},
                   c}},
      one_fax_{quiet_line(QStringLiteral("one_fax"), 2)}
{
    com_lst->setMaximumHeight(110);
    com_lst->setAccessibleName(QStringLiteral("검색된 근무처"));
    com_lst->set_empty_text(QStringLiteral("다른 회원의 근무처를 찾아 그대로 옮길 수 있습니다."));
    com_lst->follow(str_txt);
    fields_.choose_defaults();
    failures::guard(c_.say, failures::policy::report,
                    [this] { known_ids_ = ask(c_.db_conn, workplace_ids_of(c_.selected_pers_no)); });
    lay_out(below({heading(QStringLiteral("근무처 입력")),
                   form({{QStringLiteral("회사명"), {str_txt, search_img}}}), com_lst, arrange(one_fax_)}));
    for (QLineEdit* each : fields_.fax)
        connect(each, &QLineEdit::textChanged, this, [this] { look_at_fax(); });
    begin_to_walk();
    on_click(search_img, [this] { search(); });
    on_enter(str_txt, [this] { search(); });
    com_lst->on_pick([this](int row) {
        failures::guard(c_.say, failures::policy::report, [this, row] { copy_row(row); });
    });
    fields_.com_name_txt->setFocus();
}

comp_in_dlg::~comp_in_dlg()
{
    c_.current_screen = screen_code::manager_main_frm;
}

void comp_in_dlg::look_at_fax()
{
    const bool is_typed =
        std::ranges::any_of(fields_.fax, [](const QLineEdit* each) { return !each->text().isEmpty(); });
    one_fax_->setText(
        is_typed ? QStringLiteral("첫 칸의 번호만 세 번 이어 저장됩니다. 저장한 뒤 [수정]에서 고치십시오.")
                 : QString{});
}

void comp_in_dlg::search()
{
    if (str_txt->text().isEmpty())
        return refuse({QStringLiteral("검색할 회사명을 입력하여 주세요."), {}, sign::exclamation}, str_txt);
    std::vector<grid_row> found;
    for (const auto row : find_workplaces(c_.db_conn, str_txt->text()))
        found.push_back({{row.text("company_id"), row.text("company_name")}, row.text("company_id")});
    com_lst->set_empty_text(QStringLiteral("그 이름의 근무처가 없습니다."));
    com_lst->fill(std::move(found));
}

void comp_in_dlg::copy_row(int row)
{
    if (!com_lst->is_filled(row))
        return c_.say.tell({QStringLiteral("없는행을 선택하였습니다."), {}, sign::exclamation});
    const auto found = read_workplace(c_.db_conn, com_lst->key(row).toString());
    if (!found)
        return c_.say.tell(
            {QStringLiteral("이 근무처는 더 이상 없습니다. 다시 검색하여 주십시오."), {}, sign::exclamation});
    const auto stored = found->front();
    // A look-up may have narrowed the lists, and a code that they have not would be dropped.
    fields_.fill(read_workplace_choices(c_.local_conn));
    fields_.show(stored);
    fields_.show_fax(cut_copied_fax(stored.text("company_fax")));
    show_leaving_date(stored.text("pers_out_date"));
}

planned_save comp_in_dlg::plan()
{
    workplace_data typed = read();
    // The first field three times over, and not the other two: as in use; must not change.
    typed.company_fax = fields_.fax[0]->text() + fields_.fax[0]->text() + fields_.fax[0]->text();
    return add_workplace(c_.selected_pers_no, typed, c_.today(), known_ids_);
}

comp_ud_dlg::comp_ud_dlg(client& c, desk& at, QWidget* over)
    : workplace_dlg{QStringLiteral("comp_ud_dlg"), screen_code::comp_ud_dlg, c, at, over},
      opened_from_{c.current_screen}
{
    c_.current_screen = screen_code::comp_ud_dlg; // by which its pickers find it
    lay_out(below({heading(QStringLiteral("근무처 수정")), arrange()}));
    begin_to_walk();
    failures::guard(c_.say, failures::policy::report, [this] { load(); });
    fields_.com_name_txt->setFocus();
}

comp_ud_dlg::~comp_ud_dlg()
{
    if (c_.current_screen == screen_code::comp_ud_dlg)
        c_.current_screen = opened_from_ == screen_code::sup_all_ud_dlg ? screen_code::sup_all_ud_dlg
                                                                        : screen_code::manager_main_frm;
}

void comp_ud_dlg::load()
{
    submit_img->setEnabled(false);
    stored_ = read_workplace_of(c_.db_conn, c_.selected_pers_no, c_.cur_company_id);
    if (!stored_)
        throw db_failure{failure_kind::other, QStringLiteral("이 근무처는 다른 곳에서 삭제되었습니다.")};
    const auto stored = stored_->front();
    fields_.show(stored);
    fields_.show_fax(cut_phone(stored.text("company_fax")));
    fields_.emp.set(stored.text("pers_in_date"));
    show_leaving_date(stored.text("pers_out_date"));
    untouched_ = columns();
    submit_img->setEnabled(true);
}

std::vector<column_value> comp_ud_dlg::columns() const
{
    return workplace_columns(c_.selected_pers_no, read(), c_.today());
}

planned_save comp_ud_dlg::plan()
{
    return change_workplace(c_.selected_pers_no, c_.cur_company_id,
                            keep_what_cannot_be_shown(columns(), untouched_, stored_->front()),
                            values_before(untouched_, stored_->front()));
}

comp_del_dlg::comp_del_dlg(client& c, desk& at, QWidget* over)
    : save_dialog{QStringLiteral("comp_del_dlg"), c, at, over, failures::policy::report, deed::deleting}
{
    open_to_delete(
        QStringLiteral("근무처 삭제"), [this] { return what_goes(); },
        QStringLiteral("이 근무처를 삭제 하시겠습니까?"));
}

QString comp_del_dlg::whose() const
{
    const auto member = read_member(c_.local_conn, c_.selected_pers_no);
    return QStringLiteral("%1 (%2)").arg(member ? member->front().text("pers_name") : QString{},
                                         c_.selected_pers_no.left(6));
}

QString comp_del_dlg::what_goes()
{
    const auto found = read_workplace_of(c_.db_conn, c_.selected_pers_no, c_.cur_company_id);
    if (!found) {
        close_to_saving(QStringLiteral("이 근무처는 이미 삭제되었습니다."));
        return {};
    }
    if (found->front().number("primary_flag") == 1)
        hint(QStringLiteral(
            "우선 근무처입니다. 삭제하면 다른 근무처를 우선으로 정할 때까지 우선 근무처가 없습니다."));
    return QStringLiteral("%1\n%2").arg(found->front().text("company_name"),
                                        found->front().text("company_add"));
}

planned_save comp_del_dlg::plan()
{
    return delete_workplace(c_.selected_pers_no, c_.cur_company_id);
}

void comp_del_dlg::refresh(member_panels& panels)
{
    panels.show_company();
}

} // namespace orvo

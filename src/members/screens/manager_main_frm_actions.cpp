#include "base/amount.h"
#include "members/rules/member_copy.h"
#include "members/rules/member_record.h"
#include "members/rules/member_update.h"
#include "members/screens/manager_main_frm.h"
#include "members/screens/member_details.h"
#include "members/screens/member_list.h"
#include "members/screens/newer_change_dlg.h"
#include "ui/amount_field.h"
#include "ui/grid.h"
#include "ui/held_save.h"

#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

namespace orvo {

namespace {

const QString confirmation = QStringLiteral("확인");
const QString nobody_chosen = QStringLiteral("추가할 사람을 선택 하지 않았습니다.");
const QString nothing_to_change =
    QStringLiteral("수정할 행에 내용이 없거나 수정할 행을 선택 하지 않았습니다.");
const QString nothing_to_delete =
    QStringLiteral("삭제할 행에 내용이 없거나 삭제할 행을 선택 하지 않았습니다.");
constexpr int largest_con_id = 32767; // as in use; must not change

} // namespace

void manager_main_frm::attach_record_buttons()
{
    on_click(cmd_edit, [this] { edit_member(); });
    on_click(cmd_del, [this] { delete_this_member(); });
    on_click(year_buttons.in_img, [this] { add_year(); });
    on_click(year_buttons.ud_img, [this] {
        if (!is_record_chosen(*dues_h_grd, nothing_to_change))
            return;
        if (c_.cur_val_year.isEmpty())
            return refuse({nothing_to_change, dues_h_grd->objectName()});
        desk_.open_above(QStringLiteral("mem_ud_dlg"), this);
    });
    on_click(year_buttons.del_img, [this] {
        // No year needs to be chosen: the dialog names what goes.
        if (!shown_)
            return refuse({nothing_to_delete, custom_lst->objectName()});
        desk_.open_above(QStringLiteral("mem_del_dlg"), this);
    });
    on_click(dues_buttons.in_img, [this] { add_payment(); });
    on_click(dues_buttons.ud_img, [this] { open_on_payment("dues_ud_dlg", nothing_to_change); });
    on_click(dues_buttons.del_img, [this] { open_on_payment("dues_del_dlg", nothing_to_delete); });
    on_click(comp_buttons.in_img, [this] {
        if (is_member_open())
            open_on_workplace("comp_in_dlg", screen_code::comp_in_dlg);
    });
    on_click(comp_buttons.ud_img, [this] {
        if (is_record_chosen(*com_grd, nothing_to_change))
            open_on_workplace("comp_ud_dlg", screen_code::comp_ud_dlg);
    });
    on_click(comp_buttons.del_img, [this] {
        // In the words of a change: so operators know it.
        if (is_record_chosen(*com_grd, nothing_to_change))
            open_on_workplace("comp_del_dlg", screen_code::manager_main_frm);
    });
    on_click(con_buttons.in_img, [this] {
        if (is_member_open())
            desk_.open_above(QStringLiteral("con_in_dlg"), this);
    });
    on_click(con_buttons.ud_img, [this] { open_on_instalment("con_ud_dlg", nothing_to_change); });
    on_click(con_buttons.del_img, [this] { open_on_instalment("con_del_dlg", nothing_to_delete); });
}

void manager_main_frm::refuse(const refusal& why)
{
    c_.say.tell({why.text, {}, sign::exclamation});
    if (auto* field = findChild<QWidget*>(why.control))
        field->setFocus(Qt::OtherFocusReason);
}

/// The number of the last member outlives the console; who is not on show is not worked on.
bool manager_main_frm::is_member_open()
{
    if (shown_ && !c_.selected_pers_no.isEmpty())
        return true;
    refuse({nobody_chosen, QStringLiteral("custom_lst")});
    return false;
}

bool manager_main_frm::is_record_chosen(const grid& panel, const QString& otherwise)
{
    const bool chosen = shown_ && panel.is_filled(panel.chosen_row());
    if (!chosen)
        refuse({otherwise, panel.objectName()});
    return chosen;
}

void manager_main_frm::edit_member()
{
    // One that broke in the middle has left the member under two numbers, if his number was changed.
    if (auto broken = broken_save_to_finish(c_, c_.selected_pers_no, {&member_changed}))
        return carry_out_edit(std::move(*broken));
    if (!shown_ || c_.selected_pers_no.isEmpty())
        return refuse({QStringLiteral("수정할 회원을 선택 하세요."), QStringLiteral("custom_lst")});
    const member_fields& fields = details->fields;
    const member_data typed = fields.read();
    std::optional<refusal> why =
        check_edited_member(typed, keeps_telephone(typed, untouched_, shown_->front()));
    if (!why)
        why = check_certificate_numbers(typed);
    const std::vector<column_value> columns =
        keep_what_cannot_be_shown(edited_columns(typed, c_.today()), untouched_, shown_->front());
    if (!why)
        why = unreadable_amount({fields.lic_pay_txt, fields.year_pay_txt});
    if (why)
        return refuse(*why);
    if (leaves_what_is_seen(columns, shown_->front(), c_.session_branch) &&
        !c_.say.ask(
            {QStringLiteral("이 회원을 %1(으)로 옮기면 다음 검색부터 이 지부의 목록에 나오지 않고, 다시 "
                            "옮기는 것은 그 지부나 본회에서만 할 수 있습니다.\n\n옮기시겠습니까?")
                 .arg(fields.bran_cbb->currentText()),
             confirmation, sign::exclamation},
            QStringLiteral("옮기기(&M)"), QStringLiteral("그만두기"), answer::second))
        return;
    if (!may_overwrite(columns))
        return;
    carry_out_edit(
        c_.begin(change_member(c_.selected_pers_no, columns, fields.id_txt->text(), fields.passwd_txt->text(),
                               values_before(columns, shown_->front()))));
}

void manager_main_frm::carry_out_edit(save edit)
{
    const QString pers_no = edit.given("pers_no");
    try {
        edit.carry_out();
    } catch (const db_failure&) {
        if (pers_no != edit.plan().pers_no) // the copy may bear the new number already
            guard([this] { show_member_page(page_); });
        throw;
    }
    c_.give_up_saves_behind(pers_no, member_changed);
    c_.say.tell({QStringLiteral("수정이 완료됬습니다."), confirmation, sign::information});
    show_member_page(page_);
    custom_lst->setCurrentRow(custom_lst->row_of(pers_no));
    show_member(pers_no);
}

/// The fields that hold something else on the server than was read here: his row's, and those of the web
/// login, which he may have changed himself.
std::vector<changed_field> manager_main_frm::changed_elsewhere(const rows::row& on_server,
                                                               const web_identity& login,
                                                               const std::vector<column_value>& columns)
{
    std::vector<changed_field> fields;
    for (const newer_value& each : newer_values(on_server, shown_->front(), columns)) {
        const std::string column = each.column.toStdString();
        const auto typed = std::ranges::find(columns, std::string_view{column}, &column_value::column);
        fields.push_back({details->fields.caption_of(column),
                          details->fields.shown_as(column, each.on_server),
                          details->fields.shown_as(column, typed->value)});
    }
    if (login.id != login_.id)
        fields.push_back({QStringLiteral("아이디"), login.id, details->fields.id_txt->text()});
    if (login.passwd != login_.passwd)
        fields.push_back({QStringLiteral("비밀번호"), login.passwd, details->fields.passwd_txt->text()});
    return fields;
}

/// A look ahead of the save: whoever changed this member elsewhere since he was shown here is not overwritten
/// unseen.
bool manager_main_frm::may_overwrite(const std::vector<column_value>& columns)
{
    const auto [on_server, login] =
        ask_together(c_.db_conn, row_on_server(c_.selected_pers_no), web_identity_of(c_.selected_pers_no));
    if (!on_server) {
        c_.say.tell(
            {QStringLiteral(
                 "이 회원은 다른 곳에서 삭제되었거나 주민등록번호가 바뀌었습니다. 다시 검색하여 주십시오."),
             {},
             sign::exclamation});
        return false;
    }
    const std::vector<changed_field> fields =
        changed_elsewhere(on_server->front(), login.value_or(login_), columns);
    if (fields.empty())
        return true;
    newer_change_dlg question{c_, fields, this};
    question.exec();
    if (question.chosen == newer_change_dlg::choice::servers)
        take_servers_row(on_server->front());
    return question.chosen == newer_change_dlg::choice::mine;
}

void manager_main_frm::take_servers_row(const rows::row& on_server)
{
    const QString pers_no = on_server.text("pers_no");
    refresh_copy(c_.local_conn, on_server);
    show_member(pers_no);
}

void manager_main_frm::delete_this_member()
{
    if (auto broken = broken_save_to_finish(c_, c_.selected_pers_no, {&member_deleted}))
        return carry_out_deletion(std::move(*broken));
    message question{QStringLiteral("선택된 회원을 삭제 하시겠습니까?"), confirmation, sign::exclamation};
    const bool is_open = shown_ && !c_.selected_pers_no.isEmpty();
    if (is_open) {
        QStringList kinds;
        for (const rows_to_go& each : what_a_deletion_takes(c_.db_conn, c_.selected_pers_no))
            if (each.count > 0)
                kinds.append(QStringLiteral("%1 %2건").arg(each.what).arg(each.count));
        question.about = QStringLiteral("%1 (%2)\n삭제되는 자료: %3\n약정과 약정 입금은 남습니다.")
                             .arg(details->fields.name_txt->text(), c_.selected_pers_no.left(6),
                                  kinds.join(QStringLiteral(", ")));
    }
    if (!c_.say.ask(question, QStringLiteral("예(&Y)"), QStringLiteral("아니오(&N)"), answer::second))
        return;
    if (!is_open)
        return c_.say.tell(
            {QStringLiteral("삭제하실 회원을 서택 하여주세요"), confirmation, sign::information});
    carry_out_deletion(c_.begin(delete_member(c_.selected_pers_no, shown_->front().text("pers_name"))));
}

void manager_main_frm::carry_out_deletion(save deletion)
{
    deletion.carry_out();
    c_.say.tell({QStringLiteral("삭제가 완료 되었습니다."), confirmation, sign::information});
    desk_.ask(QStringLiteral("search_dlg"));
}

void manager_main_frm::add_year()
{
    if (!is_member_open())
        return;
    if (has_header_of_year(c_.db_conn, c_.selected_pers_no, c_.today().left(4)))
        return c_.say.tell(
            {QStringLiteral("올해 회원으로 등록되어 있어 등록이 불가 합니다."), {}, sign::exclamation});
    desk_.open_above(QStringLiteral("mem_in_dlg"), this);
}

void manager_main_frm::add_payment()
{
    if (!is_member_open())
        return;
    choose_year_to_pay();
    desk_.open_above(QStringLiteral("dues_in_dlg"), this);
}

/// Where the operator chose no year: so a payment needs no way through the table, in whatever order its rows
/// stand.
void manager_main_frm::choose_year_to_pay()
{
    if (dues_h_grd->chosen_row() >= 0)
        return;
    constexpr int yet_money = 3;
    std::vector<shown_year> years;
    for (int row = 0; row < dues_h_grd->filled_rows(); ++row)
        years.push_back(
            {dues_h_grd->cell(row, 0), whole_part(dues_h_grd->cell(row, yet_money).remove(u','))});
    const auto year = year_to_pay(years);
    if (!year)
        return;
    dues_h_grd->selectRow(static_cast<int>(*year));
    click_dues_year(static_cast<int>(*year));
}

void manager_main_frm::open_on_payment(const char* dialog_name, const QString& otherwise)
{
    if (!is_record_chosen(*dues_b_grd, otherwise))
        return;
    c_.cur_dues_id = dues_b_grd->key(dues_b_grd->chosen_row()).toString();
    desk_.open_above(QString::fromLatin1(dialog_name), this);
}

void manager_main_frm::open_on_workplace(const char* dialog_name, qint16 code)
{
    c_.current_screen = code;
    if (const int row = com_grd->chosen_row(); row >= 0)
        c_.cur_company_id = com_grd->key(row).toString();
    c_.comp_ud_caller = QStringLiteral("1");
    desk_.open_above(QString::fromLatin1(dialog_name), this);
}

void manager_main_frm::open_on_instalment(const char* dialog_name, const QString& otherwise)
{
    if (!is_record_chosen(*contract_grd, otherwise))
        return;
    const int row = contract_grd->chosen_row();
    const QString con_id = contract_grd->key(row).toString();
    if (con_id.toLongLong() > largest_con_id)
        return c_.say.tell(
            {QStringLiteral("번호가 %1인 약정 입금은 이 화면에서 고칠 수 없습니다. 번호는 %2까지 다룹니다.")
                 .arg(con_id)
                 .arg(largest_con_id),
             {},
             sign::exclamation});
    c_.cur_con_id = con_id;
    c_.cur_con_date = contract_grd->cell(row, 0).remove(u'-');
    desk_.open_above(QString::fromLatin1(dialog_name), this);
}

} // namespace orvo

#include "members/screens/insert_frm.h"

#include "members/rules/member_copy.h"
#include "members/rules/member_record.h"
#include "members/rules/member_search.h"
#include "ui/amount_field.h"
#include "ui/controls.h"
#include "ui/form.h"
#include "ui/form_state.h"
#include "ui/held_save.h"

#include <QLabel>
#include <QShortcut>
#include <QTimer>

namespace orvo {

namespace {

const QString confirmation = QStringLiteral("확인");

} // namespace

insert_frm::insert_frm(client& c, desk& at, QWidget* over)
    : work_screen{QStringLiteral("insert_frm"), screen_code::insert_frm, c, at, over},
      pick_target{at, screen_code::insert_frm}, member_{c, at, this}, workplace_{c, at, this},
      mem_kind_cbb{new code_list{QStringLiteral("mem_kind_cbb")}},
      payment_{new amount_field{QStringLiteral("mem_dues_txt"), 10},
               new amount_field{QStringLiteral("agree_pay_txt"), 10},
               new amount_field{QStringLiteral("dues_in_txt"), 10},
               new code_list{QStringLiteral("receipt_cbb")},
               new code_list{QStringLiteral("incom_cbb")},
               nullptr,
               {QStringLiteral("big_in_y_cbb"), QStringLiteral("big_in_m_cbb"),
                QStringLiteral("big_in_d_cbb"), c.now},
               {QStringLiteral("bran_in_y_cbb"), QStringLiteral("bran_in_m_cbb"),
                QStringLiteral("bran_in_d_cbb"), c.now},
               quiet_line(QStringLiteral("payment_line"), 2)},
      mem_in_img{primary_button(QStringLiteral("mem_in_img"), QStringLiteral("저장(&S)"), "save")},
      insert_img{button(QStringLiteral("insert_img"), QStringLiteral("새로 쓰기(&N)"), "eraser")},
      search_im{button(QStringLiteral("search_im"), QStringLiteral("검색(&F)"), "search")},
      draft_{c, *this, {QStringLiteral("passwd_txt")}}
{
    payment_.receipt_img = code_picker("receipt_img", "회비입금장소", payment_.receipt_cbb);
    payment_.incom_cbb->add(QStringLiteral("미납"), 0);
    payment_.incom_cbb->add(QStringLiteral("납입완료"), 1);
    payment_.incom_cbb->choose_code(0);
    member_.passwd_txt->setEchoMode(QLineEdit::PasswordEchoOnEdit);
    arrange();
    attach();
    member_.choose_defaults();
    workplace_.choose_defaults();
    guard([this] { load_member_combos(); });
    draft_.start();
    member_.name_txt->setFocus();
    // Queued: the form is to stand on the screen when it asks.
    QTimer::singleShot(0, this, [this] { guard([this] { offer_draft(); }); });
}

void insert_frm::attach()
{
    on_click(mem_in_img, [this] { register_member(); });
    on_click(insert_img, [this] { begin_anew(); });
    on_click(search_im, [this] { desk_.ask(QStringLiteral("search_dlg")); });
    open_by_click(c_, desk_, this, {{payment_.receipt_img, "receipt_dlg"}});
    connect(mem_kind_cbb, &QComboBox::activated, this, [this] { guard([this] { pick_member_kind(); }); });
    connect(member_.id_txt, &QLineEdit::returnPressed, this, [this] { guard([this] { check_id(); }); });
    for (const date_group& date : {payment_.big_in, payment_.bran_in})
        for (code_list* each : {date.year, date.month, date.day})
            connect(each, &QComboBox::currentTextChanged, this, [this] { look_at_payment(); });
    connect(payment_.agree_pay_txt, &QLineEdit::textChanged, this, [this] { look_at_payment(); });
    // A number of six digits is whole: what is typed on belongs behind the hyphen.
    connect(member_.pers_no1_txt, &QLineEdit::textEdited, this, [this](const QString& typed) {
        if (typed.size() == 6)
            member_.pers_no2_txt->setFocus(Qt::TabFocusReason);
    });
}

void insert_frm::load_member_combos()
{
    const registration_choices choices = read_registration_choices(c_.local_conn);
    member_.fill(choices.member);
    workplace_.fill(choices.workplace);
    mem_kind_cbb->fill(choices.member_kinds, "mem_kind", "code_member");
    payment_.receipt_cbb->fill(choices.receipt_places, "receipt_name", "code_receipt");
}

void insert_frm::pick_member_kind()
{
    const auto dues = dues_of_kind(c_.local_conn, mem_kind_cbb->code());
    if (!dues)
        return c_.say.tell(
            {QStringLiteral("회원종류에 대한 내용이 없습니다. [환경설정],[회비관리]를 이용하여 주십시요"),
             {},
             sign::exclamation});
    payment_.mem_dues_txt->set_amount(*dues);
    payment_.agree_pay_txt->set_amount(*dues); // most pay in full on the spot
}

void insert_frm::look_at_payment()
{
    const auto is_begun = [](const date_group& date) {
        return !(date.year->currentText() + date.month->currentText() + date.day->currentText()).isEmpty();
    };
    const bool head = is_begun(payment_.big_in);
    const bool branch = is_begun(payment_.bran_in);
    const bool is_typed = head || branch || !payment_.agree_pay_txt->text().isEmpty();
    payment_.line->setText(is_typed && !(head && branch)
                               ? QStringLiteral("두 입금일자를 다 넣어야 입금이 저장됩니다.")
                               : QString{});
}

/// Asked for by Enter alone, and not again at the save: the login is made when the console opens the member.
void insert_frm::check_id()
{
    if (is_id_free(c_.db_conn, member_.id_txt->text())) {
        c_.say.tell({QStringLiteral("사용가능 아이디 입니다.."), {}, sign::information});
        return member_.passwd_txt->setFocus(Qt::TabFocusReason);
    }
    c_.say.tell({QStringLiteral("이미 있는 아이디 입니다."), {}, sign::exclamation});
    member_.id_txt->clear();
    member_.id_txt->setFocus();
}

new_member insert_frm::read() const
{
    new_member typed;
    typed.member = member_.read();
    typed.code_member = mem_kind_cbb->code();
    typed.mem_dues = payment_.mem_dues_txt->amount();
    typed.agree_pay = payment_.agree_pay_txt->amount();
    typed.dues_in = payment_.dues_in_txt->amount();
    typed.pers_mem_day = payment_.big_in.stored();
    typed.pers_mem_b_day = payment_.bran_in.stored();
    typed.code_receipt = payment_.receipt_cbb->code();
    typed.workplace = workplace_.read();
    return typed;
}

void insert_frm::refuse(const refusal& why)
{
    c_.say.tell({why.text, {}, sign::exclamation});
    if (auto* field = findChild<QWidget*>(why.control))
        field->setFocus(Qt::OtherFocusReason);
}

bool insert_frm::passes_checks(const new_member& typed)
{
    std::optional<refusal> why = check_member(typed);
    if (!why)
        why = unreadable_amount({member_.lic_pay_txt, member_.year_pay_txt, payment_.mem_dues_txt,
                                 payment_.agree_pay_txt, payment_.dues_in_txt});
    if (!why)
        why = withdrawn_date({payment_.big_in, payment_.bran_in, workplace_.emp});
    if (!why)
        why = workplace_.unreadable_count();
    if (!why)
        why = check_certificate_numbers(typed.member);
    if (why)
        refuse(*why);
    return !why;
}

void insert_frm::register_member()
{
    const new_member typed = read();
    if (!passes_checks(typed))
        return;
    const QString pers_no = typed.member.pers_no();
    if (!is_registered(c_.db_conn, pers_no))
        return carry_out(c_.begin(orvo::register_member(typed, c_.today())));
    c_.say.tell(
        {QStringLiteral("같은 주민등록 번호가 존재 합니다. 다시확인하여 주세요"), {}, sign::exclamation});
    member_.pers_no1_txt->setFocus(Qt::OtherFocusReason);
    // The way on: to finish a save that broke here, or to look at who has the number.
    if (auto broken = broken_save_to_finish(c_, pers_no, {&registration_act}))
        return carry_out(std::move(*broken));
    if (c_.say.ask({QStringLiteral("이 번호의 회원을 열어 볼까요?\n입력하던 내용은 보관됩니다."),
                    confirmation, sign::none},
                   QStringLiteral("회원 열기"), QStringLiteral("그만두기"), answer::second))
        open_in_console(pers_no);
}

void insert_frm::carry_out(save registration)
{
    registration.on_remark = [this](const QString& what) { c_.say.tell({what, confirmation}); };
    registration.carry_out();
    draft_.forget();
    c_.say.tell({QStringLiteral("입력이 완료됬습니다."), confirmation, sign::information});
    desk_.show(screen_code::insert_frm);
}

void insert_frm::open_in_console(const QString& pers_no)
{
    const auto query = search_query(search_item::resident_number, pers_no, c_.session_branch);
    if (copy_members(c_.db_conn, c_.local_conn, query) == 0)
        return c_.say.tell(
            {QStringLiteral("찾으시는 회원이 없습니다."), {}, sign::information}); // he is of another branch
    c_.member_to_open = pers_no;
    desk_.show(screen_code::manager_main_frm);
}

void insert_frm::begin_anew()
{
    draft_.forget();
    desk_.show(screen_code::insert_frm);
}

void insert_frm::offer_draft()
{
    const auto kept = draft_.kept();
    if (!kept)
        return;
    if (c_.say.ask({QStringLiteral("%1에 작성하다가 저장하지 않은 등록이 있습니다. 이어서 작성할까요?")
                        .arg(kept->kept_at.toString(QStringLiteral("yyyy-MM-dd HH:mm"))),
                    confirmation, sign::none},
                   QStringLiteral("이어서 작성"), QStringLiteral("새로 작성")))
        restore(*kept);
    else
        forget_draft(c_.local_conn, c_.session_id, objectName());
}

/// The dependent lists are filled as by their picks, but without the proposals and messages of a pick.
void insert_frm::restore(const draft& kept)
{
    restore_form(*this, kept.fields);
    if (!member_.big_cbb->code().isEmpty())
        member_.fill_sections();
    restore_field(*this, kept.fields, QStringLiteral("sect_cbb"));
    if (!workplace_.part_cbb->code().isEmpty())
        workplace_.fill_great_divisions();
    restore_field(*this, kept.fields, QStringLiteral("great_div_cbb"));
    if (!workplace_.great_div_cbb->code().isEmpty())
        workplace_.fill_small_divisions();
    restore_field(*this, kept.fields, QStringLiteral("small_div_cbb"));
}

code_list* insert_frm::list_for(std::string_view table)
{
    if (table == "receipt_place")
        return payment_.receipt_cbb;
    if (code_list* list = member_.list_for(table))
        return list;
    return workplace_.list_for(table);
}

std::optional<address_fields> insert_frm::fields_for_address()
{
    return c_.zip_target == 1 ? member_.home_address() : workplace_.address();
}

} // namespace orvo

#include "members/screens/member_details.h"

#include "base/phone.h"
#include "client/client.h"
#include "members/rules/member_choices.h"
#include "ui/amount_field.h"
#include "ui/controls.h"
#include "ui/form.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>

namespace orvo {

member_details::member_details(client& c, desk& at)
    : fields{c, at, this}, number_line{quiet_line(QStringLiteral("number_line"))}, c_{c}
{
    setObjectName(QStringLiteral("member_details"));
    fields.get_mail_cbb->addItem(QStringLiteral("발송중지"));
    arrange();
    fill_lists();
    fields.choose_defaults();
    fields.email_txt->clear();
    for (QLineEdit* each : {fields.pers_no1_txt, fields.pers_no2_txt})
        connect(each, &QLineEdit::textChanged, this, [this] { look_at_number(); });
}

void member_details::arrange()
{
    const member_fields& m = fields;
    auto* person = form({entry{QStringLiteral("이름"), {m.name_txt}, false, true},
                         entry{QStringLiteral("성별"), {m.sex1_opt, m.sex2_opt}},
                         entry{QStringLiteral("주민등록번호"), {m.pers_no1_txt, "-", m.pers_no2_txt}},
                         entry{QStringLiteral("면허번호"), {m.lic_no_txt}, false, true},
                         entry{QStringLiteral("혼인여부"), {m.marry_cbb}, false, true},
                         entry{QStringLiteral("종교"), {m.rel_cbb, m.rel_img}, false, true},
                         entry{QStringLiteral("최종학력"), {m.scholar_cbb}, false, true},
                         entry{QStringLiteral("학위"), {m.univer_cbb}, false, true},
                         entry{QStringLiteral("학교"), {m.school_cbb, m.school_img}, false, true}});
    auto* reach = form({entry{QStringLiteral("자택주소"), {m.post1_txt, "-", m.post2_txt, m.addr_img}},
                        entry{QString{}, {m.addr_txt}, false, true},
                        entry{QStringLiteral("자택전화번호"), {m.tel[0], "-", m.tel[1], "-", m.tel[2]}},
                        entry{QStringLiteral("핸드폰번호"), {m.hp[0], "-", m.hp[1], "-", m.hp[2]}},
                        entry{QStringLiteral("E-Mail"), {m.email_txt}, false, true},
                        entry{QStringLiteral("아이디"), {m.id_txt}, false, true},
                        entry{QStringLiteral("비밀번호"), {m.passwd_txt}, false, true},
                        entry{QStringLiteral("우편물수신처"), {m.get_mail_cbb}, false, true},
                        entry{QStringLiteral("발송호칭"), {m.pers_call_cbb}, false, true}});
    auto* belonging =
        form({entry{QStringLiteral("소속지부"), {m.bran_cbb, m.bran_img}, false, true},
              entry{QStringLiteral("소속분과"), {m.big_cbb, m.big_img}, false, true},
              entry{QStringLiteral("소속분회"), {m.sect_cbb, m.sect_img}, false, true},
              entry{QStringLiteral("소속위탁업체"), {m.deposit_cbb, m.deposit_img}, false, true},
              entry{QStringLiteral("산하단체.분야회 소속현황"), {m.sub_cbb, m.sub_img}, false, true},
              entry{QStringLiteral("경력"), {m.career_y_cbb, "년", m.career_m_cbb, "개월"}},
              entry{QStringLiteral("연봉"), {m.year_pay_txt, "만원"}},
              entry{QStringLiteral("영양사면허수당"), {m.lic_pay_txt, "원"}}});
    auto* licences = form({entry{QStringLiteral("자격증소지현황1"),
                                 {m.lic_kind_chk[0], m.lic_kind_chk[1], m.lic_kind_chk[2], m.lic_kind_chk[3],
                                  m.lic_kind_chk[4]}},
                           entry{QStringLiteral("자격증소지현황2"),
                                 {m.lic_kind_chk[5], m.lic_kind6_no, m.lic_kind_chk[6], m.lic_kind7_no}}});
    auto* box = new QVBoxLayout{this};
    box->setContentsMargins(0, 0, 0, 0);
    box->addLayout(below({beside({person, reach, belonging}, {4, 6, 5}), licences}));
}

void member_details::fill_lists()
{
    fields.fill(read_console_choices(c_.local_conn));
    are_narrowed_ = false;
}

code_list* member_details::list_for(std::string_view table)
{
    code_list* list = fields.list_for(table);
    are_narrowed_ = are_narrowed_ || list;
    return list;
}

void member_details::look_at_number()
{
    const QString typed = fields.pers_no1_txt->text() + fields.pers_no2_txt->text();
    const bool is_another = !pers_no_.isEmpty() && typed != pers_no_;
    number_line->setText(is_another ? QStringLiteral("번호를 바꾸면 교육 이수, 자격증, 위생교육, 웹 아이디는 "
                                                     "옛 번호에 남습니다.")
                                    : QString{});
}

void member_details::clear()
{
    const member_fields& m = fields;
    pers_no_.clear();
    for (QLineEdit* each : findChildren<QLineEdit*>(Qt::FindDirectChildrenOnly))
        each->clear();
    m.addr_txt->setToolTip({});
    for (QComboBox* each : findChildren<QComboBox*>(Qt::FindDirectChildrenOnly))
        each->setCurrentIndex(-1);
    m.sect_cbb->QComboBox::clear();
    for (QCheckBox* each : m.lic_kind_chk)
        each->setChecked(false);
    for (QRadioButton* each : {m.sex1_opt, m.sex2_opt}) {
        each->setAutoExclusive(false);
        each->setChecked(false);
        each->setAutoExclusive(true);
    }
}

void member_details::show_member(const rows::row& member)
{
    if (are_narrowed_)
        fill_lists();
    const member_fields& m = fields;
    m.name_txt->setText(member.text("pers_name"));
    (member.number("pers_sex") == 1 ? m.sex1_opt : m.sex2_opt)->setChecked(true);
    const QString pers_no = member.text("pers_no");
    m.pers_no1_txt->setText(pers_no.left(6));
    m.pers_no2_txt->setText(pers_no.right(7));
    pers_no_ = pers_no;
    look_at_number();
    m.lic_no_txt->setText(member.text("lic_no"));
    choose_codes(member);
    const QString career = member.text("pers_career");
    m.career_y_cbb->choose_text(career.left(2));
    m.career_m_cbb->choose_text(career.right(2));
    m.get_mail_cbb->choose_text(member.text("get_mail_place"));
    m.pers_call_cbb->choose_text(member.text("pers_call"));
    show_numbers(member);
    m.email_txt->setText(member.text("email"));
    for (std::size_t i = 0; i < m.lic_kind_chk.size(); ++i)
        m.lic_kind_chk[i]->setChecked(member.number("lic_kind" + std::to_string(i + 1)) == 1);
    m.lic_kind6_no->setText(member.text("lic_kind6_no"));
    m.lic_kind7_no->setText(member.text("lic_kind7_no"));
    m.marry_cbb->choose_text(member.text("pers_marry") == QStringLiteral("미혼") ? QStringLiteral("미혼")
                                                                                 : QStringLiteral("기혼"));
    m.lic_pay_txt->set_amount(member.text("lic_pay"));
    m.year_pay_txt->set_amount(member.text("pers_year_pay"));
}

void member_details::choose_codes(const rows::row& member)
{
    const member_fields& m = fields;
    m.bran_cbb->choose_code(member.number("code_bran"));
    m.big_cbb->choose_code(member.number("code_big"));
    m.sect_cbb->QComboBox::clear();
    fields.fill_sections(); // nobody picked, so nobody is told where there are none
    m.sect_cbb->choose_code(member.number("code_sect"));
    fields.choose_education(member.number("code_scholar"));
    m.univer_cbb->choose_code(member.number("code_univer"));
    m.school_cbb->choose_code(member.number("code_school"));
    m.rel_cbb->choose_code(member.number("code_religion"));
    m.deposit_cbb->choose_code(member.number("code_deposit"));
    m.sub_cbb->choose_code(member.number("sub_code"));
}

void member_details::show_numbers(const rows::row& member)
{
    const member_fields& m = fields;
    const QString post = member.text("code_post");
    m.post1_txt->setText(post.left(3));
    m.post2_txt->setText(post.right(3));
    m.addr_txt->setText(member.text("pers_add"));
    m.addr_txt->setCursorPosition(0);
    m.addr_txt->setToolTip(m.addr_txt->text()); // a long one is not seen whole
    const phone_parts tel = cut_phone(member.text("pers_tel"));
    m.tel[0]->setText(tel.area);
    m.tel[1]->setText(tel.exchange);
    m.tel[2]->setText(tel.line);
    const phone_parts hp = cut_mobile(member.text("pers_hp"));
    m.hp[0]->setText(hp.area);
    m.hp[1]->setText(hp.exchange);
    m.hp[2]->setText(hp.line);
}

void member_details::show_web_identity(const web_identity& login)
{
    fields.id_txt->setText(login.id);
    fields.passwd_txt->setText(login.passwd);
}

} // namespace orvo

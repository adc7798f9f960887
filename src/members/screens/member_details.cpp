#include "members/screens/member_details.h"

#include "base/phone.h"
#include "db/schema/schema.h"
#include "members/rules/member_choices.h"
#include "ui/controls.h"
#include "ui/form.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QRadioButton>

namespace orvo {

namespace {

QLineEdit* member_field(const char* name, int shown, const char* column)
{
    return text_field(QString::fromLatin1(name), shown, width_of("person_m_tbl", column));
}

code_list* list(const char* name, int shown = 12)
{
    return new code_list{QString::fromLatin1(name), shown};
}

QRadioButton* option(const char* name, const char* caption)
{
    auto* made = new QRadioButton{QString::fromUtf8(caption)};
    made->setObjectName(QString::fromLatin1(name));
    return made;
}

constexpr std::array<const char*, 7> licence_captions{"초등교사", "중등교사",   "운동처방사",     "조리사",
                                                      "기타",     "임상영양사", "급식경영 영양사"};

} // namespace

member_details::member_details(connection& local)
    : local_{local}, name_txt{member_field("name_txt", 16, "pers_name")},
      pers_no1_txt{text_field(QStringLiteral("pers_no1_txt"), 7, 6)},
      pers_no2_txt{text_field(QStringLiteral("pers_no2_txt"), 8, 7)},
      lic_no_txt{member_field("lic_no_txt", 16, "lic_no")}, sex1_opt{option("sex1_opt", "남")},
      sex2_opt{option("sex2_opt", "녀")}, bran_cbb{list("bran_cbb")}, big_cbb{list("big_cbb")},
      sect_cbb{list("sect_cbb")}, scholar_cbb{list("scholar_cbb")}, univer_cbb{list("univer_cbb")},
      school_cbb{list("school_cbb")}, career_y_cbb{text_list(QStringLiteral("career_y_cbb"),
                                                             two_digit_texts(1, 50), 3)},
      career_m_cbb{text_list(QStringLiteral("career_m_cbb"), two_digit_texts(1, 11), 3)},
      get_mail_cbb{text_list(QStringLiteral("get_mail_cbb"),
                             {QStringLiteral("자택"), QStringLiteral("직장"), QStringLiteral("발송중지")},
                             12)},
      pers_call_cbb{text_list(QStringLiteral("pers_call_cbb"),
                              {QStringLiteral("교수님"), QStringLiteral("영양사님"),
                               QStringLiteral("영양사 선생님"), QStringLiteral("님 귀하")},
                              12)},
      marry_cbb{text_list(QStringLiteral("marry_cbb"), {QStringLiteral("미혼"), QStringLiteral("기혼")}, 12)},
      rel_cbb{list("rel_cbb")}, deposit_cbb{list("deposit_cbb")}, sub_cbb{list("sub_cbb")},
      post1_txt{text_field(QStringLiteral("post1_txt"), 4, 3)}, post2_txt{text_field(
                                                                    QStringLiteral("post2_txt"), 4, 3)},
      addr_txt{member_field("addr_txt", 24, "pers_add")}, tel1_txt{text_field(QStringLiteral("tel1_txt"), 4,
                                                                              4)},
      tel2_txt{text_field(QStringLiteral("tel2_txt"), 5, 4)}, tel3_txt{text_field(QStringLiteral("tel3_txt"),
                                                                                  5, 4)},
      hp1_txt{text_field(QStringLiteral("hp1_txt"), 4, 4)}, hp2_txt{text_field(QStringLiteral("hp2_txt"), 5,
                                                                               4)},
      hp3_txt{text_field(QStringLiteral("hp3_txt"), 5, 4)}, email_txt{member_field("email_txt", 24, "email")},
      id_txt{text_field(QStringLiteral("id_txt"), 11, width_of("id_tbl", "id"))},
      passwd_txt{text_field(QStringLiteral("passwd_txt"), 11, width_of("id_tbl", "passwd"))},
      lic_pay_txt{text_field(QStringLiteral("lic_pay_txt"), 10)}, year_pay_txt{text_field(
                                                                      QStringLiteral("year_pay_txt"), 10)},
      lic_kind6_no{member_field("lic_kind6_no", 12, "lic_kind6_no")}, lic_kind7_no{member_field(
                                                                          "lic_kind7_no", 12, "lic_kind7_no")}
{
    setObjectName(QStringLiteral("member_details"));
    for (std::size_t i = 0; i < lic_kind_chk.size(); ++i) {
        lic_kind_chk[i] = new QCheckBox{QString::fromUtf8(licence_captions[i])};
        lic_kind_chk[i]->setObjectName(QStringLiteral("lic_kind_chk(%1)").arg(i));
    }
    arrange();
    load_member_combos();
    get_mail_cbb->choose_text(QStringLiteral("자택"));
    pers_call_cbb->choose_text(QStringLiteral("영양사님"));
    marry_cbb->choose_text(QStringLiteral("미혼"));
    for (QWidget* field : findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        if (!field->objectName().isEmpty())
            make_read_only(field);
}

void member_details::arrange()
{
    auto* person = form({entry{QStringLiteral("이름"), {name_txt}, false, true},
                         entry{QStringLiteral("성별"), {sex1_opt, sex2_opt}},
                         entry{QStringLiteral("주민등록번호"), {pers_no1_txt, "-", pers_no2_txt}},
                         entry{QStringLiteral("면허번호"), {lic_no_txt}, false, true},
                         entry{QStringLiteral("혼인여부"), {marry_cbb}, false, true},
                         entry{QStringLiteral("종교"), {rel_cbb}, false, true},
                         entry{QStringLiteral("최종학력"), {scholar_cbb}, false, true},
                         entry{QStringLiteral("학위"), {univer_cbb}, false, true},
                         entry{QStringLiteral("학교"), {school_cbb}, false, true}});
    auto* reach = form({entry{QStringLiteral("자택주소"), {post1_txt, "-", post2_txt}},
                        entry{QString{}, {addr_txt}, false, true},
                        entry{QStringLiteral("자택전화번호"), {tel1_txt, "-", tel2_txt, "-", tel3_txt}},
                        entry{QStringLiteral("핸드폰번호"), {hp1_txt, "-", hp2_txt, "-", hp3_txt}},
                        entry{QStringLiteral("E-Mail"), {email_txt}, false, true},
                        entry{QStringLiteral("아이디"), {id_txt}, false, true},
                        entry{QStringLiteral("비밀번호"), {passwd_txt}, false, true},
                        entry{QStringLiteral("우편물수신처"), {get_mail_cbb}, false, true},
                        entry{QStringLiteral("발송호칭"), {pers_call_cbb}, false, true}});
    auto* belonging = form({entry{QStringLiteral("소속지부"), {bran_cbb}, false, true},
                            entry{QStringLiteral("소속분과"), {big_cbb}, false, true},
                            entry{QStringLiteral("소속분회"), {sect_cbb}, false, true},
                            entry{QStringLiteral("소속위탁업체"), {deposit_cbb}, false, true},
                            entry{QStringLiteral("산하단체.분야회 소속현황"), {sub_cbb}, false, true},
                            entry{QStringLiteral("경력"), {career_y_cbb, "년", career_m_cbb, "개월"}},
                            entry{QStringLiteral("연봉"), {year_pay_txt, "만원"}},
                            entry{QStringLiteral("영양사면허수당"), {lic_pay_txt, "원"}}});
    auto* licences =
        form({entry{QStringLiteral("자격증소지현황1"),
                    {lic_kind_chk[0], lic_kind_chk[1], lic_kind_chk[2], lic_kind_chk[3], lic_kind_chk[4]}},
              entry{QStringLiteral("자격증소지현황2"),
                    {lic_kind_chk[5], lic_kind6_no, lic_kind_chk[6], lic_kind7_no}}});
    addr_txt->setAccessibleName(QStringLiteral("자택주소"));
    for (QWidget* licence : {static_cast<QWidget*>(lic_kind6_no), static_cast<QWidget*>(lic_kind7_no)})
        licence->setAccessibleName(QStringLiteral("자격증번호"));
    auto* box = new QVBoxLayout{this};
    box->setContentsMargins(0, 0, 0, 0);
    box->addLayout(below({beside({person, reach, belonging}, {4, 6, 5}), licences}));
}

void member_details::load_member_combos()
{
    const member_choices choices = read_console_choices(local_);
    bran_cbb->fill(choices.branches, "branch_name", "code_bran");
    big_cbb->fill(choices.divisions, "big_name", "code_big");
    school_cbb->fill(choices.schools, "school_name", "code_school");
    sub_cbb->fill(choices.affiliated_bodies, "sub_element_name", "sub_code");
    deposit_cbb->fill(choices.contractors, "deposit_name", "code_deposit");
    rel_cbb->fill(choices.religions, "religion_name", "code_religion");
    // Four levels that never had codes of their own stand before the table's.
    for (const char* level : {"고졸", "전문대졸", "대졸", "대학원졸"})
        scholar_cbb->add(QString::fromUtf8(level), 0);
    for (const auto each : choices.educations)
        scholar_cbb->add(each.text("scholar_name"), each.number("code_scholar"));
    scholar_cbb->setCurrentIndex(-1);
    univer_cbb->fill(choices.degrees, "univer_name", "code_univer");
}

void member_details::clear()
{
    for (QLineEdit* field :
         {name_txt, pers_no1_txt, pers_no2_txt, lic_no_txt,   post1_txt,    post2_txt,   addr_txt,
          tel1_txt, tel2_txt,     tel3_txt,     hp1_txt,      hp2_txt,      hp3_txt,     email_txt,
          id_txt,   passwd_txt,   lic_pay_txt,  year_pay_txt, lic_kind6_no, lic_kind7_no})
        field->clear();
    addr_txt->setToolTip({});
    for (code_list* each :
         {bran_cbb, big_cbb, sect_cbb, scholar_cbb, univer_cbb, school_cbb, career_y_cbb, career_m_cbb,
          get_mail_cbb, pers_call_cbb, marry_cbb, rel_cbb, deposit_cbb, sub_cbb})
        each->setCurrentIndex(-1);
    sect_cbb->QComboBox::clear();
    for (QCheckBox* each : lic_kind_chk)
        each->setChecked(false);
    for (QRadioButton* each : {sex1_opt, sex2_opt}) {
        each->setAutoExclusive(false);
        each->setChecked(false);
        each->setAutoExclusive(true);
    }
}

void member_details::show_member(const rows::row& member)
{
    name_txt->setText(member.text("pers_name"));
    (member.number("pers_sex") == 1 ? sex1_opt : sex2_opt)->setChecked(true);
    const QString pers_no = member.text("pers_no");
    pers_no1_txt->setText(pers_no.left(6));
    pers_no2_txt->setText(pers_no.right(7));
    lic_no_txt->setText(member.text("lic_no"));
    choose_codes(member);
    const QString career = member.text("pers_career");
    career_y_cbb->choose_text(career.left(2));
    career_m_cbb->choose_text(career.right(2));
    get_mail_cbb->choose_text(member.text("get_mail_place"));
    pers_call_cbb->choose_text(member.text("pers_call"));
    show_numbers(member);
    email_txt->setText(member.text("email"));
    for (std::size_t i = 0; i < lic_kind_chk.size(); ++i)
        lic_kind_chk[i]->setChecked(member.number("lic_kind" + std::to_string(i + 1)) == 1);
    lic_kind6_no->setText(member.text("lic_kind6_no"));
    lic_kind7_no->setText(member.text("lic_kind7_no"));
    marry_cbb->choose_text(member.text("pers_marry") == QStringLiteral("미혼") ? QStringLiteral("미혼")
                                                                               : QStringLiteral("기혼"));
    lic_pay_txt->setText(member.text("lic_pay"));
    year_pay_txt->setText(member.text("pers_year_pay"));
}

void member_details::choose_codes(const rows::row& member)
{
    bran_cbb->choose_code(member.number("code_bran"));
    big_cbb->choose_code(member.number("code_big"));
    sect_cbb->fill(read_sections(local_, bran_cbb->code(), big_cbb->code()), "section_name", "code_sect");
    sect_cbb->choose_code(member.number("code_sect"));
    scholar_cbb->choose_code(member.number("code_scholar"));
    univer_cbb->choose_code(member.number("code_univer"));
    school_cbb->choose_code(member.number("code_school"));
    rel_cbb->choose_code(member.number("code_religion"));
    deposit_cbb->choose_code(member.number("code_deposit"));
    sub_cbb->choose_code(member.number("sub_code"));
}

void member_details::show_numbers(const rows::row& member)
{
    const QString post = member.text("code_post");
    post1_txt->setText(post.left(3));
    post2_txt->setText(post.right(3));
    addr_txt->setText(member.text("pers_add"));
    addr_txt->setCursorPosition(0);
    addr_txt->setToolTip(addr_txt->text()); // a long one is not seen whole
    const phone_parts tel = cut_phone(member.text("pers_tel"));
    tel1_txt->setText(tel.area);
    tel2_txt->setText(tel.exchange);
    tel3_txt->setText(tel.line);
    const phone_parts hp = cut_mobile(member.text("pers_hp"));
    hp1_txt->setText(hp.area);
    hp2_txt->setText(hp.exchange);
    hp3_txt->setText(hp.line);
}

void member_details::show_web_identity(const web_identity& login)
{
    id_txt->setText(login.id);
    passwd_txt->setText(login.passwd);
}

} // namespace orvo

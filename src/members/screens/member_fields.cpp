#include "members/screens/member_fields.h"

#include "client/client.h"
#include "client/configuration.h"
#include "db/schema/schema.h"
#include "ui/amount_field.h"
#include "ui/controls.h"
#include "ui/failures.h"

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

code_list* texts(const char* name, const QStringList& items, int shown = 12)
{
    return text_list(QString::fromLatin1(name), items, shown);
}

QRadioButton* option(const char* name, const char* caption)
{
    auto* made = new QRadioButton{QString::fromUtf8(caption)};
    made->setObjectName(QString::fromLatin1(name));
    return made;
}

std::array<QString, 3> texts_of(const std::array<QLineEdit*, 3>& fields)
{
    return {fields[0]->text(), fields[1]->text(), fields[2]->text()};
}

/// The code of four levels, and of whoever has told none: it says nothing of a member.
constexpr qint64 no_education = 0;

constexpr std::array<const char*, 7> licence_captions{"초등교사", "중등교사",   "운동처방사",     "조리사",
                                                      "기타",     "임상영양사", "급식경영 영양사"};

} // namespace

std::array<QLineEdit*, 3> telephone(const QString& stem)
{
    return {digits_field(stem + QStringLiteral("1_txt"), 4, 4),
            digits_field(stem + QStringLiteral("2_txt"), 5, 4),
            digits_field(stem + QStringLiteral("3_txt"), 5, 4)};
}

QToolButton* code_picker(const char* name, const char* caption, QWidget* list)
{
    return picker_button(QString::fromLatin1(name), QString::fromUtf8(caption) + QStringLiteral(" 찾기·추가"),
                         {list});
}

member_fields::member_fields(client& c, desk& at, QWidget* form)
    : c_{c}, default_email_{u'@' + default_mail_domain(c.folder)}
{
    name_txt = member_field("name_txt", 16, "pers_name");
    pers_no1_txt = digits_field(QStringLiteral("pers_no1_txt"), 7, 6);
    pers_no2_txt = digits_field(QStringLiteral("pers_no2_txt"), 8, 7);
    lic_no_txt = member_field("lic_no_txt", 16, "lic_no");
    sex1_opt = option("sex1_opt", "남");
    sex2_opt = option("sex2_opt", "녀");
    bran_cbb = list("bran_cbb");
    big_cbb = list("big_cbb");
    sect_cbb = list("sect_cbb");
    scholar_cbb = list("scholar_cbb");
    univer_cbb = list("univer_cbb");
    school_cbb = list("school_cbb");
    rel_cbb = list("rel_cbb");
    deposit_cbb = list("deposit_cbb");
    sub_cbb = list("sub_cbb");
    career_y_cbb = texts("career_y_cbb", two_digit_texts(1, 50), 3);
    career_m_cbb = texts("career_m_cbb", two_digit_texts(1, 11), 3);
    get_mail_cbb = texts("get_mail_cbb", {QStringLiteral("자택"), QStringLiteral("직장")});
    pers_call_cbb = texts("pers_call_cbb", {QStringLiteral("교수님"), QStringLiteral("영양사님"),
                                            QStringLiteral("영양사 선생님"), QStringLiteral("님 귀하")});
    marry_cbb = texts("marry_cbb", {QStringLiteral("미혼"), QStringLiteral("기혼")});
    post1_txt = digits_field(QStringLiteral("post1_txt"), 4, 3);
    post2_txt = digits_field(QStringLiteral("post2_txt"), 4, 3);
    addr_txt = member_field("addr_txt", 24, "pers_add");
    tel = telephone(QStringLiteral("tel"));
    hp = telephone(QStringLiteral("hp"));
    email_txt = new email_field;
    set_up_text_field(*email_txt, QStringLiteral("email_txt"), 24, width_of("person_m_tbl", "email"));
    id_txt = text_field(QStringLiteral("id_txt"), 11, width_of("id_tbl", "id"));
    passwd_txt = text_field(QStringLiteral("passwd_txt"), 11, width_of("id_tbl", "passwd"));
    lic_pay_txt = new amount_field{QStringLiteral("lic_pay_txt"), 10};
    year_pay_txt = new amount_field{QStringLiteral("year_pay_txt"), 10, amount_kind::ten_thousand_won};
    lic_kind6_no = member_field("lic_kind6_no", 12, "lic_kind6_no");
    lic_kind7_no = member_field("lic_kind7_no", 12, "lic_kind7_no");
    for (std::size_t i = 0; i < lic_kind_chk.size(); ++i) {
        lic_kind_chk[i] = new QCheckBox{QString::fromUtf8(licence_captions[i])};
        lic_kind_chk[i]->setObjectName(QStringLiteral("lic_kind_chk(%1)").arg(i));
    }
    lic_kind6_no->setAccessibleName(QStringLiteral("임상영양사 자격증번호"));
    lic_kind7_no->setAccessibleName(QStringLiteral("급식경영 영양사 자격증번호"));
    addr_txt->setAccessibleName(QStringLiteral("자택주소"));
    bran_img = code_picker("bran_img", "소속지부", bran_cbb);
    big_img = code_picker("big_img", "소속분과", big_cbb);
    sect_img = code_picker("sect_img", "소속분회", sect_cbb);
    school_img = code_picker("school_img", "학교", school_cbb);
    rel_img = code_picker("rel_img", "종교", rel_cbb);
    deposit_img = code_picker("deposit_img", "소속위탁업체", deposit_cbb);
    sub_img = code_picker("sub_img", "산하단체.분야회 소속현황", sub_cbb);
    addr_img = picker_button(QStringLiteral("addr_img"), QStringLiteral("우편번호 찾기"),
                             {post1_txt, post2_txt, addr_txt}, "map-pin");
    attach(at, form);
}

std::optional<refusal> unreadable_amount(std::initializer_list<const amount_field*> fields)
{
    for (const amount_field* each : fields)
        if (const QString why = each->refusal(); !why.isEmpty())
            return refusal{why, each->objectName()};
    return {};
}

std::optional<refusal> withdrawn_date(std::initializer_list<date_group> dates)
{
    for (const date_group& each : dates)
        if (const QString why = each.withdraw_refusal(); !why.isEmpty())
            return refusal{why, each.year->objectName()};
    return {};
}

void open_by_click(client& c, desk& at, QWidget* form,
                   std::initializer_list<std::pair<QToolButton*, const char*>> pickers)
{
    for (const auto& [button, dialog_name] : pickers)
        failures::on_click(
            button, c.say, failures::policy::report,
            [&at, form, name = QString::fromLatin1(dialog_name)] { at.open_above(name, form); });
}

void member_fields::attach(desk& at, QWidget* form)
{
    open_by_click(c_, at, form,
                  {{bran_img, "bran_dlg"},
                   {big_img, "big_dlg"},
                   {sect_img, "section_dlg"},
                   {school_img, "school_dlg"},
                   {rel_img, "religion_dlg"},
                   {deposit_img, "deposit_dlg"},
                   {sub_img, "sub_dlg"}});
    failures::on_click(addr_img, c_.say, failures::policy::report, [this, &at, form] {
        c_.zip_target = 1;
        at.open_above(QStringLiteral("zip_dlg"), form);
    });
    for (code_list* above : {bran_cbb, big_cbb})
        QObject::connect(above, &QComboBox::currentIndexChanged, form, [this](int chosen) {
            if (chosen >= 0)
                failures::guard(c_.say, failures::policy::report, [this] { drop_others_sections(); });
        });
    // A pick of the branch alone brings no other sub-branches: the division decides.
    QObject::connect(big_cbb, &QComboBox::activated, form, [this] {
        failures::guard(c_.say, failures::policy::report, [this] {
            const QString why = fill_sections();
            if (why.isEmpty())
                return;
            c_.say.tell({why, {}, sign::exclamation});
            bran_cbb->setFocus(Qt::OtherFocusReason);
        });
    });
}

void member_fields::fill(const member_choices& choices)
{
    bran_cbb->fill(choices.branches, "branch_name", "code_bran");
    big_cbb->fill(choices.divisions, "big_name", "code_big");
    school_cbb->fill(choices.schools, "school_name", "code_school");
    sub_cbb->fill(choices.affiliated_bodies, "sub_element_name", "sub_code");
    deposit_cbb->fill(choices.contractors, "deposit_name", "code_deposit");
    rel_cbb->fill(choices.religions, "religion_name", "code_religion");
    // Four levels that have no codes of their own stand before the table's: as in use; must not change.
    scholar_cbb->clear();
    for (const char* level : {"고졸", "전문대졸", "대졸", "대학원졸"})
        scholar_cbb->add(QString::fromUtf8(level), no_education);
    for (const auto each : choices.educations)
        scholar_cbb->add(each.text("scholar_name"), each.number("code_scholar"));
    scholar_cbb->setCurrentIndex(-1);
    univer_cbb->fill(choices.degrees, "univer_name", "code_univer");
}

void member_fields::choose_defaults()
{
    get_mail_cbb->choose_text(QStringLiteral("자택"));
    pers_call_cbb->choose_text(QStringLiteral("영양사님"));
    marry_cbb->choose_text(QStringLiteral("미혼"));
    sex2_opt->setChecked(true);
    email_txt->show_domain(default_email_);
}

void member_fields::choose_education(qint64 code)
{
    code == no_education ? scholar_cbb->setCurrentIndex(-1) : scholar_cbb->choose_code(code);
}

QString member_fields::fill_sections()
{
    const section_choices found = read_sections(c_.local_conn, bran_cbb->code(), big_cbb->code());
    if (found.refusal.isEmpty())
        sect_cbb->fill(found.sections, "section_name", "code_sect");
    return found.refusal;
}

/// Under another branch or division the code of a sub-branch is another one's, or nobody's.
void member_fields::drop_others_sections()
{
    if (sect_cbb->count() == 0)
        return;
    const section_choices theirs = read_sections(c_.local_conn, bran_cbb->code(), big_cbb->code());
    if (!sect_cbb->keep_only(theirs.sections, "section_name", "code_sect"))
        c_.say.note(QStringLiteral("소속분회가 고른 지부와 분과의 것이 아니어서 비웠습니다."));
}

member_data member_fields::read() const
{
    member_data typed;
    typed.pers_no1 = pers_no1_txt->text();
    typed.pers_no2 = pers_no2_txt->text();
    typed.lic_no = lic_no_txt->text();
    typed.pers_name = name_txt->text();
    typed.is_male = sex1_opt->isChecked();
    typed.code_religion = rel_cbb->code();
    typed.pers_marry = marry_cbb->currentText();
    typed.code_post = post1_txt->text() + post2_txt->text();
    typed.pers_add = addr_txt->text();
    typed.pers_tel = texts_of(tel);
    typed.pers_hp = texts_of(hp);
    typed.email = email_txt->text() == default_email_ ? QString{} : email_txt->text();
    typed.code_bran = bran_cbb->code();
    typed.code_big = big_cbb->code();
    typed.code_sect = sect_cbb->code();
    typed.code_scholar = scholar_cbb->code();
    typed.code_univer = univer_cbb->code();
    typed.code_school = school_cbb->code();
    typed.career_years = career_y_cbb->currentText();
    typed.career_months = career_m_cbb->currentText();
    typed.pers_call = pers_call_cbb->currentText();
    typed.get_mail_place = get_mail_cbb->currentText();
    typed.pers_year_pay = year_pay_txt->amount();
    for (std::size_t i = 0; i < lic_kind_chk.size(); ++i)
        typed.lic_kind[i] = lic_kind_chk[i]->isChecked();
    typed.lic_kind6_no = lic_kind6_no->text();
    typed.lic_kind7_no = lic_kind7_no->text();
    typed.lic_pay = lic_pay_txt->amount();
    typed.code_deposit = deposit_cbb->code();
    typed.sub_code = sub_cbb->code();
    return typed;
}

namespace {

struct column_caption {
    std::string_view column;
    const char* caption;
    code_list* member_fields::*list = nullptr;
};

constexpr column_caption column_captions[]{{"pers_no", "주민등록번호"},
                                           {"lic_no", "면허번호"},
                                           {"pers_name", "이름"},
                                           {"pers_sex", "성별"},
                                           {"code_religion", "종교", &member_fields::rel_cbb},
                                           {"pers_marry", "혼인여부"},
                                           {"code_post", "우편번호"},
                                           {"pers_add", "자택주소"},
                                           {"pers_tel", "자택전화번호"},
                                           {"pers_hp", "핸드폰번호"},
                                           {"email", "E-Mail"},
                                           {"code_bran", "소속지부", &member_fields::bran_cbb},
                                           {"code_big", "소속분과", &member_fields::big_cbb},
                                           {"code_sect", "소속분회", &member_fields::sect_cbb},
                                           {"code_scholar", "최종학력", &member_fields::scholar_cbb},
                                           {"code_univer", "학위", &member_fields::univer_cbb},
                                           {"code_school", "학교", &member_fields::school_cbb},
                                           {"pers_career", "경력"},
                                           {"pers_call", "발송호칭"},
                                           {"get_mail_place", "우편물수신처"},
                                           {"pers_year_pay", "연봉"},
                                           {"lic_kind6_no", "임상영양사 자격증번호"},
                                           {"lic_kind7_no", "급식경영 영양사 자격증번호"},
                                           {"lic_pay", "영양사면허수당"},
                                           {"code_deposit", "소속위탁업체", &member_fields::deposit_cbb},
                                           {"sub_code", "산하단체.분야회", &member_fields::sub_cbb}};

const column_caption* find_caption(std::string_view column)
{
    for (const column_caption& each : column_captions)
        if (each.column == column)
            return &each;
    return nullptr;
}

} // namespace

QString member_fields::caption_of(std::string_view column) const
{
    if (const column_caption* found = find_caption(column))
        return QString::fromUtf8(found->caption);
    // The flags of the certificates: lic_kind1 to lic_kind7.
    return lic_kind_chk[static_cast<std::size_t>(column.back() - '1')]->text();
}

QString member_fields::shown_as(std::string_view column, const QString& value) const
{
    const column_caption* found = find_caption(column);
    if (!found)
        return value == QLatin1String("1") ? QStringLiteral("예") : QStringLiteral("아니오");
    if (column == "pers_sex")
        return value == QLatin1String("1") ? sex1_opt->text() : sex2_opt->text();
    if (!found->list)
        return value;
    if (found->list == &member_fields::scholar_cbb && value.toLongLong() == no_education)
        return value;
    const int at = (this->*found->list)->findData(value.toLongLong());
    return at < 0 ? value : (this->*found->list)->itemText(at);
}

code_list* member_fields::list_for(std::string_view table) const
{
    const std::pair<std::string_view, code_list*> lists[]{
        {"branch_code", bran_cbb},    {"big_division", big_cbb},    {"deposit", deposit_cbb},
        {"religion", rel_cbb},        {"school", school_cbb},       {"sub_element", sub_cbb},
        {"scholarship", scholar_cbb}, {"univer_degree", univer_cbb}};
    for (const auto& [taken, takes] : lists)
        if (taken == table)
            return takes;
    return nullptr;
}

} // namespace orvo

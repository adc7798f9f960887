#include "members/screens/workplace_fields.h"

#include "client/client.h"
#include "db/schema/schema.h"
#include "members/screens/member_fields.h"
#include "reference/rules/divisions.h"
#include "ui/amount_field.h"
#include "ui/controls.h"
#include "ui/failures.h"

namespace orvo {

namespace {

QLineEdit* workplace_field(const char* name, int shown, const char* column)
{
    return text_field(QString::fromLatin1(name), shown, width_of("company", column));
}

/// A list of fixed items with their codes, none of them chosen.
code_list* fixed_list(const char* name, std::initializer_list<std::pair<const char*, int>> items,
                      int shown = 8)
{
    auto* list = new code_list{QString::fromLatin1(name), shown};
    for (const auto& [text, code] : items)
        list->add(QString::fromUtf8(text), code);
    list->setCurrentIndex(-1);
    return list;
}

QStringList one_to_ten()
{
    QStringList texts;
    for (int i = 1; i <= 10; ++i)
        texts.append(QString::number(i));
    return texts;
}

template <std::size_t count>
std::array<amount_field*, count> counters(const QString& stem)
{
    std::array<amount_field*, count> made;
    for (std::size_t i = 0; i < count; ++i)
        made[i] =
            new amount_field{stem + QString::number(i + 1) + QStringLiteral("_txt"), 5, amount_kind::count};
    return made;
}

QString joined(const std::array<QLineEdit*, 3>& fields)
{
    return fields[0]->text() + fields[1]->text() + fields[2]->text();
}

} // namespace

workplace_fields::workplace_fields(client& c, desk& at, QWidget* form)
    : com_name_txt{workplace_field("com_name_txt", 24, "company_name")}, job_part_txt{workplace_field(
                                                                             "job_part_txt", 24, "job_dept")},
      part_cbb{fixed_list("part_cbb", {{"집단급식소", 100}, {"비집단급식소", 200}}, 12)},
      great_div_cbb{fixed_list("great_div_cbb", {}, 12)}, small_div_cbb{fixed_list("small_div_cbb", {}, 12)},
      job_line_cbb{fixed_list("job_line_cbb", {}, 12)}, job_level_cbb{fixed_list("job_level_cbb", {}, 12)},
      use_cbb{fixed_list("use_cbb", {}, 12)}, emp{QStringLiteral("emp_y_cbb"), QStringLiteral("emp_m_cbb"),
                                                  c.now},
      com_post1_txt{digits_field(QStringLiteral("com_post1_txt"), 4, 3)},
      com_post2_txt{digits_field(QStringLiteral("com_post2_txt"), 4, 3)},
      com_addr_txt{workplace_field("com_addr_txt", 24, "company_add")},
      com_tel{telephone(QStringLiteral("com_tel"))}, fax{telephone(QStringLiteral("fax"))},
      np{counters<4>(QStringLiteral("np"))}, mnp{counters<3>(QStringLiteral("mnp"))},
      meal_s_txt{workplace_field("meal_s_txt", 8, "company_meal")}, sick_txt{workplace_field(
                                                                        "sick_txt", 8, "company_sick_bad")},
      pers_multy_cbb{fixed_list("pers_multy_cbb", {{"겸직", 1}, {"비겸직", 0}})},
      join_con_cbb{text_list(QStringLiteral("join_con_cbb"), one_to_ten(), 3)},
      join_cook_cbb{text_list(QStringLiteral("join_cook_cbb"), one_to_ten(), 3)},
      san_edu_cbb{fixed_list("san_edu_cbb", {{"받음", 1}, {"받지않음", 0}})},
      primary_cbb{fixed_list("primary_cbb", {{"예", 1}, {"아니오", 0}})},
      com_img{picker_button(QStringLiteral("com_img"), QStringLiteral("우편번호 찾기"),
                            {com_post1_txt, com_post2_txt, com_addr_txt}, "map-pin")},
      great_img{code_picker("great_img", "근무처대분류", great_div_cbb)}, small_img{code_picker(
                                                                              "small_img", "근무처소분류",
                                                                              small_div_cbb)},
      job_line_img{code_picker("job_line_img", "직렬", job_line_cbb)},
      job_level_img{code_picker("job_level_img", "직급", job_level_cbb)}, c_{c}
{
    com_addr_txt->setAccessibleName(QStringLiteral("회사주소"));
    attach(at, form);
}

void workplace_fields::attach(desk& at, QWidget* form)
{
    open_by_click(c_, at, form,
                  {{great_img, "great_dlg"},
                   {small_img, "small_dlg"},
                   {job_line_img, "job_line_dlg"},
                   {job_level_img, "job_level_dlg"}});
    failures::on_click(com_img, c_.say, failures::policy::report, [this, &at, form] {
        c_.zip_target = 2;
        at.open_above(QStringLiteral("zip_dlg"), form);
    });
    const auto on_pick = [this, form](code_list* from, void (workplace_fields::*refill)()) {
        QObject::connect(from, &QComboBox::activated, form, [this, refill] {
            failures::guard(c_.say, failures::policy::report, [this, refill] { (this->*refill)(); });
        });
    };
    on_pick(part_cbb, &workplace_fields::fill_great_divisions);
    on_pick(great_div_cbb, &workplace_fields::pick_great_division);
}

void workplace_fields::fill(const workplace_choices& choices)
{
    job_line_cbb->fill(choices.job_lines, "job_line_name", "job_line_code");
    job_level_cbb->fill(choices.job_levels, "job_level_name", "job_level_code");
    use_cbb->fill(choices.uses, "use_name", "code_use");
}

void workplace_fields::choose_defaults()
{
    primary_cbb->choose_text(QStringLiteral("예"));
    san_edu_cbb->choose_text(QStringLiteral("받지않음"));
}

void workplace_fields::fill_great_divisions()
{
    great_div_cbb->fill(read_great_divisions(c_.local_conn, part_cbb->code()), "great_name", "code_great");
}

void workplace_fields::fill_small_divisions()
{
    small_div_cbb->fill(read_small_divisions(c_.local_conn, part_cbb->code(), great_div_cbb->code()),
                        "small_name", "code_small");
}

void workplace_fields::pick_great_division()
{
    if (!part_cbb->code().isEmpty())
        return fill_small_divisions();
    c_.say.tell({QStringLiteral("근무처 구분을 선택하십시요"), {}, sign::exclamation});
    part_cbb->setFocus(Qt::OtherFocusReason);
}

namespace {

void show_phone(const std::array<QLineEdit*, 3>& fields, const phone_parts& number)
{
    fields[0]->setText(number.area);
    fields[1]->setText(number.exchange);
    fields[2]->setText(number.line);
}

} // namespace

void workplace_fields::show_fax(const phone_parts& number)
{
    show_phone(fax, number);
}

void workplace_fields::show(const rows::row& stored)
{
    com_name_txt->setText(stored.text("company_name"));
    part_cbb->choose_code(stored.number("code_part"));
    great_div_cbb->QComboBox::clear();
    small_div_cbb->QComboBox::clear();
    if (!part_cbb->code().isEmpty())
        fill_great_divisions();
    great_div_cbb->choose_code(stored.number("code_great"));
    if (!great_div_cbb->code().isEmpty())
        fill_small_divisions();
    small_div_cbb->choose_code(stored.number("code_small"));
    job_part_txt->setText(stored.text("job_dept"));
    job_line_cbb->choose_code(stored.number("job_line_code"));
    job_level_cbb->choose_code(stored.number("job_level_code"));
    use_cbb->choose_code(stored.number("code_use"));
    const QString post = stored.text("code_post");
    com_post1_txt->setText(post.left(3));
    com_post2_txt->setText(post.right(3));
    com_addr_txt->setText(stored.text("company_add"));
    show_phone(com_tel, cut_phone(stored.text("company_tel")));
    constexpr std::array meals{"company_morning", "company_midday", "company_evening", "company_between"};
    for (std::size_t i = 0; i < np.size(); ++i)
        np[i]->set_amount(stored.text(meals[i]));
    constexpr std::array staff{"company_diet", "company_cook", "company_food"};
    for (std::size_t i = 0; i < mnp.size(); ++i)
        mnp[i]->set_amount(stored.text(staff[i]));
    meal_s_txt->setText(stored.text("company_meal"));
    sick_txt->setText(stored.text("company_sick_bad"));
    pers_multy_cbb->choose_code(stored.number("pers_multy"));
    join_con_cbb->choose_text(stored.text("join_con"));
    join_cook_cbb->choose_text(stored.text("join_cook"));
    san_edu_cbb->choose_code(stored.number("comp_except"));
    primary_cbb->choose_code(stored.number("primary_flag") == 1 ? 1 : 0);
}

workplace_data workplace_fields::read() const
{
    workplace_data typed;
    typed.company_name = com_name_txt->text();
    typed.code_part = part_cbb->code();
    typed.code_great = great_div_cbb->code();
    typed.code_small = small_div_cbb->code();
    typed.pers_in_date = emp.stored();
    typed.job_dept = job_part_txt->text();
    typed.job_line_code = job_line_cbb->code();
    typed.job_level_code = job_level_cbb->code();
    typed.code_use = use_cbb->code();
    typed.code_post = com_post1_txt->text() + com_post2_txt->text();
    typed.company_add = com_addr_txt->text();
    typed.company_tel = joined(com_tel);
    typed.company_fax = joined(fax);
    for (std::size_t i = 0; i < np.size(); ++i)
        typed.meals[i] = np[i]->amount();
    for (std::size_t i = 0; i < mnp.size(); ++i)
        typed.staff[i] = mnp[i]->amount();
    typed.company_meal = meal_s_txt->text();
    typed.company_sick_bad = sick_txt->text();
    typed.pers_multy = pers_multy_cbb->code();
    typed.join_con = join_con_cbb->currentText();
    typed.join_cook = join_cook_cbb->currentText();
    typed.comp_except = san_edu_cbb->code();
    typed.primary_flag = primary_cbb->code();
    return typed;
}

std::optional<refusal> workplace_fields::unreadable_count() const
{
    return unreadable_amount({np[0], np[1], np[2], np[3], mnp[0], mnp[1], mnp[2]});
}

code_list* workplace_fields::list_for(std::string_view table) const
{
    const std::pair<std::string_view, code_list*> lists[]{{"great_division", great_div_cbb},
                                                          {"job_line", job_line_cbb},
                                                          {"job_level", job_level_cbb},
                                                          {"make_use_of", use_cbb}};
    for (const auto& [taken, takes] : lists)
        if (taken == table)
            return takes;
    return nullptr;
}

} // namespace orvo

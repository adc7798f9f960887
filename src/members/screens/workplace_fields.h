#pragma once

#include "base/phone.h"
#include "members/rules/member_choices.h"
#include "members/rules/member_data.h"
#include "ui/date_group.h"
#include "ui/pick_target.h"

#include <array>
#include <optional>

class QLineEdit;
class QToolButton;

namespace orvo {

class amount_field;
class client;

/// The controls of a workplace, shared by all that enter one: made here, arranged by each.
struct workplace_fields {
    workplace_fields(client& c, desk& at, QWidget* form);

    QLineEdit *com_name_txt, *job_part_txt;
    code_list *part_cbb, *great_div_cbb, *small_div_cbb, *job_line_cbb, *job_level_cbb, *use_cbb;
    date_group emp; ///< emp_y_cbb, emp_m_cbb
    QLineEdit *com_post1_txt, *com_post2_txt, *com_addr_txt;
    std::array<QLineEdit*, 3> com_tel, fax; ///< com_tel1_txt, fax1_txt and so on
    std::array<amount_field*, 4> np;        ///< np1_txt and so on: meals a day
    std::array<amount_field*, 3> mnp;       ///< mnp1_txt and so on: staff
    QLineEdit *meal_s_txt, *sick_txt;
    code_list *pers_multy_cbb, *join_con_cbb, *join_cook_cbb, *san_edu_cbb, *primary_cbb;
    QToolButton *com_img, *great_img, *small_img, *job_line_img, *job_level_img;

    void fill(const workplace_choices& choices);
    void choose_defaults();
    /// The classes under the chosen part, and those under the chosen class.
    void fill_great_divisions();
    void fill_small_divisions();

    /// Shows a row of `company` but for its joining date and fax, of which each dialog has its own view.
    void show(const rows::row& stored);
    void show_fax(const phone_parts& number);
    workplace_data read() const;
    std::optional<refusal> unreadable_count() const;

    code_list* list_for(std::string_view table) const;
    address_fields address() const { return {com_post1_txt, com_post2_txt, com_addr_txt}; }

private:
    client& c_;

    void attach(desk& at, QWidget* form);
    void pick_great_division();
};

} // namespace orvo

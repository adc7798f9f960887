#pragma once

#include "members/rules/member_choices.h"
#include "members/rules/member_data.h"
#include "members/screens/email_field.h"
#include "ui/date_group.h"
#include "ui/pick_target.h"

#include <array>

class QCheckBox;
class QLineEdit;
class QRadioButton;
class QToolButton;

namespace orvo {

class amount_field;
class client;

/// The controls of a member's own data, which the registration form and the console share: made here,
/// arranged by each.
struct member_fields {
    member_fields(client& c, desk& at, QWidget* form);

    QLineEdit *name_txt, *pers_no1_txt, *pers_no2_txt, *lic_no_txt;
    QRadioButton *sex1_opt, *sex2_opt;
    code_list *bran_cbb, *big_cbb, *sect_cbb, *scholar_cbb, *univer_cbb, *school_cbb;
    code_list *career_y_cbb, *career_m_cbb, *get_mail_cbb, *pers_call_cbb, *marry_cbb, *rel_cbb, *deposit_cbb,
        *sub_cbb;
    QLineEdit *post1_txt, *post2_txt, *addr_txt;
    std::array<QLineEdit*, 3> tel, hp; ///< tel1_txt and so on
    email_field* email_txt;
    QLineEdit *id_txt, *passwd_txt, *lic_kind6_no, *lic_kind7_no;
    amount_field *lic_pay_txt, *year_pay_txt;
    std::array<QCheckBox*, 7> lic_kind_chk;
    QToolButton *addr_img, *bran_img, *big_img, *sect_img, *school_img, *rel_img, *deposit_img, *sub_img;

    void fill(const member_choices& choices);
    /// Chooses the level of that code; none for the code that says nothing.
    void choose_education(qint64 code);
    /// What a form without a member begins with.
    void choose_defaults();
    /// The sub-branches of the chosen branch and division. Returns why there are none.
    QString fill_sections();

    member_data read() const;
    /// A column's caption, and a value of it as the form would show it: the name of a code.
    QString caption_of(std::string_view column) const;
    QString shown_as(std::string_view column, const QString& value) const;

    code_list* list_for(std::string_view table) const;
    address_fields home_address() const { return {post1_txt, post2_txt, addr_txt}; }

private:
    client& c_;
    QString default_email_;

    void attach(desk& at, QWidget* form);
    void drop_others_sections();
};

/// The three fields of a telephone number: "tel" makes tel1_txt, tel2_txt, tel3_txt.
std::array<QLineEdit*, 3> telephone(const QString& stem);
/// The button behind a list of codes that opens its editor.
QToolButton* code_picker(const char* name, const char* caption, QWidget* list);

/// The first of the amounts that cannot be taken as typed, and why.
std::optional<refusal> unreadable_amount(std::initializer_list<const amount_field*> fields);

/// The first of the dates that was typed and put back, as it could not be read.
std::optional<refusal> withdrawn_date(std::initializer_list<date_group> dates);

/// Connects picker buttons with the dialogs that they open above the form.
void open_by_click(client& c, desk& at, QWidget* form,
                   std::initializer_list<std::pair<QToolButton*, const char*>> pickers);

} // namespace orvo

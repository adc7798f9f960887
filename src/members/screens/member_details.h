#pragma once

#include "db/connection.h"
#include "members/rules/member_record.h"

#include <QWidget>

#include <array>

class QCheckBox;
class QLineEdit;
class QRadioButton;

namespace orvo {

class code_list;

/// The fields of one member as the console shows them. They are looked at here, not changed.
class member_details : public QWidget {
public:
    explicit member_details(connection& local);

    /// Empties every field, so that no piece of the member shown before is left.
    void clear();
    void show_member(const rows::row& member);
    void show_web_identity(const web_identity& login);

private:
    connection& local_;

    QLineEdit *name_txt, *pers_no1_txt, *pers_no2_txt, *lic_no_txt;
    QRadioButton *sex1_opt, *sex2_opt;
    code_list *bran_cbb, *big_cbb, *sect_cbb, *scholar_cbb, *univer_cbb, *school_cbb;
    code_list *career_y_cbb, *career_m_cbb, *get_mail_cbb, *pers_call_cbb, *marry_cbb, *rel_cbb, *deposit_cbb,
        *sub_cbb;
    QLineEdit *post1_txt, *post2_txt, *addr_txt, *tel1_txt, *tel2_txt, *tel3_txt, *hp1_txt, *hp2_txt,
        *hp3_txt;
    QLineEdit *email_txt, *id_txt, *passwd_txt, *lic_pay_txt, *year_pay_txt, *lic_kind6_no, *lic_kind7_no;
    std::array<QCheckBox*, 7> lic_kind_chk;

    void load_member_combos();
    void arrange();
    void choose_codes(const rows::row& member);
    void show_numbers(const rows::row& member);
};

} // namespace orvo

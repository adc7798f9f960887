#pragma once

#include "db/wide_statement.h"

#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace orvo {

/// Why a save does not begin, and the name of the control that it is about.
struct refusal {
    QString text;
    QString control;
};

/// A member's own data as a form holds them: codes are empty where nothing is chosen, numbers are digits
/// without separators.
struct member_data {
    QString pers_no1; ///< "yymmdd"
    QString pers_no2; ///< the seven digits behind the hyphen
    QString lic_no;
    QString pers_name;
    bool is_male = false;
    QString code_religion;
    QString pers_marry;
    QString code_post;
    QString pers_add;
    std::array<QString, 3> pers_tel;
    std::array<QString, 3> pers_hp;
    QString email; ///< empty where the operator left the default
    QString code_bran;
    QString code_big;
    QString code_sect;
    QString code_scholar;
    QString code_univer;
    QString code_school;
    QString career_years;  ///< "05", or empty
    QString career_months; ///< "01" to "11", or empty
    QString pers_call;
    QString get_mail_place;
    QString pers_year_pay; ///< in units of ten thousand won
    std::array<bool, 7> lic_kind{};
    QString lic_kind6_no;
    QString lic_kind7_no;
    QString lic_pay;
    QString code_deposit;
    QString sub_code;

    QString pers_no() const { return pers_no1 + pers_no2; }
};

/// A workplace as a form holds it.
struct workplace_data {
    QString company_name;
    QString code_part; ///< 100, 200, or empty
    QString code_great;
    QString code_small;
    QString pers_in_date; ///< "yyyymm"
    QString job_dept;
    QString job_line_code;
    QString job_level_code;
    QString code_use;
    QString code_post;
    QString company_add;
    QString company_tel;
    QString company_fax;
    std::array<QString, 4> meals; ///< a day: morning, noon, evening, night
    std::array<QString, 3> staff; ///< dietitians, cooks, kitchen aides
    QString company_meal;
    QString company_sick_bad;
    QString pers_multy;
    QString join_con;
    QString join_cook;
    QString comp_except;
    QString pers_out_date; ///< "yyyymm"; empty for a current job
    QString primary_flag;
};

// How the pieces of a form are stored: an empty number as 0, a mark as '1' or '0', the parts of a telephone
// number without separators.
QString or_zero(const QString& typed);
QString flag(bool set);
QString joined(const std::array<QString, 3>& parts);

/// Name and resident number, the latter by the check of the screen that asks.
std::optional<refusal> check_identity(const member_data& member,
                                      bool (*check_pers_no)(QStringView, QStringView));
std::optional<refusal> check_home_telephone(const member_data& member);

/// The certificates that must bear a number. The second test looks at the sixth number as well, not at the
/// seventh: as in use; must not change.
std::optional<refusal> check_certificate_numbers(const member_data& member);

/// The columns of `company` that a new row gets, in the order of its insert.
std::vector<column_value> workplace_columns(const QString& pers_no, const workplace_data& workplace,
                                            const QString& today);

} // namespace orvo

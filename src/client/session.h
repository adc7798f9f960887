#pragma once

#include "client/branches.h"

namespace orvo {

/// Who works here. Written by the login alone, but for `current_screen`, which each screen sets when it
/// opens.
struct session_variables {
    bool session_ok = false;
    QString session_branch; ///< code of the branch as text; the number 0 is head office
    QString session_id;
    QString session_password; ///< in clear: the account at the message gateway is the same
    QString session_name;
    QString session_email;
    QString session_send_id;
    qint16 session_right1 = 0; ///< administration
    qint16 session_right2 = 0; ///< education
    qint16 session_right3 = 0; ///< kept in admin_tbl for what may come; nothing asks for it
    qint16 current_screen = 0;

    bool is_branch_operator() const { return is_branch(session_branch); }
};

/// What a screen sets just before it opens a dialog on the record that the operator chose. They outlive
/// screens.
struct handover_variables {
    QString selected_pers_no; ///< empty: no member is open
    QString cur_val_year;
    QString cur_code_member;
    QString cur_company_id;
    QString cur_dues_id;
    QString cur_con_id;
    QString cur_con_date;   ///< of the chosen instalment, "yyyymmdd"
    QString cur_con_day;    ///< of the open member's pledge, "yyyymmdd"; set when its panel is filled
    QString comp_ud_caller; ///< who opened `comp_ud_dlg`: 1 the console, 2 the hygiene education list
    qint16 zip_target = 0;  ///< of the registration form: 1 the home address, 2 the workplace's
    QString member_to_open; ///< whom the console opens by itself when it loads; taken back as it does
};

} // namespace orvo

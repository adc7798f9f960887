#include "shell/openers.h"

#include "dues/pledges/pledge_dialogs.h"
#include "dues/receipts/screens/dues_receipt_dlg.h"
#include "dues/receipts/screens/pers_receipt_dlg.h"
#include "dues/receipts/screens/receipt_dsg.h"
#include "dues/screens/delete_dialogs.h"
#include "dues/screens/header_dialogs.h"
#include "dues/screens/payment_dialogs.h"
#include "dues/search/dues_search_dlg.h"
#include "members/screens/insert_frm.h"
#include "members/screens/manager_main_frm.h"
#include "members/screens/search_dlg.h"
#include "members/screens/workplace_dialogs.h"
#include "reference/screens/code_editors.h"
#include "reference/screens/fetch_codes.h"
#include "reference/screens/zip_dlg.h"
#include "shell/login_dlg.h"
#include "shell/unfinished_saves_dlg.h"

namespace orvo {

namespace {

template <typename dialog_of_the_desk>
void run_dialog(client& c, desk& at, QWidget* over)
{
    dialog_of_the_desk{c, at, over}.exec();
}

} // namespace

openers all_openers()
{
    openers all;
    all.screens[QStringLiteral("insert_frm")] = [](client& c, desk& at, QWidget* over) -> work_screen* {
        return new insert_frm{c, at, over};
    };
    all.screens[QStringLiteral("manager_main_frm")] = [](client& c, desk& at, QWidget* over) -> work_screen* {
        return new manager_main_frm{c, at, over};
    };
    all.dialogs[QStringLiteral("login_dlg")] = [](client& c, desk&, QWidget* over) {
        login_dlg{c, over}.exec();
    };
    all.dialogs[QStringLiteral("unfinished_saves_dlg")] = [](client& c, desk&, QWidget* over) {
        unfinished_saves_dlg{c, over}.exec();
    };
    all.dialogs[QStringLiteral("search_dlg")] = run_dialog<search_dlg>;
    all.dialogs[QStringLiteral("mem_in_dlg")] = run_dialog<mem_in_dlg>;
    all.dialogs[QStringLiteral("mem_ud_dlg")] = run_dialog<mem_ud_dlg>;
    all.dialogs[QStringLiteral("mem_del_dlg")] = run_dialog<mem_del_dlg>;
    all.dialogs[QStringLiteral("dues_in_dlg")] = run_dialog<dues_in_dlg>;
    all.dialogs[QStringLiteral("dues_ud_dlg")] = run_dialog<dues_ud_dlg>;
    all.dialogs[QStringLiteral("dues_del_dlg")] = run_dialog<dues_del_dlg>;
    all.dialogs[QStringLiteral("comp_in_dlg")] = run_dialog<comp_in_dlg>;
    all.dialogs[QStringLiteral("comp_ud_dlg")] = run_dialog<comp_ud_dlg>;
    all.dialogs[QStringLiteral("comp_del_dlg")] = run_dialog<comp_del_dlg>;
    all.dialogs[QStringLiteral("zip_dlg")] = run_dialog<zip_dlg>;
    all.dialogs[QStringLiteral("con_in_dlg")] = run_dialog<con_in_dlg>;
    all.dialogs[QStringLiteral("con_ud_dlg")] = run_dialog<con_ud_dlg>;
    all.dialogs[QStringLiteral("con_del_dlg")] = run_dialog<con_del_dlg>;
    all.dialogs[QStringLiteral("dues_search_dlg")] = run_dialog<dues_search_dlg>;
    all.dialogs[QStringLiteral("pers_receipt_dlg")] = run_dialog<pers_receipt_dlg>;
    all.dialogs[QStringLiteral("dues_receipt_dlg")] = run_dialog<dues_receipt_dlg>;
    all.dialogs[QStringLiteral("receipt_dsg")] = [](client& c, desk&, QWidget* over) {
        receipt_dsg{c, over}.exec();
    };
    all.dialogs[QStringLiteral("fetch_codes")] = [](client& c, desk&, QWidget* over) {
        fetch_codes(c, over);
    };
    for (const code_editor& each : code_editors())
        all.dialogs[QString::fromLatin1(each.dialog)] = [&each](client& c, desk& at, QWidget* over) {
            make_code_editor(each, c, at, over)->exec();
        };
    return all;
}

QString screen_name(qint16 code)
{
    static const std::map<qint16, QString> names{
        {screen_code::insert_frm, QStringLiteral("insert_frm")},
        {screen_code::manager_main_frm, QStringLiteral("manager_main_frm")},
        {screen_code::edu_frm, QStringLiteral("edu_frm")},
        {screen_code::data_m_frm, QStringLiteral("data_m_frm")},
        {screen_code::frmSMSSend, QStringLiteral("frmSMSSend")},
        {screen_code::sup_all_ud_dlg, QStringLiteral("sup_all_ud_dlg")},
    };
    const auto found = names.find(code);
    return found == names.end() ? QString{} : found->second;
}

} // namespace orvo

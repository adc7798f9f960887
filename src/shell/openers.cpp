#include "shell/openers.h"

#include "members/screens/insert_frm.h"
#include "members/screens/manager_main_frm.h"
#include "members/screens/search_dlg.h"
#include "reference/screens/code_editors.h"
#include "reference/screens/zip_dlg.h"
#include "shell/login_dlg.h"

namespace orvo {

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
    all.dialogs[QStringLiteral("search_dlg")] = [](client& c, desk& at, QWidget* over) {
        search_dlg{c, at, over}.exec();
    };
    all.dialogs[QStringLiteral("zip_dlg")] = [](client& c, desk& at, QWidget* over) {
        zip_dlg{c, at, over}.exec();
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

#include "shell/commands.h"

#include <algorithm>

namespace orvo {

namespace {

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

command screen_of(const char* name, const char* caption, const char* menu, const char* target)
{
    return {text(name), text(caption), text(menu), command_kind::screen, text(target)};
}

command search_of(const char* name, const char* caption, const char* menu, const char* target)
{
    return {text(name), text(caption), text(menu), command_kind::screen_search, text(target)};
}

command dialog_of(const char* name, const char* caption, const char* menu, const char* target)
{
    return {text(name), text(caption), text(menu), command_kind::dialog, text(target)};
}

menu_head head(const char* name, const char* caption, const char* parent = "")
{
    return {text(name), text(caption), text(parent)};
}

} // namespace

const std::vector<menu_head>& menu_heads()
{
    static const std::vector<menu_head> heads{
        head("m_log", "관리자 인증(&L)"), head("m_operation", "환경설정(&O)"),
        head("m_mg", "관리부(&M)"),       head("m_receipt", "영수증 출력", "m_mg"),
        head("m_edu", "교육부(&E)"),      head("m_edu_update", "교육과정 이수여부 일괄 수정", "m_edu"),
    };
    return heads;
}

const std::vector<command>& commands()
{
    static const std::vector<command> all{
        dialog_of("m_login", "로그인", "m_log", "login_dlg"),
        dialog_of("m_unfinished", "마치지 못한 저장", "m_log", "unfinished_saves_dlg"),
        screen_of("m_edu_in", "교육내용 입력", "m_operation", "edu_frm"),
        dialog_of("m_lic", "자격증관리", "m_operation", "lic_ud_dlg"),
        dialog_of("m_SupCreate", "위생 교육 대상 생성", "m_operation", "frmSupCreate"),
        dialog_of("m_codes", "코드표 새로 받기", "m_operation", "fetch_codes"),
        search_of("m_m_search", "일반검색", "m_mg", "search_dlg"),
        dialog_of("m_mg_dues", "회비납입여부검색", "m_mg", "dues_search_dlg"),
        dialog_of("m_t_date", "기간 검색", "m_receipt", "dues_receipt_dlg"),
        dialog_of("m_r_etc", "기타 검색", "m_receipt", "pers_receipt_dlg"),
        dialog_of("m_other", "오르보소식섭외명단", "m_mg", "other_dlg"),
        search_of("m_edu_pers", "일반검색", "m_edu", "edu_pers_search_dlg"),
        screen_of("m_Sup", "위생교육관리", "m_edu", "sup_all_ud_dlg"),
        dialog_of("m_eduapp", "교육신청 명단", "m_edu", "frmEduApp"),
        dialog_of("m_center", "내부교육 수정", "m_edu_update", "edu_all_ud_dlg"),
        dialog_of("m_etc", "기타교육(외부교육)", "m_edu_update", "other_edu_dlg"),
        dialog_of("m_lic_app", "자격증발급", "m_edu", "lic_app_dlg"),
        screen_of("Toolbar1(1)", "회원관리", "Toolbar1", "insert_frm"),
        screen_of("Toolbar1(3)", "통계", "Toolbar1", "data_m_frm"),
        screen_of("Toolbar1(5)", "발송", "Toolbar1", "frmSMSSend"),
    };
    return all;
}

QStringList withheld_from(const session_variables& session)
{
    QStringList names;
    if (!session.session_ok)
        return {text("Toolbar1(1)"), text("Toolbar1(3)"), text("Toolbar1(5)")};
    names.append(text("m_login"));
    if (session.is_branch_operator())
        names.append(text("m_other"));
    if (session.session_right1 == 0)
        names.append({text("m_mg"), text("Toolbar1(1)")});
    if (session.session_right2 == 0)
        names.append(text("m_edu"));
    return names;
}

bool may_start(const session_variables& session, const command& what)
{
    if (!session.session_ok)
        return what.target == QLatin1String("login_dlg");
    const QStringList withheld = withheld_from(session);
    QString name = what.name;
    QString around = what.menu;
    while (!withheld.contains(name)) {
        const auto head = std::ranges::find(menu_heads(), around, &menu_head::name);
        if (head == menu_heads().end())
            return !withheld.contains(around);
        name = head->name;
        around = head->parent;
    }
    return false;
}

bool dispatch_knows(qint16 current_screen)
{
    return current_screen >= 0 && current_screen <= 15 && current_screen != 8 && current_screen != 9;
}

} // namespace orvo

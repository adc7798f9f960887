#include "shell/login_dlg.h"

#include "shell/login.h"
#include "ui/controls.h"

namespace orvo {

namespace {

message login_refusal(const char* text)
{
    return {QString::fromUtf8(text), QStringLiteral("로그인 에러"), sign::exclamation};
}

} // namespace

login_dlg::login_dlg(client& c, QWidget* over)
    : dialog{QStringLiteral("login_dlg"), c, over}, id_txt{text_field(QStringLiteral("id_txt"), 24)},
      passwd_txt{text_field(QStringLiteral("passwd_txt"), 24)}, Image1{primary_button(
                                                                    QStringLiteral("Image1"),
                                                                    QStringLiteral("확인(&O)"), "log-in")},
      Image2{button(QStringLiteral("Image2"), QStringLiteral("취소(&C)"), "x")}
{
    passwd_txt->setEchoMode(QLineEdit::Password);
    auto* fields = group(QStringLiteral("login_group"), QStringLiteral("아이디/비밀번호 입력"),
                         form({entry{QStringLiteral("아이디(&I)"), {id_txt}, false, true},
                               entry{QStringLiteral("비밀번호(&P)"), {passwd_txt}, false, true}}));
    lay_out(below({fields, line({static_cast<QWidget*>(nullptr), Image1, Image2})}));
    on_enter(id_txt, [this] { passwd_txt->setFocus(); });
    on_enter(passwd_txt, [this] { check(); });
    on_click(Image1, [this] { check(); });
    connect(Image2, &QPushButton::clicked, this, &login_dlg::reject);
    id_txt->setFocus();
}

void login_dlg::check()
{
    if (id_txt->text().isEmpty())
        return refuse(login_refusal("사용자 아이디를 입력하세요."), id_txt);
    if (passwd_txt->text().isEmpty())
        return refuse(login_refusal("사용자 패스워드를 입력하세요."), passwd_txt);
    if (!log_in(c_, id_txt->text(), passwd_txt->text())) {
        refuse(login_refusal("사용자 아이디가 존재 하지 않거나 입력 하신 내용이 틀렸습니다."), passwd_txt);
        passwd_txt->selectAll();
        return;
    }
    accept();
}

void login_dlg::reject()
{
    c_.session_branch = QStringLiteral("0");
    c_.session_ok = false;
    dialog::reject();
}

} // namespace orvo

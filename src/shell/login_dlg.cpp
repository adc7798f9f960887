#include "shell/login_dlg.h"

#include "shell/login.h"
#include "ui/controls.h"

#include <QLabel>

namespace orvo {

namespace {

message login_refusal(const char* text)
{
    return {QString::fromUtf8(text), QStringLiteral("로그인 에러"), sign::exclamation};
}

QString in_words(std::chrono::seconds wait)
{
    return QStringLiteral("비밀번호가 여러 번 틀려, %1초 뒤에 다시 할 수 있습니다.").arg(wait.count());
}

} // namespace

login_dlg::login_dlg(client& c, QWidget* over)
    : dialog{QStringLiteral("login_dlg"), c, over}, id_txt{text_field(QStringLiteral("id_txt"), 24)},
      passwd_txt{text_field(QStringLiteral("passwd_txt"), 24)}, wait_txt{new QLabel},
      Image1{primary_button(QStringLiteral("Image1"), QStringLiteral("확인(&O)"), "log-in")},
      Image2{button(QStringLiteral("Image2"), QStringLiteral("취소(&C)"), "x")}, attempts_{c}
{
    wait_txt->setObjectName(QStringLiteral("wait_txt"));
    wait_txt->setForegroundRole(QPalette::PlaceholderText);
    wait_txt->setMinimumWidth( // nothing moves when it speaks
        wait_txt->fontMetrics().horizontalAdvance(in_words(std::chrono::seconds{60})));
    passwd_txt->setEchoMode(QLineEdit::Password);
    auto* fields = group(QStringLiteral("login_group"), QStringLiteral("아이디/비밀번호 입력"),
                         form({entry{QStringLiteral("아이디(&I)"), {id_txt}, false, true},
                               entry{QStringLiteral("비밀번호(&P)"), {passwd_txt}, false, true}}));
    lay_out(below({fields, wait_txt, line({static_cast<QWidget*>(nullptr), Image1, Image2})}));
    on_enter(id_txt, [this] { passwd_txt->setFocus(); });
    on_enter(passwd_txt, [this] { check(); });
    on_click(Image1, [this] { check(); });
    connect(Image2, &QPushButton::clicked, this, &login_dlg::reject);
    failures::guard(c_.say, failures::policy::report, [this] { attempts_.load(); });
    connect(&each_second_, &QTimer::timeout, this, &login_dlg::show_wait);
    connect(id_txt, &QLineEdit::textChanged, this, &login_dlg::show_wait);
    id_txt->setFocus();
}

void login_dlg::show_wait()
{
    using namespace std::chrono;
    const seconds left = ceil<seconds>(attempts_.wait_left(id_txt->text()));
    Image1->setEnabled(left == 0s);
    wait_txt->setText(left == 0s ? QString{} : in_words(left));
    left == 0s ? each_second_.stop() : each_second_.start(200); // no second is passed over
}

void login_dlg::check()
{
    if (id_txt->text().isEmpty())
        return refuse(login_refusal("사용자 아이디를 입력하세요."), id_txt);
    if (passwd_txt->text().isEmpty())
        return refuse(login_refusal("사용자 패스워드를 입력하세요."), passwd_txt);
    const QString id = id_txt->text();
    switch (try_to_log_in(c_, attempts_, id, passwd_txt->text())) {
    case login_answer::too_early:
        return show_wait();
    case login_answer::refused:
        show_wait();
        refuse(login_refusal("사용자 아이디가 존재 하지 않거나 입력 하신 내용이 틀렸습니다."), passwd_txt);
        return passwd_txt->selectAll();
    case login_answer::welcome:
        accept();
        failures::guard(c_.say, failures::policy::silent, [&] { attempts_.forget(id); });
    }
}

void login_dlg::reject()
{
    c_.session_branch = QStringLiteral("0");
    c_.session_ok = false;
    dialog::reject();
}

} // namespace orvo

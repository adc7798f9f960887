#include "shell/login.h"
#include "shell/login_dlg.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/screens.h"
#include "support/test_register.h"

#include "hands/hands.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <map>

using namespace orvo;

class login_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void an_operator_is_known_by_both_texts_data();
    void an_operator_is_known_by_both_texts();
    void cleanupTestCase() { filled_.clear(); }
    void the_session_takes_the_operators_row_data() { engines_under_test(); }
    void the_session_takes_the_operators_row();
    void the_dialog_asks_in_its_order();
    void cancelling_leaves_head_office_and_no_session();

private:
    std::map<engine, std::unique_ptr<running_client>> filled_;
};

void login_test::an_operator_is_known_by_both_texts_data()
{
    QTest::addColumn<engine>("kind");
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("password");
    QTest::addColumn<bool>("is_known");
    struct {
        const char* name;
        const char* id;
        const char* password;
        bool is_known = false;
    } const logins[] = {
        {"right", "head", "secret", true},
        {"wrong password", "head", "secrets"},
        {"another's password", "head", "o'ne\\il"},
        {"nobody", "tail", "secret"},
        {"capitals in the id", "Head", "secret"},
        {"capitals in the password", "head", "Secret"},
        {"blank behind the id", "head ", "secret"},
        {"blank in front of the password", "head", " secret"},
        {"a real apostrophe and backslash", "d'arc", "o'ne\\il", true},
        {"blanks that belong to it", " kim ", " pass ", true},
        {"without the blanks that belong to it", "kim", "pass"},
        {"fragment as the id", "' or '1'='1", "secret"},
        {"comment as the id", "head' --", "x"},
        {"fragment as the password", "head", "' or '1'='1"},
        {"fragment as both", "' or ''='", "' or ''='"},
        {"wildcards", "%", "%"},
    };
    for (const engine kind : engines)
        for (const auto& each : logins)
            QTest::addRow("%s: %s", name_of(kind), each.name)
                << kind << QString{each.id} << QString{each.password} << each.is_known;
}

void login_test::an_operator_is_known_by_both_texts()
{
    FETCH_ENGINE(kind);
    QFETCH(QString, id);
    QFETCH(QString, password);
    QFETCH(bool, is_known);
    auto& filled = filled_[kind];
    if (!filled) {
        filled = std::make_unique<running_client>(kind);
        an_operator{"head"}.store_in(filled->c.db_conn);
        an_operator{"d'arc"}.with("admin_pass", "o'ne\\il").store_in(filled->c.db_conn);
        an_operator{" kim "}.with("admin_pass", " pass ").store_in(filled->c.db_conn);
    }
    filled->c.session_ok = false;
    filled->c.session_id.clear();
    QCOMPARE(log_in(filled->c, id, password), is_known);
    QCOMPARE(filled->c.session_ok, is_known);
    QCOMPARE(filled->c.session_id, is_known ? id.trimmed() : QString{});
    if (is_known)
        QCOMPARE(filled->c.session_password, password.trimmed());
}

void login_test::the_session_takes_the_operators_row()
{
    FETCH_ENGINE(kind);
    running_client on{kind};
    an_operator{"branch"}
        .of_branch(7)
        .with_rights(0, 2)
        .with("author3", 3)
        .with("log_email", "lee@orvo.kr")
        .with("send_id", "sender")
        .store_in(on.c.db_conn);
    QVERIFY(log_in(on.c, "branch", "secret"));
    QCOMPARE(on.c.session_name, QStringLiteral("이정은"));
    QCOMPARE(on.c.session_email, QStringLiteral("lee@orvo.kr"));
    QCOMPARE(on.c.session_send_id, QStringLiteral("sender"));
    QCOMPARE(on.c.session_branch, QStringLiteral("7"));
    QCOMPARE((QList<int>{on.c.session_right1, on.c.session_right2, on.c.session_right3}),
             (QList<int>{0, 2, 3}));
}

void login_test::the_dialog_asks_in_its_order()
{
    running_client on{engine::embedded};
    an_operator{"head"}.store_in(on.c.db_conn);
    login_dlg dlg{on.c, nullptr};
    bring_up(dlg);
    auto& id_txt = control<QLineEdit>(dlg, "id_txt");
    auto& passwd_txt = control<QLineEdit>(dlg, "passwd_txt");
    const auto refusal = [&](const QString& text, const QLineEdit& field) {
        const QList<message> told = on.say.take_told();
        QCOMPARE(told.size(), 1); // once a press
        QCOMPARE(told.front().text, text);
        QCOMPARE(told.front().title, QStringLiteral("로그인 에러"));
        QCOMPARE(told.front().icon, sign::exclamation);
        QCOMPARE(dlg.focusWidget(), &field);
        QVERIFY(dlg.isVisible() && !on.c.session_ok);
    };
    press(&passwd_txt, Qt::Key_Return);
    refusal("사용자 아이디를 입력하세요.", id_txt);
    type(&id_txt, "head");
    press(&id_txt, Qt::Key_Return); // on to the password, and no more
    QCOMPARE(dlg.focusWidget(), &passwd_txt);
    QVERIFY(on.say.take_told().isEmpty());
    click(&control<QPushButton>(dlg, "Image1"));
    refusal("사용자 패스워드를 입력하세요.", passwd_txt);
    type(&passwd_txt, "wrong");
    press(&passwd_txt, Qt::Key_Return);
    refusal("사용자 아이디가 존재 하지 않거나 입력 하신 내용이 틀렸습니다.", passwd_txt);
    QCOMPARE(passwd_txt.echoMode(), QLineEdit::Password);
    type(&passwd_txt, "secret"); // over the wrong one
    press(&passwd_txt, Qt::Key_Return);
    QVERIFY(on.c.session_ok && !dlg.isVisible());
    QVERIFY(on.say.take_told().isEmpty());
}

void login_test::cancelling_leaves_head_office_and_no_session()
{
    running_client on{engine::embedded};
    for (const bool by_key : {true, false}) {
        on.c.session_branch = "7";
        on.c.session_ok = true;
        login_dlg dlg{on.c, nullptr};
        bring_up(dlg);
        by_key ? press(dlg.focusWidget(), Qt::Key_Escape) : click(&control<QPushButton>(dlg, "Image2"));
        QVERIFY(!dlg.isVisible() && !on.c.session_ok);
        QCOMPARE(on.c.session_branch, QStringLiteral("0"));
    }
}

ORVO_SCREEN_TESTS(login_test)
#include "login_test.moc"

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

using namespace orvo;

class login_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void an_operator_is_known_by_both_texts_data() { engines_under_test(); }
    void an_operator_is_known_by_both_texts()
    {
        FETCH_ENGINE(kind);
        running_client on{kind};
        an_operator{"head"}.store_in(on.c.db_conn);
        an_operator{"d'arc"}.with("admin_pass", "o'ne\\il").store_in(on.c.db_conn);
        an_operator{" kim "}.with("admin_pass", " pass ").store_in(on.c.db_conn);
        const struct {
            const char *id, *password;
            bool is_known = false;
        } logins[] = {{"head", "secret", true},
                      {"d'arc", "o'ne\\il", true},
                      {" kim ", " pass ", true}, // blanks that belong to it
                      {"kim", "pass"},
                      {"head", "o'ne\\il"}, // another's
                      {"tail", "secret"},
                      {"Head", "secret"},
                      {"head", "Secret"},
                      {"head ", "secret"},
                      {"' or '1'='1", "secret"},
                      {"head' --", "x"},
                      {"head", "' or '1'='1"},
                      {"' or ''='", "' or ''='"},
                      {"%", "%"}};
        for (const auto& [id, password, is_known] : logins) {
            on.c.session_ok = false;
            on.c.session_id.clear();
            QVERIFY2(log_in(on.c, id, password) == is_known, id);
            QCOMPARE(on.c.session_ok, is_known);
            QCOMPARE(on.c.session_id, is_known ? QString{id}.trimmed() : QString{});
        }
    }

    void the_session_takes_the_operators_row_data() { engines_under_test(); }
    void the_session_takes_the_operators_row()
    {
        FETCH_ENGINE(kind);
        running_client on{kind};
        an_operator of_branch{"branch"};
        of_branch.of_branch(7).with_rights(0, 2).with("author3", 3).store_in(on.c.db_conn);
        QVERIFY(log_in(on.c, "branch", "secret"));
        QCOMPARE(on.c.session_branch, QStringLiteral("7"));
        QCOMPARE((QList<int>{on.c.session_right1, on.c.session_right2, on.c.session_right3}),
                 (QList<int>{0, 2, 3}));
        on.c.session_branch = "7 A"; // as a register with a text there may hold it
        QVERIFY(session_branch_name(on.c).contains("7 A"));
    }

    void the_dialog_asks_in_its_order()
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

    void cancelling_leaves_head_office_and_no_session()
    {
        running_client on{engine::embedded};
        on.c.session_branch = "7";
        on.c.session_ok = true;
        login_dlg dlg{on.c, nullptr};
        bring_up(dlg);
        press(dlg.focusWidget(), Qt::Key_Escape);
        QVERIFY(!dlg.isVisible() && !on.c.session_ok);
        QCOMPARE(on.c.session_branch, QStringLiteral("0"));
    }
};

ORVO_SCREEN_TESTS(login_test)
#include "login_test.moc"

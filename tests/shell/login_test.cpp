#include "shell/login.h"
#include "shell/login_dlg.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/files.h"
#include "support/screens.h"
#include "support/test_register.h"

#include "hands/hands.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace orvo;

namespace {

/// A client at its login, by a clock that is set by hand.
struct at_login {
    at_login()
    {
        for (const char* id : {"kim", "lee"})
            an_operator{id}.store_in(on.c.db_conn);
        c.local_conn.open();
        c.db_conn.open();
        restart();
    }
    void restart()
    {
        attempts.emplace(c);
        attempts->load();
    }
    QByteArray log() { return content_of(c.folder.file("login.log")); }

    QDateTime now = test_clock();
    running_client on{engine::embedded};
    client c{on.c.folder, on.c.server, on.say, [this] { return now; }};
    std::optional<login_attempts> attempts;
};

} // namespace

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

    void wrong_passwords_are_slowed_over_a_restart()
    {
        at_login at;
        const QString ways[] = {"welcome", "refused", "too early"};
        // Seconds that pass, who tries, and what comes of it; "!" behind them is the right password.
        for (const auto& [passed, id, outcome] :
             {std::tuple{0, "kim", "refused"}, {0, "kim", "refused"},
              {0, "kim", "refused"},           {1, "kim", "refused"},
              {0, "kim", "refused"},           {0, "kim!", "too early"}, // 5 seconds
              {0, "lee", "refused"},           {0, "Kim", "refused"},    // whom nobody knows: for himself
              {4, "kim!", "too early"},        {1, "kim", "refused"},
              {9, "kim!", "too early"},                                   // 10
              {1, "kim", "refused"},           {19, "kim!", "too early"}, // 20
              {1, "kim", "refused"},           {39, "kim!", "too early"}, // 40
              {1, "kim", "refused"},           {59, "kim!", "too early"}, // 60, and no longer
              {1, "kim", "refused"},           {60, "kim", "refused"},
              {-60, "kim!", "too early"},                             // the clock is set back
              {-86'400, "kim!", "welcome"},    {0, "kim", "refused"}, // all of it is forgotten
              {0, "kim", "refused"},           {0, "kim", "refused"},
              {0, "kim", "refused"},           {0, "kim", "refused"},
              {0, "kim!", "too early"},        {1801, "kim", "refused"}, // after half an hour too
              {0, "kim!", "welcome"},          {0, "x' or '1'='1", "refused"}}) {
            at.now = at.now.addSecs(passed);
            at.restart();
            const QString who{id};
            const auto came = try_to_log_in(at.c, *at.attempts, QString{who}.remove('!'),
                                            who.endsWith('!') ? "secret" : "wrong");
            if (came == login_answer::welcome)
                at.attempts->forget(QString{who}.remove('!'));
            QVERIFY2(ways[static_cast<int>(came)] == outcome, qPrintable(at.now.toString()));
        }
        for (const auto row : at.c.local_conn.read("select id_mark from wrong_passwords"))
            QVERIFY(row.text("id_mark").size() == 64 && !row.text("id_mark").contains("kim"));
    }

    void logins_are_written_down_without_what_may_be_a_password()
    {
        at_login at;
        an_operator{"o\nne\u2028 10:00"}.store_in(at.c.db_conn);
        for (int i = 0; i < 6; ++i)
            try_to_log_in(at.c, *at.attempts, "kim", "geheim");
        try_to_log_in(at.c, *at.attempts, "lee", "secret");
        for (int i = 0; i < 5; ++i)
            try_to_log_in(at.c, *at.attempts, "geheim", "secret");
        try_to_log_in(at.c, *at.attempts, "o\nne\u2028 10:00", "secret");
        const QByteArray at_ten = "2026-11-22 10:00:00 ";
        QCOMPARE(at.log(), (at_ten + "refused kim\n").repeated(5) + at_ten + "slowed kim\n" + at_ten +
                               "success lee\n" + (at_ten + "refused unknown\n").repeated(5) + at_ten +
                               "slowed unknown\n" + at_ten + "success o?ne? 10:00\n");
        QCOMPARE(mode_of(at.c.folder.file("login.log")), 0600);
    }

    void a_wait_is_counted_down_in_the_dialog()
    {
        at_login at;
        for (int i = 0; i < 5; ++i)
            at.attempts->count_wrong("kim");
        login_dlg dlg{at.c, nullptr};
        bring_up(dlg);
        auto& Image1 = control<QPushButton>(dlg, "Image1");
        const auto wait = [&] { return shown_by(control<QLabel>(dlg, "wait_txt")); };
        type(&control<QLineEdit>(dlg, "id_txt"), "ki");
        QVERIFY(Image1.isEnabled() && wait().isEmpty());
        type(&control<QLineEdit>(dlg, "id_txt"), "m");
        QVERIFY(!Image1.isEnabled() && wait().contains("5초"));
        type(&control<QLineEdit>(dlg, "passwd_txt"), "secret");
        press(&control<QLineEdit>(dlg, "passwd_txt"), Qt::Key_Return);
        QVERIFY(!at.c.session_ok && at.on.say.take_told().isEmpty());
        at.now = at.now.addSecs(3);
        QTRY_VERIFY(wait().contains("2초"));
        at.now = at.now.addSecs(2);
        QTRY_VERIFY(Image1.isEnabled());
        QCOMPARE(wait(), QString{});
        press(&control<QLineEdit>(dlg, "passwd_txt"), Qt::Key_Return);
        QVERIFY(at.c.session_ok && !dlg.isVisible());
        QCOMPARE(at.c.local_conn.number("select count(*) as n from wrong_passwords"), 0);
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

#include "members/rules/recent.h"
#include "members/screens/search_dlg.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/fake_desk.h"
#include "support/screens.h"
#include "support/test_register.h"

#include "hands/hands.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace orvo;

namespace {

const QString kim = QStringLiteral("9001011234568");
const QString lee = QStringLiteral("8512122234567");

/// The dialog over a register of two members, the first of whom the last search brought.
struct at_search {
    explicit at_search(engine kind = engine::embedded) : on{kind}
    {
        on.c.session_id = QStringLiteral("head");
        a_member{kim}.store_in(on.c.db_conn);
        a_member{lee}.named("이영수").of_branch(20).licensed("77").store_in(on.c.db_conn);
        a_member{kim}.store_in(on.c.local_conn);
    }

    void open()
    {
        dlg = std::make_unique<search_dlg>(on.c, desk, nullptr);
        bring_up(*dlg);
    }
    void enter(const QString& key)
    {
        auto& str_txt = control<QLineEdit>(*dlg, "str_txt");
        str_txt.clear();
        type(&str_txt, key);
        press(&str_txt, Qt::Key_Return);
    }
    QString copied()
    {
        QStringList all;
        for (const auto row : on.c.local_conn.read("select pers_no from person_m_tbl"))
            all.append(row.text("pers_no"));
        return all.join(u' ');
    }

    running_client on;
    fake_desk desk;
    std::unique_ptr<search_dlg> dlg;
};

} // namespace

class search_dlg_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void found_members_are_copied_and_shown_data() { engines_under_test(); }
    void found_members_are_copied_and_shown()
    {
        FETCH_ENGINE(kind);
        at_search at{kind};
        for (const auto& [item, key] :
             {std::pair{-1, "이영"}, {0, "영수"}, {2, "7"}}) { // nothing is the name
            at.open();
            control<QComboBox>(*at.dlg, "item_cbb").setCurrentIndex(item);
            at.enter(key);
            QCOMPARE(at.copied(), lee);
            QCOMPARE(std::exchange(at.desk.shown, {}), QList<qint16>{screen_code::manager_main_frm}); // once
            QVERIFY(!at.dlg->isVisible());
            QCOMPARE(recent_words(at.on.c.local_conn, "head", std::max(0, item)).front(), QString{key});
            at.on.c.local_conn.direct("delete from person_m_tbl");
        }
        QVERIFY(at.on.say.take_texts().isEmpty());
    }

    void a_search_that_finds_nobody_leaves_the_dialog_and_the_copy()
    {
        at_search at;
        at.open();
        for (const bool is_empty : {true, false}) {
            at.enter(is_empty ? "" : "없는 이름");
            const QList<message> told = at.on.say.take_told();
            QCOMPARE(told.size(), 1);
            QCOMPARE(told[0].text, is_empty ? "찾고자하는 키워드를 적으십시요" : "찾으시는 회원이 없습니다.");
            QCOMPARE(told[0].icon, is_empty ? sign::exclamation : sign::information);
            QVERIFY(at.dlg->isVisible());
            QCOMPARE(shown_by(control<QLineEdit>(*at.dlg, "str_txt")), QString{});
            QCOMPARE(at.dlg->focusWidget()->objectName(), QStringLiteral("str_txt"));
        }
        control<QComboBox>(*at.dlg, "item_cbb").setFocus();
        press(at.dlg->focusWidget(), Qt::Key_Down); // past an entry, and not chosen yet
        QCOMPARE(at.dlg->focusWidget()->objectName(), QStringLiteral("item_cbb"));
        press(at.dlg->focusWidget(), Qt::Key_Return);
        QCOMPARE(at.dlg->focusWidget()->objectName(), QStringLiteral("str_txt"));
        control<QPushButton>(*at.dlg, "Image2").setFocus();
        press(at.dlg->focusWidget(), Qt::Key_Return); // and does not search
        QVERIFY(!at.dlg->isVisible());
        QCOMPARE(at.copied(), kim);
        QVERIFY(at.desk.shown.isEmpty());
        QVERIFY(recent_words(at.on.c.local_conn, "head", 0).isEmpty());
    }

    void words_and_members_of_before_are_offered()
    {
        at_search at;
        remember_word(at.on.c.local_conn, "head", 0, "이영", test_clock());
        remember_word(at.on.c.local_conn, "head", 0, "없는 이름", test_clock().addSecs(1));
        remember_word(at.on.c.local_conn, "other", 0, "남의 말", test_clock());
        remember_member(at.on.c.local_conn, "head", {lee, "이영수"}, test_clock());
        at.open();
        auto& word_lst = control<QListWidget>(*at.dlg, "word_lst");
        QCOMPARE(word_lst.count(), 2);
        for (const Qt::Key to : {Qt::Key_Home, Qt::Key_Down}) {
            word_lst.setFocus();
            press(&word_lst, to);
            press(&word_lst, Qt::Key_Return);
        }
        // Once for the first: the main button did not hear that Enter as well.
        QCOMPARE(at.on.say.take_texts(), QStringList{"찾으시는 회원이 없습니다."});
        QCOMPARE(at.desk.shown.size(), 1);
        QCOMPARE(at.copied(), lee);
        a_member{kim}.store_in(at.on.c.local_conn);
        at.open();
        auto& member_lst = control<QListWidget>(*at.dlg, "member_lst");
        QCOMPARE(member_lst.item(0)->text(), QStringLiteral("이영수  851212"));
        Q_EMIT member_lst.itemActivated(member_lst.item(0));
        QCOMPARE(at.desk.shown.size(), 2);
        QCOMPARE(at.copied(), lee);
        QCOMPARE(std::exchange(at.on.c.member_to_open, {}), lee);
        at.on.c.session_branch = "10"; // and he is of 20
        at.open();
        auto& offered = control<QListWidget>(*at.dlg, "member_lst");
        Q_EMIT offered.itemActivated(offered.item(0));
        const QList<message> told = at.on.say.take_told();
        QVERIFY(told.size() == 1 && told[0].icon == sign::information);
        QVERIFY(at.dlg->isVisible() && at.on.c.member_to_open.isEmpty());
        QCOMPARE(at.copied(), lee); // that of before
    }

    void a_long_search_is_ended_by_its_button_alone()
    {
        at_search at;
        // Some 100 million steps of the engine.
        at.on.c.db_conn.direct(
            "alter table person_m_tbl rename to slowly; create view person_m_tbl as with recursive n(i) as "
            "(select 1 "
            "union all select i+1 from n where i<100000000) select m.* from slowly m,n where i>99999999");
        at.open();
        auto& Image2 = control<QPushButton>(*at.dlg, "Image2");
        auto& str_txt = control<QLineEdit>(*at.dlg, "str_txt");
        QString seen_status;
        bool stays_open = false;
        int begun = 0;
        QTimer hands;
        hands.callOnTimeout([&] {
            press(&str_txt, Qt::Key_Return); // dropped
            at.dlg->close();
            stays_open = at.dlg->isVisible();
            ++begun;
            seen_status = shown_by(control<QLabel>(*at.dlg, "Text1"));
            click(&Image2);
        });
        hands.start(10);
        at.enter("이");
        QCOMPARE(begun, 1); // the Enter that began it begins no second one
        QVERIFY(stays_open);
        QVERIFY(seen_status.startsWith("현재 검색 중 입니다.잠시 기다려 주십시요."));
        QCOMPARE(at.on.say.take_notes(), QStringList{"취소했습니다."});
        QVERIFY(at.on.say.take_texts().isEmpty());
        QVERIFY(at.dlg->isVisible());
        QCOMPARE(at.copied(), kim);
    }
};

ORVO_SCREEN_TESTS(search_dlg_test)
#include "search_dlg_test.moc"

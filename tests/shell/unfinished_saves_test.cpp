#include "dues/rules/payments.h"
#include "shell/unfinished_saves_dlg.h"
#include "support/builders.h"
#include "support/screens.h"
#include "support/test_register.h"

#include "hands/hands.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

using namespace orvo;

namespace {

const QString number = QStringLiteral("9001011234568");
const dues_year of_2026{number, QStringLiteral("2026")};

/// A workstation on which Kim's payment broke before its year was settled.
struct after_a_fall {
    after_a_fall()
    {
        on.c.session_id = QStringLiteral("kim");
        on.c.session_name = QStringLiteral("김담당");
        a_member{number}.store_in(on.c.db_conn);
        a_dues_year{number, "2026"}.store_in(on.c.db_conn);
        a_payment{number, "2026", 20'000}.store_in(on.c.db_conn); // another of that amount
        on.c.db_conn.direct(
            "create trigger broken before update on dues_h_tbl begin select raise(abort,'x'); end");
        const QString others = ask(on.c.db_conn, payment_ids_in(of_2026));
        save begun = on.c.begin(
            add_payment(of_2026, "20", {"20260315", "20260315", "20000", "10"}, on.c.today(), others));
        try {
            begun.carry_out();
        } catch (const db_failure&) {
        }
        on.c.db_conn.direct("drop trigger broken");
    }

    /// What the list offers, with a press of a button in it.
    QString offer(const char* button = nullptr)
    {
        QString offered;
        QTimer::singleShot(0, qApp, [&offered, button] {
            auto* list = QApplication::activeModalWidget();
            const auto& shown = control<QAbstractItemView>(*list, "save_grd");
            for (int column = 0; column < 5; ++column)
                offered += shown.model()->index(0, column).data().toString() + u'|';
            if (button)
                click(&control<QWidget>(*list, button));
            if (list->isVisible())
                static_cast<QDialog*>(list)->reject();
        });
        offer_unfinished_saves(on.c, nullptr);
        return offered;
    }

    QString balance()
    {
        const rows year = on.c.db_conn.read("select * from dues_h_tbl");
        return year.front().text("yet_money") + u' ' +
               QString::number(on.c.db_conn.number("select count(*) as n from dues_b_tbl"));
    }

    running_client on{engine::embedded};
};

} // namespace

/// What the next start offers of saves that broke.
class unfinished_saves_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void its_operator_finishes_it()
    {
        after_a_fall at;
        QCOMPARE(at.balance(), "50000 2");
        QCOMPARE(at.offer("finish_img"), "11-22 10:00|김담당|회비납입 추가|김영희 900101-*******|회비 입금|");
        QCOMPARE(at.balance(), "10000 2");
        QCOMPARE(at.on.say.take_texts(), QStringList{"나머지를 저장하였습니다."});
        QVERIFY(at.on.c.saves.unfinished().empty());
    }

    void another_branch_operator_reads_only_whose_it_is()
    {
        after_a_fall at;
        at.on.c.session_id = QStringLiteral("lee");
        at.on.c.session_branch = QStringLiteral("10");
        offer_unfinished_saves(at.on.c, nullptr); // no list, which would wait here for ever
        const QStringList told = at.on.say.take_texts();
        QCOMPARE(told.size(), 1);
        QVERIFY(told.front().contains("김담당") && !told.front().contains("900101"));
        QVERIFY(!at.on.c.broken_save_of(number, {&payment_added}));
        at.on.c.session_branch = QStringLiteral("00"); // head office may
        QVERIFY(!at.offer().isEmpty());
        QVERIFY(at.on.c.broken_save_of(number, {&payment_added}));
    }

    void a_note_can_be_dropped_and_is_kept_for_the_day()
    {
        after_a_fall at;
        at.on.say.will_answer("이 저장의 기록을 버리면 나머지는 저장되지 않습니다. 버릴까요?", answer::first);
        at.offer("give_up_img");
        QCOMPARE(at.balance(), "50000 2");
        const QString path = at.on.c.folder.file("orvo.saves");
        QCOMPARE(read_save_notes(path).size(), 1U);
        for (const auto& [day, left] : {std::pair{22, 1U}, {23, 0U}}) {
            save_log next{path, [] { return save_author{}; }};
            next.tidy(QDate{2026, 11, day});
            QCOMPARE(read_save_notes(path).size(), left);
        }
    }
};

ORVO_SCREEN_TESTS(unfinished_saves_test)
#include "unfinished_saves_test.moc"

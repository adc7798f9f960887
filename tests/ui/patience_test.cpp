#include "support/screens.h"
#include "support/scripted_prompts.h"
#include "ui/input_gate.h"
#include "ui/patience.h"

#include "hands/hands.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

using namespace orvo;
using namespace std::chrono_literals;

namespace {

/// A window with a field, a button that counts its clicks, and a shortcut on it.
struct at_work {
    at_work() : field{new QLineEdit}, button{new QPushButton{"저장"}}, other{new QPushButton{"중지"}}
    {
        auto* box = new QVBoxLayout{&window};
        box->addWidget(field);
        box->addWidget(button);
        box->addWidget(other);
        button->setShortcut(Qt::Key_F5);
        QObject::connect(button, &QPushButton::clicked, &window, [this] { ++clicks; });
        QObject::connect(other, &QPushButton::clicked, &window, [this] { ++others; });
        bring_up(window, 500, 300);
        field->setFocus();
    }

    /// Everything that hands can do to it.
    void try_all()
    {
        click(button);
        press(button, Qt::Key_Space);
        press(field, Qt::Key_F5);
        type(field, "가");
        QTest::keyClick(field, Qt::Key_A);
        window.close();
        QTest::qWait(150); // a shortcut clicks its button a moment late
    }
    bool is_untouched() const { return clicks == 0 && field->text().isEmpty() && window.isVisible(); }
    QFrame* sign() const { return window.findChild<QFrame*>("wait_sign"); }

    QWidget window;
    QLineEdit* field;
    QPushButton *button, *other;
    int clicks = 0;
    int others = 0;
};

} // namespace

class patience_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_gate_lets_the_way_out_through_alone()
    {
        at_work at;
        int escaped = 0;
        {
            input_gate gate{at.other, [&] { ++escaped; }};
            at.try_all();
            QVERIFY(at.is_untouched());
            click(at.other);
            QCOMPARE(at.others, 1);
            press(at.field, Qt::Key_Escape);
            QCOMPARE(escaped, 1);
        }
        click(at.button);
        QCOMPARE(at.clicks, 1);
    }

    void a_sign_comes_after_a_second_and_goes()
    {
        at_work at;
        scripted_prompts say;
        patience waits{say};
        QVERIFY(waits.keep_waiting(999ms, true));
        QVERIFY(!at.sign());
        QVERIFY(waits.keep_waiting(1000ms, true));
        QVERIFY(at.sign() && at.sign()->isVisible());
        at.try_all();
        QVERIFY(at.is_untouched());
        waits.done_waiting();
        QVERIFY(!at.sign());
        click(at.button);
        QCOMPARE(at.clicks, 1);
    }

    void the_operator_ends_a_read_but_no_write()
    {
        at_work at;
        scripted_prompts say;
        patience waits{say};
        for (const auto& [by_key, can_end] :
             {std::pair{true, true}, {false, true}, {true, false}, {false, false}}) {
            QVERIFY(waits.keep_waiting(1100ms, can_end)); // the end of the one before is not taken along
            auto* cancel = at.sign()->findChild<QPushButton*>();
            QCOMPARE(cancel->isVisible(), can_end);
            by_key ? press(at.field, Qt::Key_Escape) : cancel->click();
            QCOMPARE(waits.keep_waiting(1200ms, can_end), !can_end);
            waits.done_waiting();
        }
    }
};

ORVO_SCREEN_TESTS(patience_test)
#include "patience_test.moc"

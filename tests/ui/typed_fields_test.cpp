#include "hands/hands.h"
#include "support/screens.h"
#include "ui/amount_field.h"
#include "ui/date_group.h"
#include "ui/form.h"
#include "ui/theme.h"

#include <QApplication>
#include <QDialog>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <QWheelEvent>
using namespace orvo;

struct sheet : QDialog {
    static QDateTime now() { return {{2031, 5, 6}, {}}; }
    amount_field* money = new amount_field{"join_txt", 12};
    date_group date{"big_in_y_cbb", "big_in_m_cbb", "big_in_d_cbb", now};
    date_group month{"emp_y_cbb", "emp_m_cbb", now};
    code_list* lists[5] = {date.year, date.month, date.day, month.year, month.month};
    QPushButton* save = primary_button("mem_in_img", "저장", "save");
    sheet()
    {
        setLayout(form({{"1", {money, save}}, {"2", {lists[0], lists[1], lists[2], lists[3], lists[4]}}}));
        bring_up(*this);
    }
};

class typed_fields_test : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void an_amount_is_shown_as_it_was_understood() // typed; shown; amount
    {
        sheet on;
        for (const QString row : {"３만5천;35,000;35000", "3,00;3,00;no", "-5;-5;no", "0;0;0", " ;;"}) {
            on.money->clear();
            type(on.money, row.section(u';', 0, 0));
            press(on.money, Qt::Key_Tab);
            const bool is_marked = on.money->palette().color(QPalette::Text) == colours().required;
            const QString amount = is_marked && !on.money->toolTip().isEmpty() ? "no" : on.money->amount();
            QCOMPARE(on.money->text() + u';' + amount, row.section(u';', 1));
        }
        // What is stored is taken as it is for as long as it stands there.
        for (const QString row : {"1234567;1,234,567", "-5;-5", "1.50;1.50", "0x;0x"}) {
            on.money->set_amount(row.section(u';', 0, 0));
            on.money->setFocus();
            press(on.money, Qt::Key_Tab);
            QCOMPARE(on.money->text() + on.money->refusal(), row.section(u';', 1));
            QCOMPARE(on.money->amount(), row.section(u';', 0, 0));
            type(on.money, "-");
            QVERIFY(!on.money->refusal().isEmpty() && on.money->amount().isEmpty());
        }
    }
    void a_date_is_typed_into_any_list() // number of the list; shown before; typed; shown then
    {
        const QString rows = "0;;2026;2026|1;;3;03|2;;９일;09|1;;2026-11-22;20261122|0;;11.22;20311122|"
                             "2;20260101;２０２６．２．３１;20260231|1;20260102;2027;20270102|2;;＋;20310506|"
                             "0;19991231;+;20310506|1;20261122; ;202622|1;20261122;13;20261122|2;;내일;|"
                             "4;;2026.3;202603|3;;+;203105|3;195012;;12|4;202603;20261122;202603|"
                             "1;20251103;12-30;20251230|0;20251103;12-30;20251230";
        for (const QString& row : rows.split(u'|'))
            for (const Qt::Key leave : {Qt::Key_Return, Qt::Key_Tab, Qt::Key_F10}) {
                sheet on;
                const QStringList fields = row.split(u';');
                code_list* list = on.lists[fields[0].toUInt()];
                const date_group& group = fields[0] < u'3' ? on.date : on.month;
                group.set(fields[1]);
                type(list, fields[2]);
                press(list, leave);
                QCOMPARE(group.stored(), fields[3]);
                QTRY_COMPARE(QToolTip::isVisible(), fields[3] == fields[1]);
                QCOMPARE(group.withdraw_refusal().isEmpty(), fields[3] != fields[1]);
                QToolTip::hideText();
            }
    }
    void keys_and_wheel_do_what_they_do_in_other_lists()
    {
        sheet on;
        QSignalSpy chosen{on.date.month, &QComboBox::activated};
        QSignalSpy saved{on.save, &QPushButton::clicked};
        type(on.date.day, "2026-11-22");
        press(on.date.day, Qt::Key_Enter);
        press(on.date.day, Qt::Key_Enter); // the first took the date
        QCOMPARE(chosen.count(), 1);
        QCOMPARE(saved.count(), 1);
        QWheelEvent roll{{}, {}, {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false};
        QApplication::sendEvent(on.date.month, &roll);
        QCOMPARE(on.date.stored(), "20261122");
        on.date.month->setFocus();
        press(on.date.month, Qt::Key_Down); // leaves the whole text selected
        press(on.date.month, Qt::Key_Backspace);
        press(on.date.month, Qt::Key_Delete);
        QCOMPARE(chosen.last().at(0), -1);
    }
};
ORVO_SCREEN_TESTS(typed_fields_test)
#include "typed_fields_test.moc"

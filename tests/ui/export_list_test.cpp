#include "support/screens.h"
#include "ui/export_list.h"

#include "hands/hands.h"
#include "support/files.h"
#include "support/test_register.h"
#include "ui/grid.h"
#include "ui/save_file_dialog.h"
#include "ui/window_prompts.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

using namespace orvo;

namespace {

const QStringList csv{"(*.csv)콤마로 분리된 텍스트 파일|*.csv",
                      "(*.csv)콤마로 분리된 텍스트 파일 (cp949)|*.csv"};
const QStringList excel{"엑셀파일(*.xls)|*.xls", "엑셀파일(*.xlsx)|*.xlsx"};

} // namespace

class export_list_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_list_from_its_context_menu()
    {
        running_client running{engine::embedded};
        QTemporaryDir home;
        grid of{"a_grd", {{"이름", 100}, {"금액", 80, true}}, running.c};
        of.fill({{{"나😀", "2"}}, {{"가", "1,000"}}});
        of.sortByColumn(0, Qt::AscendingOrder);
        bring_up(of, 400, 300);
        const auto choose = [&](Qt::Key command) {
            QTimer::singleShot(0, [&] { QTest::keyClick(QApplication::activePopupWidget(), command); });
            QTest::keyClick(&of, Qt::Key_F10, Qt::ShiftModifier);
        };
        const QString path = home.filePath("a.csv");
        running.say.will_name_file(csv, 0, path);
        choose(Qt::Key_S);
        QCOMPARE(content_of(path), QByteArray{"\xEF\xBB\xBFno,이름,금액\r\n1,가,1000\r\n2,나😀,2\r\n"});
        running.say.will_name_file(csv, 0, path, 1);
        choose(Qt::Key_S);
        QVERIFY(content_of(path).startsWith("no,\xC0\xCC\xB8\xA7,"));
        const QList<message> told = running.say.take_told();
        QVERIFY(told[0].about.isEmpty() && told[1].about.contains("글자 1자를 ?로"));
        running.say.will_name_file(excel, 1, home.filePath("a.xlsx"));
        choose(Qt::Key_X);
        QCOMPARE(content_of(home.filePath("a.xlsx")).first(4), QByteArray{"PK\3\4"});
        QCOMPARE(told[0].text + running.say.take_texts().join(u' '),
                 "CSV 파일이 작성 되었습니다.엑셀파일이 작성 되었습니다.");

        of.clear_rows();
        running.say.will_name_file(csv, 0, path);
        choose(Qt::Key_S);
        QVERIFY(QFile::exists(path) && content_of(path).isEmpty());
        running.say.will_name_file(csv, 0, {});
        choose(Qt::Key_S);
        running.say.will_name_file(excel, 1, {});
        choose(Qt::Key_X);
        running.say.will_name_file(csv, 0, home.path());
        choose(Qt::Key_S);
        QCOMPARE(running.say.take_texts().mid(0, 2),
                 (QStringList{"엑셀로 변환할 내용이 없습니다.", "파일이름을 입력하여 주세요"}));
    }

    void a_workbook_never_bears_the_old_ending()
    {
        running_client running{engine::embedded};
        QTemporaryDir home;
        const text_table list{{{"이름"}}, 1, [](qint64) { return QStringList{"가"}; }};
        for (const answer replace : {answer::second, answer::first}) {
            write_file(home.filePath("명단.xlsx"), "former");
            running.say.will_name_file(excel, 1, home.filePath("명단.XLS"));
            running.say.will_answer("명단.xlsx 파일이 이미 있습니다.\n바꾸시겠습니까?", replace);
            make_excel_file(running.c, {}, list);
            QCOMPARE(content_of(home.filePath("명단.xlsx")) == "former", replace == answer::second);
            QCOMPARE(running.say.take_texts().size(), replace == answer::second ? 0 : 1);
        }
        QVERIFY(!QFile::exists(home.filePath("명단.XLS")));
        QVERIFY(running.say.take_notes().last().contains("명단.xlsx"));
    }

    void the_dialog_completes_the_name_and_asks_for_it()
    {
        QTemporaryDir home;
        write_file(home.filePath("2026.11.xlsx"), "former");
        save_file_dialog asking{excel, 1, nullptr};
        asking.setDirectory(home.path());
        bring_up(asking);
        control<QLineEdit>(asking, "fileNameEdit").setText("2026.11");
        QString question;
        QTimer look;
        look.callOnTimeout([&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box)
                return;
            question = box->text();
            box->button(QMessageBox::Yes)->click();
        });
        look.start(5);
        press(&control<QLineEdit>(asking, "fileNameEdit"), Qt::Key_Return);
        QTRY_COMPARE(asking.result(), int{QDialog::Accepted});
        QVERIFY2(question.contains("2026.11.xlsx"), qPrintable(question));
        QCOMPARE(asking.selectedFiles(), QStringList{home.filePath("2026.11.xlsx")});
        for (const int at : {1, 0}) {
            save_file_dialog naming{csv, 0, nullptr};
            auto& types = control<QComboBox>(naming, "fileTypeCombo");
            QCOMPARE(types.itemText(at), csv[at].section('|', 0, 0));
            types.setCurrentIndex(at);
            Q_EMIT types.activated(at);
            QCOMPARE(naming.chosen_filter(), at);
        }
    }
};

ORVO_SCREEN_TESTS(export_list_test)
#include "export_list_test.moc"

#include "support/screens.h"
#include "support/scripted_prompts.h"
#include "ui/show_error.h"

#include <QApplication>
#include <QTest>

using namespace orvo;

class show_error_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void the_number_decides_data();
    void the_number_decides();
};

void show_error_test::the_number_decides_data()
{
    QTest::addColumn<quint32>("number");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    QTest::addColumn<sign>("icon");
    QTest::newRow("unreachable")
        << 0x80004005u << "서버연결 에러"
        << "서버에 연결할 수 없습니다!\n인터넷에 연결되어 있는지 확인하고, 잠시 후에 다시 시도하십시오!"
        << sign::critical;
    QTest::newRow("login refused") << 0x80040E4Du << "로그인 에러"
                                   << "서버에 로그인 할 수 없습니다! 관리자에게 문의하시기 바랍니다!"
                                   << sign::critical;
    QTest::newRow("overflow") << 0x80040E57u << "검색에러"
                              << "데이터량이 초과 하였습니다." << sign::critical;
    QTest::newRow("cancelled file dialog") << 0x7FF3u << QString{} << QString{} << sign::none;
    QTest::newRow("any other") << 0x80040E14u << "에러"
                               << "구문 오류 'x' <b>" << sign::exclamation;
    QTest::newRow("nought") << 0u << "에러"
                            << "구문 오류 'x' <b>" << sign::exclamation;
}

void show_error_test::the_number_decides()
{
    QFETCH(quint32, number);
    QFETCH(QString, text);
    scripted_prompts say;
    for (int asked = 0; asked < 2; ++asked)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    show_error(say, static_cast<std::int32_t>(number), "구문 오류 'x' <b>");
    QVERIFY(!QApplication::overrideCursor());
    const QList<message> told = say.take_told();
    QCOMPARE(told.size(), text.isEmpty() ? 0 : 1);
    if (told.isEmpty())
        return;
    QCOMPARE(told.front().text, text);
    QTEST(told.front().title, "title");
    QTEST(told.front().icon, "icon");
}

ORVO_SCREEN_TESTS(show_error_test)
#include "show_error_test.moc"

#include "shell/commands.h"

#include <QTest>

using namespace orvo;

class commands_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rights_withhold_commands_data();
    void rights_withhold_commands();
    void dispatch_passes_the_codes_of_screens();
};

void commands_test::rights_withhold_commands_data()
{
    QTest::addColumn<bool>("logged_in");
    QTest::addColumn<QString>("branch");
    QTest::addColumn<int>("right1");
    QTest::addColumn<int>("right2");
    QTest::addColumn<QString>("withheld");
    QTest::newRow("before the login") << false << "0" << 1 << 1 << "Toolbar1(1) Toolbar1(3) Toolbar1(5)";
    QTest::newRow("head office") << true << "0" << 1 << 1 << "m_login";
    QTest::newRow("head office by two noughts") << true << "00" << 1 << 1 << "m_login";
    QTest::newRow("no branch") << true << "" << 1 << 1 << "m_login";
    QTest::newRow("branch") << true << "7" << 1 << 1 << "m_login m_other";
    QTest::newRow("branch with a nought") << true << "07" << 1 << 1 << "m_login m_other";
    QTest::newRow("no administration") << true << "0" << 0 << 1 << "Toolbar1(1) m_login m_mg";
    QTest::newRow("no education") << true << "0" << 1 << 0 << "m_edu m_login";
    QTest::newRow("another number is a right too") << true << "0" << -1 << 2 << "m_login";
    QTest::newRow("branch without rights")
        << true << "10" << 0 << 0 << "Toolbar1(1) m_edu m_login m_mg m_other";
}

void commands_test::rights_withhold_commands()
{
    QFETCH(bool, logged_in);
    QFETCH(QString, branch);
    QFETCH(int, right1);
    QFETCH(int, right2);
    session_variables session;
    session.session_ok = logged_in;
    session.session_branch = branch;
    session.session_right1 = static_cast<qint16>(right1);
    session.session_right2 = static_cast<qint16>(right2);
    QStringList names = withheld_from(session);
    names.sort();
    QTEST(names.join(u' '), "withheld");
}

void commands_test::dispatch_passes_the_codes_of_screens()
{
    for (qint16 code = -1; code <= 16; ++code)
        QCOMPARE(dispatch_knows(code), (code >= 0 && code <= 7) || (code >= 10 && code <= 15));
}

QTEST_GUILESS_MAIN(commands_test)
#include "commands_test.moc"

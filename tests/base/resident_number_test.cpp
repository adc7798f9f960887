#include "base/resident_number.h"

#include <QTest>

using namespace orvo;

class resident_number_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void numbers_are_checked_by_each_screen_data();
    void numbers_are_checked_by_each_screen();
};

void resident_number_test::numbers_are_checked_by_each_screen_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<bool>("registers");
    QTest::addColumn<bool>("is_corrected");
    const std::tuple<const char*, QString, QString, bool, bool> cases[] = {
        {"sound", "900101", "1234568", true, true},
        {"other last digit", "900101", "1234567", false, false},
        {"two digits changed places", "900110", "1234568", false, false},
        {"remainder 0", "900101", "1000171", true, true},
        {"remainder 0, taken for 0", "900101", "1000170", false, false},
        {"remainder 1", "900101", "1000080", true, true},
        {"remainder 1, taken for 1", "900101", "1000081", false, false},
        {"the member whose digits do not add up", "480229", "6200481", false, true},
        {"her neighbour", "480229", "6200482", false, false},
        {"month 00", "900001", "1234562", true, false},
        {"month 13", "901301", "1234565", true, false},
        {"day 00", "900100", "1234564", true, false},
        {"day 32", "900132", "1234565", true, false},
        {"31 February", "900231", "1234567", true, true},
        {"last day of the year", "901231", "1234563", true, true},
        {"full-width digits", "９００１０１", "1234568", false, false},
        {"full-width last digit", "900101", "123456８", false, false},
        {"a letter", "90010a", "1234568", false, false},
        {"hyphen", "900101", "-123456", false, false},
        {"cut elsewhere", "9001011", "234568", false, false},
        {"too short", "900101", "123456", false, false},
        {"too long", "900101", "12345688", false, false},
        {"blank around", "900101", " 123456", false, false},
        {"nothing", "", "", false, false},
    };
    for (const auto& [name, first, second, registers, is_corrected] : cases)
        QTest::newRow(name) << first << second << registers << is_corrected;
}

void resident_number_test::numbers_are_checked_by_each_screen()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QTEST(registration::check_pers_no(first, second), "registers");
    QTEST(console::check_pers_no(first, second), "is_corrected");
}

QTEST_APPLESS_MAIN(resident_number_test)
#include "resident_number_test.moc"

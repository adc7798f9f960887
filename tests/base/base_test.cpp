#include "base/amount.h"
#include "base/dates.h"
#include "base/ini.h"
#include "base/phone.h"
#include "base/resident_number.h"

#include <QTemporaryDir>
#include <QTest>

using namespace orvo;

class base_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void amounts_bear_separators_data();
    void amounts_bear_separators();
    void whole_part_of_stored_text_data();
    void whole_part_of_stored_text();
    void stored_dates_are_shown_with_hyphens_data();
    void stored_dates_are_shown_with_hyphens();
    void days_are_stored_as_eight_digits();
    void telephone_numbers_are_cut_data();
    void telephone_numbers_are_cut();
    void mobile_numbers_are_cut_data();
    void mobile_numbers_are_cut();
    void check_digit_of_a_resident_number_data();
    void check_digit_of_a_resident_number();
    void ini_files_are_read_as_windows_profiles_data();
    void ini_files_are_read_as_windows_profiles();
    void a_missing_ini_file_holds_nothing();
};

void base_test::amounts_bear_separators_data()
{
    QTest::addColumn<qint64>("amount");
    QTest::addColumn<QString>("shown");
    QTest::newRow("nothing") << qint64{0} << "0";
    QTest::newRow("no separator yet") << qint64{999} << "999";
    QTest::newRow("thousand") << qint64{1000} << "1,000";
    QTest::newRow("overpaid") << qint64{-1234567} << "-1,234,567";
    QTest::newRow("beyond 32 bits") << qint64{12'345'678'901} << "12,345,678,901";
}

void base_test::amounts_bear_separators()
{
    QFETCH(qint64, amount);
    QTEST(with_separators(amount), "shown");
}

void base_test::whole_part_of_stored_text_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("whole");
    QTest::newRow("empty") << "" << qint64{0};
    QTest::newRow("digits") << "50000" << qint64{50000};
    QTest::newRow("decimals of a money column") << "1200.00" << qint64{1200};
    QTest::newRow("never rounded") << "-7.9" << qint64{-7};
    QTest::newRow("padded") << " 12 " << qint64{12};
    QTest::newRow("no number") << QStringLiteral("없음") << qint64{0};
    QTest::newRow("beyond 32 bits") << "9876543210" << qint64{9876543210};
}

void base_test::whole_part_of_stored_text()
{
    QFETCH(QString, text);
    QTEST(whole_part(text), "whole");
}

void base_test::stored_dates_are_shown_with_hyphens_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("shown");
    QTest::newRow("day") << "20261122"
                         << "2026-11-22";
    QTest::newRow("month") << "202611"
                           << "2026-11";
    QTest::newRow("missing") << ""
                             << "--";
    QTest::newRow("year alone") << "2026"
                                << "2026--";
}

void base_test::stored_dates_are_shown_with_hyphens()
{
    QFETCH(QString, stored);
    QTEST(with_hyphens(stored), "shown");
}

void base_test::days_are_stored_as_eight_digits()
{
    QCOMPARE(stored_date(QDate{2026, 1, 9}), QStringLiteral("20260109"));
    QCOMPARE(stored_date(QDate{}), QString{});
}

void base_test::telephone_numbers_are_cut_data()
{
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QStringList>("parts");
    QTest::newRow("Seoul, old exchange") << "027654321" << QStringList{"02", "765", "4321"};
    QTest::newRow("Seoul") << "0287654321" << QStringList{"02", "8765", "4321"};
    QTest::newRow("province, old exchange") << "0317654321" << QStringList{"031", "765", "4321"};
    QTest::newRow("province") << "03187654321" << QStringList{"031", "8765", "4321"};
    QTest::newRow("nine digits that are not Seoul's") << "031765432" << QStringList{"031", "", ""};
    QTest::newRow("too long") << "0318765432100" << QStringList{"031", "", ""};
    QTest::newRow("area code alone") << "02" << QStringList{"02", "", ""};
    QTest::newRow("one digit") << "0" << QStringList{"0", "", ""};
    QTest::newRow("none") << "" << QStringList{"", "", ""};
}

void base_test::telephone_numbers_are_cut()
{
    QFETCH(QString, digits);
    const phone_parts cut = cut_phone(digits);
    QTEST((QStringList{cut.area, cut.exchange, cut.line}), "parts");
}

void base_test::mobile_numbers_are_cut_data()
{
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QStringList>("parts");
    QTest::newRow("eleven digits") << "01087654321" << QStringList{"010", "8765", "4321"};
    QTest::newRow("ten digits") << "0117654321" << QStringList{"011", "765", "4321"};
    QTest::newRow("none") << "" << QStringList{"", "", ""};
}

void base_test::mobile_numbers_are_cut()
{
    QFETCH(QString, digits);
    const phone_parts cut = cut_mobile(digits);
    QTEST((QStringList{cut.area, cut.exchange, cut.line}), "parts");
}

void base_test::check_digit_of_a_resident_number_data()
{
    QTest::addColumn<QByteArray>("first_twelve");
    QTest::addColumn<char>("check_digit");
    QTest::newRow("remainder 0 gives 1") << QByteArray{"000000000000"} << '1';
    QTest::newRow("remainder 1 gives 0") << QByteArray{"003000000000"} << '0';
    QTest::newRow("ordinary") << QByteArray{"900101123456"} << '8';
}

void base_test::check_digit_of_a_resident_number()
{
    QFETCH(QByteArray, first_twelve);
    QTEST(resident_check_digit(first_twelve.toStdString()), "check_digit");
}

void base_test::ini_files_are_read_as_windows_profiles_data()
{
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value"); // null: there is none
    QTest::newRow("plain") << "VERSION"
                           << "main_ver"
                           << "10";
    QTest::newRow("names without case") << "version"
                                        << "MAIN_VER"
                                        << "10";
    QTest::newRow("blanks around the value") << "VERSION"
                                             << "update_ver"
                                             << "20";
    QTest::newRow("quotes around the value") << "VERSION"
                                             << "quoted"
                                             << " a b ";
    QTest::newRow("one quote is a letter") << "VERSION"
                                           << "inches"
                                           << "5\"";
    QTest::newRow("equals sign in the value") << "VERSION"
                                              << "address"
                                              << "a=b";
    QTest::newRow("Hangul") << "VERSION"
                            << "name" << QStringLiteral("영양사");
    QTest::newRow("empty") << "VERSION"
                           << "empty"
                           << "";
    QTest::newRow("the first of two") << "VERSION"
                                      << "twice"
                                      << "1";
    QTest::newRow("behind a comment") << "VERSION"
                                      << "hidden" << QString{};
    QTest::newRow("of another section") << "VERSION"
                                        << "other" << QString{};
    QTest::newRow("of a section with blanks") << "OTHER"
                                              << "other"
                                              << "x";
    QTest::newRow("of no section") << ""
                                   << "stray" << QString{};
    QTest::newRow("no such section") << "NONE"
                                     << "main_ver" << QString{};
}

void base_test::ini_files_are_read_as_windows_profiles()
{
    QTemporaryDir folder;
    QFile file{folder.filePath(QStringLiteral("some.ini"))};
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(
        "stray=1\r\n[Version]\r\nmain_ver=10\r\n update_ver =  20 \r\nquoted=\" a b \"\r\ninches=5\"\r\n"
        "address=a=b\r\nname=영양사\r\nempty=\r\n;hidden=1\r\ntwice=1\r\ntwice=2\r\nno pair\r\n"
        "[ Other ]\r\nother=x");
    file.close();
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, value);
    const auto found = ini_value(file.fileName(), section, key);
    QCOMPARE(found.has_value(), !value.isNull());
    QCOMPARE(found.value_or(QString{}), value);
}

void base_test::a_missing_ini_file_holds_nothing()
{
    QVERIFY(!ini_value(QStringLiteral("/nowhere/some.ini"), u"VERSION", u"main_ver").has_value());
}

QTEST_APPLESS_MAIN(base_test)
#include "base_test.moc"

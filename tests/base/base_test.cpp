#include "base/amount.h"
#include "base/dates.h"
#include "base/decimal.h"
#include "base/ini.h"
#include "base/phone.h"
#include "base/resident_number.h"
#include "support/files.h"

#include <QTemporaryDir>
#include <QTest>

using namespace orvo;

class base_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void amounts()
    {
        QCOMPARE(with_separators(999), QStringLiteral("999"));
        QCOMPARE(with_separators(-1234567), QStringLiteral("-1,234,567"));
        QCOMPARE(with_separators(12'345'678'901), QStringLiteral("12,345,678,901"));
        QCOMPARE(whole_part(QString{}), 0);
        QCOMPARE(whole_part(QStringLiteral("1200.00")), 1200); // of a money column
        QCOMPARE(whole_part(QStringLiteral("-7.9")), -7);
        QCOMPARE(whole_part(QStringLiteral(" 9876543210 ")), 9876543210);
    }

    void numbers_are_read_as_engines_print_them()
    {
        const std::tuple<const char*, std::int64_t, bool> cases[] = {
            {"50000", 50000, true},
            {"50000.00", 50000, true},
            {"-50000.75", -50000, false},
            {".50", 0, false},
            {"-0.50", 0, false},
            {"5e4", 50000, true},
            {"5.0E+4", 50000, true},
            {"1.25e+1", 12, false},
            {"75e-1", 7, false},
            {"1e-300", 0, false},
            {"0e300", 0, true},
            {"9223372036854775807.9", INT64_MAX, false},
            {"-9223372036854775808", INT64_MIN, true},
        };
        for (const auto& [text, whole, is_whole] : cases) {
            const auto read = read_decimal(text);
            QVERIFY2(read && read->whole == whole && read->is_whole == is_whole, text);
        }
        for (const char* text : {"", "-", ".", "12x", "1,000", "1.2.3", "e4", "1e", "1e+-4", "1e99999",
                                 "0x10", " 1", "+1", "--1", "9223372036854775808", "1e19", "nan", "$5"})
            QVERIFY2(!read_decimal(text), text);
        for (const auto& [number, text] : {std::pair{87.5, "87.5"},
                                           {85.0, "85"},
                                           {1e15, "1000000000000000"},
                                           {-0.05, "-0.05"},
                                           {0.0, "0"}})
            QCOMPARE(plain_text(number), std::string{text});
    }

    void dates()
    {
        QCOMPARE(with_hyphens(QStringLiteral("20261122")), QStringLiteral("2026-11-22"));
        QCOMPARE(with_hyphens(QStringLiteral("202611")), QStringLiteral("2026-11"));
        QCOMPARE(with_hyphens(QString{}), QStringLiteral("--"));
        QCOMPARE(stored_date(QDate{2026, 1, 9}), QStringLiteral("20260109"));
        QCOMPARE(stored_date(QDate{}), QString{});
    }

    void telephone_numbers_are_cut()
    {
        const std::tuple<phone_parts (*)(QStringView), const char*, QStringList> cases[] = {
            {&cut_phone, "027654321", {"02", "765", "4321"}},
            {&cut_phone, "0287654321", {"02", "8765", "4321"}},
            {&cut_phone, "0317654321", {"031", "765", "4321"}},
            {&cut_phone, "03187654321", {"031", "8765", "4321"}},
            {&cut_phone, "031765432", {"031", "", ""}},
            {&cut_phone, "0", {"0", "", ""}},
            {&cut_mobile, "01087654321", {"010", "8765", "4321"}},
            {&cut_mobile, "0117654321", {"011", "765", "4321"}},
            {&cut_mobile, "", {"", "", ""}},
        };
        for (const auto& [cut, digits, parts] : cases) {
            const phone_parts found = cut(QString::fromLatin1(digits));
            QCOMPARE((QStringList{found.area, found.exchange, found.line}), parts);
        }
    }

    void check_digit_of_a_resident_number()
    {
        QCOMPARE(resident_check_digit("900101123456"), '8');
        QCOMPARE(resident_check_digit("000000000000"), '1');
        QCOMPARE(resident_check_digit("003000000000"), '0');
    }

    void ini_files_are_read_as_windows_profiles()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("some.ini"));
        write_file(file, "stray=1\r\n[Version]\r\nmain_ver=10\r\n update_ver =  20 \r\nquoted=\" a b \"\r\n"
                         "inches=5\"\r\naddress=a=b\r\nname=영양사\r\nempty=\r\n;hidden=1\r\ntwice=1\r\n"
                         "twice=2\r\nno pair\r\n[ Other ]\r\nother=x");
        const std::tuple<QString, const char*, std::optional<QString>> cases[] = {
            {"version", "MAIN_VER", "10"}, {"VERSION", "update_ver", "20"}, {"VERSION", "quoted", " a b "},
            {"VERSION", "inches", "5\""},  {"VERSION", "address", "a=b"},   {"VERSION", "name", "영양사"},
            {"VERSION", "empty", ""},      {"VERSION", "twice", "1"},       {"VERSION", "hidden", {}},
            {"VERSION", "other", {}},      {"OTHER", "other", "x"},         {"NONE", "main_ver", {}},
        };
        for (const auto& [section, key, value] : cases)
            QVERIFY2(ini_value(file, section, QString{key}) == value, key);
        QVERIFY(!ini_value(QStringLiteral("/nowhere/some.ini"), u"VERSION", u"main_ver"));
    }
};

QTEST_APPLESS_MAIN(base_test)
#include "base_test.moc"

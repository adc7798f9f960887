#include "base/typed.h"

#include <QTest>

using namespace orvo;

class typed_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void amounts()
    {
        using enum amount_kind;
        const struct {
            std::optional<qint64> number;
            const char* typed;
            amount_kind kind = won;
        } cases[] = {
            {30'000, "30000;30,000;３００００;３０，０００; 30,000원　;₩30,000;￦ 30,000;\\30,000;３만 원"},
            {35'000, "3만5천;3만 5,000;35천원"},
            {10'000, "만원;0010000"},
            {0, "0"},
            {120'000'000, "1억2000만"},
            {123'004'560, "1억2천3백만 4천5백6십"},
            {2'147'483'647, "2,147,483,647;21억4748만3647"},
            {{}, "2147483648;21억4748만3648;184억4674만4073;18446744073709551617;9999999999억9999999999억"},
            {{}, "-5;−5;－５;1.5;1.5만;30.000;3,00;3,0000;0,500;,300;3,000,;30 000;3만5;3만4만;3만50000"},
            {{}, "abc;30000x;+5;원;₩;３²;٣;3e4;3'0;;  ;　"},
            {-5'000, "-5,000;－５，０００;− 5천;-₩5000", signed_won},
            {5'000, "5,000", signed_won},
            {{}, "--5;5-;-;₩-5;-2147483648", signed_won},
            {3'500, "3500;3,500;3500만;3,500만원;3천5백만;₩35,000,000;35000000원", ten_thousand_won},
            {{}, "35,000,000;214749;3천;3500원;-5;1.5;만원쯤", ten_thousand_won},
            {1'200, "1200;１,200", count},
            {{}, "3만;천;5원;₩5;-5;1.5;3,00", count},
        };
        for (const auto& [number, typed, kind] : cases)
            for (const QString& each : QString::fromUtf8(typed).split(u';')) {
                const typed_amount read = read_amount(each, kind);
                QVERIFY2(read.number == number, qPrintable(each));
                QVERIFY2(kind != count || !read.refusal.contains("금액"), qPrintable(each));
                QVERIFY2(read.refusal.isEmpty() == (number || each.trimmed().isEmpty()), qPrintable(each));
            }
        for (const QString much : {"9", "만", "1만", "1,"})
            QVERIFY(!read_amount(much.repeated(100'000)).refusal.isEmpty());
    }

    void dates_and_months()
    {
        const auto shown = [](const typed_date& d) {
            return d.refusal.isEmpty() ? QStringList{d.year, d.month, d.day}.join(u'|') : QStringLiteral("-");
        };
        const std::tuple<QString, const char*, const char*> cases[] = {
            {"2026|11|22", "20261122;2026-11-22;2026/11/22; 2026. 11. 22. ;２０２６．１１．２２;2026 11 22",
             ""},
            {"2026|03|09", "2026.3.9;2026년 3월 9일", ""},
            {"2026|02|31", "20260231", ""},
            {"2031|11|22", "11.22;11-22;11/22;１１／２２;11월 22일", ""},
            {"1970||", "1970;１９７０년", "1970;１９７０년"},
            {"2050||", "2050", "2050"},
            {"2026|11|", "2026-11;2026년 11월", "202611;2026-11;2026. 11.;２０２６１１;2026년 11월"},
            {"|03|", "3;03;3월;３", "3;03;3월;３"},
            {"||", " ;　", " ;　"},
            {"-", "1969;2051;1122;20261322;20260022;20261132;2026-0;13.1;13;0", "1969;2051;202613;202600;13"},
            {"-", "202611;261122;26.11.22;22.11.2026;2026112;202611221;2026-11-22-1;--;내일;٢٠٢٦", ""},
            {"-", "20261100", "20261122;2026-11-22;26.11;2611;11.22;내일"},
        };
        for (const auto& [parts, dates, months] : cases) {
            for (const QString& each : QString::fromUtf8(dates).split(u';'))
                QVERIFY2(shown(read_date(each, 2031, date_part::month)) == parts, qPrintable(each));
            for (const QString& each : QString::fromUtf8(months).split(u';', Qt::SkipEmptyParts))
                QVERIFY2(shown(read_month(each, date_part::month)) == parts, qPrintable(each));
        }
        QCOMPARE(shown(read_date(u"３일", 2031, date_part::day)), QStringLiteral("||03"));
        QCOMPARE(shown(read_date(u"3", 2031)), QStringLiteral("-"));
        QCOMPARE(shown(read_date(u"11.22", 2051)), QStringLiteral("-"));
    }
};

QTEST_APPLESS_MAIN(typed_test)
#include "typed_test.moc"

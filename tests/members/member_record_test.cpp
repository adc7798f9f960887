#include "members/rules/member_record.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

namespace {

const QString member = QStringLiteral("9001011234568");
const QString other = QStringLiteral("8512122234567");

/// A register with the member kinds 10 and 20.
struct filled_register {
    explicit filled_register(engine kind) : its{kind}, db{its.connect()}
    {
        a_row{"money_member"}.with("code_member", 10).with("mem_kind", "평생회원").store_in(db);
        a_row{"money_member"}.with("code_member", 20).with("mem_kind", "정회원").store_in(db);
    }

    test_register its;
    connection db;
};

QStringList lines(const std::vector<panel_row>& panel)
{
    QStringList all;
    for (const panel_row& each : panel)
        all.append(each.cells.join(u'|') + u'#' + each.key);
    return all;
}

} // namespace

class member_record_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void dues_years_are_shown_data() { engines_under_test(); }
    void dues_years_are_shown()
    {
        FETCH_ENGINE(kind);
        filled_register on{kind};
        a_dues_year{member, "2026", 1'250'000}.of_kind(10).store_in(on.db);
        a_dues_year{member, "2025"}.paid_in_full().store_in(on.db);
        a_dues_year{member, "2024"}.with("yet_money", -5000).store_in(on.db);
        a_dues_year{member, "2023"}.of_kind(99).store_in(on.db); // a kind that is gone
        a_dues_year{other, "2022"}.store_in(on.db);
        QCOMPARE(lines(dues_years(on.db, member)),
                 (QStringList{"2024|정회원|50,000|-5,000#20", "2025|정회원|50,000|0#20",
                              "2026|평생회원|1,250,000|1,250,000#10"}));
    }

    void lines_go_by_the_text_of_the_year_data() { engines_under_test(); }
    void lines_go_by_the_text_of_the_year()
    {
        FETCH_ENGINE(kind);
        filled_register on{kind};
        const auto paid = [&](a_payment payment) { return QString::number(payment.store_in(on.db)); };
        const QString first = paid({member, "2026", 30'000});
        const QString second = paid(a_payment{member, "2026", 1'020'000}.with("pers_mem_b_day", ""));
        const QString lifetime = paid({member, "평생회원", 7});
        paid({other, "2026"});
        QCOMPARE(lines(dues_lines(on.db, member, "2026")),
                 (QStringList{"2026-03-15|2026-03-15|30,000#" + first, "2026-03-15|--|1,020,000#" + second}));
        QCOMPARE(lines(dues_lines(on.db, member, "평생회원")),
                 QStringList{"2026-03-15|2026-03-15|7#" + lifetime});
        QVERIFY(dues_lines(on.db, member, "2025").empty());
    }

    void the_primary_workplace_stands_on_top_data() { engines_under_test(); }
    void the_primary_workplace_stands_on_top()
    {
        FETCH_ENGINE(kind);
        filled_register on{kind};
        a_workplace earlier{member};
        earlier.named("새봄병원").former().of_division(100, 1, 1).with("pers_out_date", "201902");
        const QString left = QString::number(earlier.with("comp_except", 1).store_in(on.db));
        const QString now = QString::number(a_workplace{member}.store_in(on.db));
        a_workplace{other}.store_in(on.db);
        QCOMPARE(lines(workplaces(on.db, member)), (QStringList{"한빛초등학교|비집단급식|--|않음#" + now,
                                                                "새봄병원|집단급식|2019-02|받음#" + left}));
    }

    void a_pledge_is_told_data() { engines_under_test(); }
    void a_pledge_is_told()
    {
        FETCH_ENGINE(kind);
        filled_register on{kind};
        QVERIFY(read_pledge(on.db, member).text.isEmpty());
        a_pledge{member, "20250601"}.with("con_money", 250'000).with("con_finish", "0").store_in(on.db);
        a_pledge{other, "20240601"}.with("con_money", 1'000'500).with("con_finish", "1").store_in(on.db);
        a_row paid{"contract_list"};
        paid.with("pers_no", member).with("con_date", "20250705").with("con_money", 250'000);
        const QString id = QString::number(paid.store_in(on.db));
        const pledge running = read_pledge(on.db, member);
        QCOMPARE(running.text,
                 QStringLiteral("* 약정일 : 2025-06-01\r\n* 약정액 : 1,000,000\r\n* 총입금액 : 250,000\r\n"
                                "* 미수금액 : 750,000\r\n* 약정상태 : 진행\r\n"));
        QCOMPARE(lines(running.instalments), QStringList{"2025-07-05|250,000#" + id});
        const pledge given_up = read_pledge(on.db, other); // and overpaid
        QCOMPARE(given_up.text, QStringLiteral("* 약정일 : 2024-06-01\r\n* 약정액 : 1,000,000\r\n"
                                               "* 총입금액 : 1,000,500\r\n* 미수금액 : -500\r\n"
                                               "* 약정상태 : 포기\r\n"));
        QVERIFY(given_up.instalments.empty());
    }

    void a_web_login_is_made_once_data() { engines_under_test(); }
    void a_web_login_is_made_once()
    {
        FETCH_ENGINE(kind);
        filled_register on{kind};
        a_row{"id_tbl"}.with("pers_no", other).with("id", "o'neil").with("passwd", "pa'ss\\").store_in(on.db);
        for (int opened = 0; opened < 2; ++opened) {
            QCOMPARE(open_records(on.db, member).login.id, QString{});
            const web_identity login = open_records(on.db, other).login;
            QCOMPARE(login.id + u' ' + login.passwd, QStringLiteral("o'neil pa'ss\\"));
        }
        QCOMPARE(on.db.number("select count(*) as n from id_tbl"), 2);
    }
};

QTEST_GUILESS_MAIN(member_record_test)
#include "member_record_test.moc"

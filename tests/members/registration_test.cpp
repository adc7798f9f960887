#include "members/rules/lookalikes.h"
#include "members/rules/registration.h"
#include "support/a_new_member.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/failure_of.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

namespace {

void store(connection& db, const new_member& typed)
{
    save{register_member(typed, QStringLiteral("20261122")), db, db}.carry_out();
}

/// One row of a table as "column=value", by columns.
QString row_of(connection& db, const char* table, std::initializer_list<const char*> columns)
{
    const rows found = db.read(std::string{"select * from "} + table);
    QStringList all;
    for (const auto row : found) {
        QStringList shown;
        for (const char* column : columns)
            shown.append(row.text(column));
        all.append(shown.join(u' '));
    }
    return all.join(u'|');
}

} // namespace

class registration_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rows_follow_from_what_was_typed_data()
    {
        QTest::addColumn<engine>("kind");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("header"); // val_year mem_dues yet_money incom_flag
        QTest::addColumn<QString>("line");   // val_year pers_mem_day pers_mem_b_day pres_money
        QTest::addColumn<QString>("pledge"); // con_day con_amount con_money con_finish
        struct {
            const char *name, *typed, *header, *line, *pledge;
        } const cases[]{
            {"paid in full", "20 50000 50000 both -", "2026 50000 0 1", "2026 20261101 20261102 50000", ""},
            {"paid in part", "20 30000 20000 both -", "2026 30000 10000 0", "2026 20261101 20261102 20000",
             ""},
            {"paid too much", "20 30000 40000 both -", "2026 30000 -10000 1", "2026 20261101 20261102 40000",
             ""},
            {"nothing paid, both dates", "20 30000 - both -", "2026 30000 30000 0",
             "2026 20261101 20261102 0", ""},
            {"no dues, nothing paid", "20 - - both -", "2026 0 0 1", "2026 20261101 20261102 0", ""},
            {"one date", "20 30000 30000 head -", "2026 30000 30000 0", "", ""},
            {"the other date", "20 30000 30000 branch -", "2026 30000 30000 0", "", ""},
            {"for life", "10 500000 500000 both -", "2026 500000 0 1", "평생회원 20261101 20261102 500000",
             ""},
            {"for life, last kind", "13 500000 1 both -", "2026 500000 499999 0",
             "평생회원 20261101 20261102 1", ""},
            {"beyond the lifetime kinds", "14 1 1 both -", "2026 1 0 1", "2026 20261101 20261102 1", ""},
            {"an ordinary member pledges", "20 30000 30000 none 1000000", "2026 30000 30000 0", "",
             "20261122 1000000 0 0"},
        };
        for (const auto& each : cases)
            for (const engine kind : engines)
                QTest::addRow("%s, %s", each.name, name_of(kind))
                    << kind << QString{each.typed} << QString{each.header} << QString{each.line}
                    << QString{each.pledge};
    }
    void rows_follow_from_what_was_typed()
    {
        FETCH_ENGINE(kind);
        QFETCH(QString, typed);
        const QStringList parts = typed.replace(u'-', QString{}).split(u' ');
        new_member member = a_new_member();
        member.code_member = parts[0];
        member.mem_dues = parts[1];
        member.agree_pay = parts[2];
        member.pers_mem_day = parts[3] == "both" || parts[3] == "head" ? "20261101" : "";
        member.pers_mem_b_day = parts[3] == "both" || parts[3] == "branch" ? "20261102" : "";
        member.dues_in = parts[4];
        member.workplace.company_name.clear();
        running_client on{kind};
        // Another member's rows stay as they are.
        a_dues_year{"7001011234567", "2026"}.of_kind(20).store_in(on.c.db_conn);
        store(on.c.db_conn, member);
        QTEST(row_of(on.c.db_conn, "dues_h_tbl where pers_no<>'7001011234567'",
                     {"val_year", "mem_dues", "yet_money", "incom_flag"}),
              "header");
        QTEST(
            row_of(on.c.db_conn, "dues_b_tbl", {"val_year", "pers_mem_day", "pers_mem_b_day", "pres_money"}),
            "line");
        QTEST(row_of(on.c.db_conn, "contract", {"con_day", "con_amount", "con_money", "con_finish"}),
              "pledge");
        QCOMPARE(row_of(on.c.db_conn, "dues_h_tbl where pers_no='7001011234567'", {"yet_money"}), "50000");
        QCOMPARE(row_of(on.c.db_conn, "company", {"company_name"}), "");
        QCOMPARE(row_of(on.c.db_conn, "id_tbl", {"pers_no"}), ""); // made when the console opens the member
    }

    void values_are_stored_as_typed_data() { engines_under_test(); }
    void values_are_stored_as_typed()
    {
        FETCH_ENGINE(kind);
        running_client on{kind};
        new_member member = a_new_member();
        member.member.pers_name = QStringLiteral("오'영희 🙂");
        member.member.pers_add = QStringLiteral("서울 '); drop table person_m_tbl;--");
        member.member.career_months = QStringLiteral("03");
        member.member.lic_kind = {true, false, false, true, false, true, false};
        member.workplace.code_part.clear();
        member.workplace.meals = {QStringLiteral("120"), {}, {}, {}};
        member.workplace.join_con.clear();
        store(on.c.db_conn, member);
        QCOMPARE(row_of(on.c.db_conn, "person_m_tbl",
                        {"pers_no", "pers_name", "pers_add", "pers_sex", "pers_tel", "pers_career",
                         "pers_year_pay", "lic_pay", "regi_date", "lic_kind1", "lic_kind2", "lic_kind4",
                         "lic_kind6", "lic_kind6_no", "code_deposit"}),
                 "9001011234568 오'영희 🙂 서울 '); drop table person_m_tbl;-- 0 0212345678 03 0 0 "
                 "20261122 1 0 1 1 제6-1 0");
        QCOMPARE(row_of(on.c.db_conn, "company",
                        {"pers_no", "company_name", "code_part", "company_morning", "company_midday",
                         "join_con", "pers_out_date", "regi_date", "primary_flag"}),
                 "9001011234568 한빛초등학교 0 120 0 0  20261122 1");
        // What no column holds is the register's refusal, and nothing of that member is stored.
        member.member.pers_no1 = QStringLiteral("900102");
        member.member.pers_name = QString{10'000, u'가'};
        QCOMPARE(failure_of([&] { store(on.c.db_conn, member); }), failure_kind::overflow);
        QVERIFY(!is_registered(on.c.db_conn, member.member.pers_no()));
        QVERIFY(is_registered(on.c.db_conn, QStringLiteral("9001011234568")));
    }

    void what_is_missing_is_asked_for_in_order()
    {
        new_member typed;
        QStringList asked;
        const auto fill = [&](const QString& control) {
            member_data& m = typed.member;
            const new_member whole = a_new_member();
            if (control == "name_txt")
                m.pers_name = whole.member.pers_name;
            else if (control == "pers_no1_txt")
                m.pers_no1 = m.pers_no1.isEmpty() ? QStringLiteral("９００１０１") : whole.member.pers_no1;
            else if (control == "pers_no2_txt")
                m.pers_no2 = whole.member.pers_no2;
            else if (control == "mem_kind_cbb")
                typed.code_member = whole.code_member;
            else if (control == "bran_cbb")
                m.code_bran = whole.member.code_bran;
            else if (control == "big_cbb")
                m.code_big = whole.member.code_big;
            else if (control == "sect_cbb")
                m.code_sect = whole.member.code_sect;
            else
                m.pers_tel[static_cast<std::size_t>(control[3].digitValue() - 1)] = QStringLiteral("02");
        };
        while (const auto why = check_member(typed)) {
            asked.append(why->control);
            QVERIFY(asked.size() < 20);
            fill(why->control);
        }
        QCOMPARE(asked.join(u' '),
                 "name_txt pers_no1_txt pers_no2_txt pers_no1_txt mem_kind_cbb bran_cbb big_cbb sect_cbb "
                 "tel1_txt tel2_txt tel3_txt");
        typed.member.lic_kind[6] = true;
        typed.member.lic_kind7_no = QStringLiteral("7");
        QVERIFY(check_certificate_numbers(typed.member).has_value()); // it is the sixth number that counts
        typed.member.lic_kind6_no = QStringLiteral("6");
        QVERIFY(!check_certificate_numbers(typed.member).has_value());
    }

    void lookalikes_are_found_data() { engines_under_test(); }
    void lookalikes_are_found()
    {
        FETCH_ENGINE(kind);
        running_client on{kind};
        for (const auto& [code, name] : {std::pair{10, "서울"}, {20, "부산"}})
            a_row{"branch_code", database::local}
                .with("code_bran", code)
                .with("branch_name", name)
                .store_in(on.c.local_conn);
        for (const auto& [number, name, branch] : {std::tuple{"9001011234568", "김영희", 10},
                                                   {"9001012222222", "오'영희", 20},
                                                   {"9001018888888", "김영희", 20},
                                                   {"9001019999999", "김영희", 20},
                                                   {"9001017777777", "김영희", 0},
                                                   {"9001021234567", "김영희", 10}})
            a_member{number}.named(name).of_branch(branch).with("regi_date", "2026").store_in(on.c.db_conn);
        const auto found = [&](const char* branch, const char* name, const char* first, const char* second) {
            QStringList all;
            for (const lookalike& each :
                 find_lookalikes(on.c.db_conn, on.c.local_conn, branch, name, first, second))
                all += each.pers_name + each.birth + each.branch + each.regi_date +
                       (each.is_seen ? "" : "?") + (each.same_number ? "!" : "");
            all.sort();
            return all.join(u' ');
        };
        const QString own = "김영희900101서울2026", of_none = "김영희9001012026",
                      other = "김영희900101부산2026";
        QCOMPARE(found("0", "김영희", "900101", ""), of_none + ' ' + other + ' ' + other + ' ' + own);
        QCOMPARE(found("00", "김영희", "900101", "1234568"),
                 of_none + ' ' + other + ' ' + other + ' ' + own + '!');
        QCOMPARE(found("0", "", "900101", "2222222"), "오'영희900101부산2026!");
        QCOMPARE(found("0", "오'영희", "900101", ""), "오'영희900101부산2026");
        QCOMPARE(found("0", "김영희", "90010", ""), "");
        QCOMPARE(found("0", "", "900101", ""), "");
        // Of another branch's members no more than that there are some, and where.
        QCOMPARE(found("10", "김영희", "900101", ""), of_none + ' ' + own + " 부산?");
        QCOMPARE(found("20", "김영희", "900101", "1234568"), of_none + ' ' + other + ' ' + other + " 서울?!");
        QCOMPARE(found("7 A", "김영희", "900101", "9999999"), "? 부산?! 서울?");
    }
};

QTEST_GUILESS_MAIN(registration_test)
#include "registration_test.moc"

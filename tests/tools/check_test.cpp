#include "client/save_log.h"
#include "db/schema/ddl.h"
#include "support/builders.h"
#include "support/other_types.h"
#include "tools/tool.h"

#include <QTest>

using namespace orvo;

namespace {

const QString kim{"9001011234568"}, lee{"8512122234567"}, park{"7703031234560"}, choi{"6504041234561"};

/// The lines of an output that tell of something.
QStringList told(const outcome& of)
{
    QStringList lines;
    for (const QString& line : QString::fromUtf8(of.output).split(u'\n'))
        if (line.startsWith("  "))
            lines.append(line.mid(2));
    return lines;
}

/// A register whose scores and numbers of certificates are whole numbers, as they once were made.
void make_as_earlier(const test_register& its)
{
    connection db = its.connect();
    for (const auto& [name, field] :
         {std::pair{"education_tbl", "test_avg"}, {"std_h_tbl", "iss_no"}, {"std_b_tbl", "test_avg"}}) {
        table older = *find_table(name);
        std::ranges::find(older.columns, field, &column::name)->type = column_type::number;
        db.direct("drop table " + std::string{name});
        for (const std::string& text : make_statements(db.kind(), database::server, older))
            db.direct(text);
    }
}

} // namespace

class check_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void check_tells_what_is_missing_data() { engines_under_test(); }
    void check_tells_what_is_missing()
    {
        FETCH_ENGINE(kind);
        const test_register its_register{kind};
        const QString home = its_register.folder().path;
        point_at(home, its_register.address());
        for (const database each : {database::server, database::mail}) {
            connection db = its_register.connect(each);
            for (const table& one : tables_of(each))
                db.direct("drop table " + std::string{one.name});
        }
        QCOMPARE(run_tool(home, "check").output.count(" is missing\n"),
                 tables_of(database::server).size() + tables_of(database::mail).size());
        QCOMPARE(run_tool(home, "init").code, 0);
        const outcome whole = run_tool(home, "check");
        QVERIFY2(whole.code == 0, whole.output.constData());
        connection db = its_register.connect();
        db.direct("drop table contract");
        db.direct("alter table company drop column company_fax");
        const outcome found = run_tool(home, "check");
        QCOMPARE(found.code, 1);
        QCOMPARE(found.output, QByteArray{"the configuration: as it should be\n"
                                          "the register: not as it should be\n"
                                          "  the column company_fax of company is missing\n"
                                          "  the table contract is missing\n"
                                          "the mail queue: as it should be\n"
                                          "the workstation's file: as it should be\n"});
    }

    void check_tells_what_the_login_may_not()
    {
        if (!is_at_hand(engine::postgresql))
            QSKIP("ORVO_TEST_POSTGRESQL names no server; scripts/with_postgresql.sh starts one");
        const test_register its_register{engine::postgresql};
        server_address reader = its_register.address();
        reader.user = QStringLiteral("orvo_reader_%1").arg(QCoreApplication::applicationPid());
        const std::string name = reader.user.toStdString();
        connection owner = its_register.connect();
        connection mail = its_register.connect(database::mail);
        owner.direct("create role " + name + " login");
        owner.direct("grant select,update,delete on all tables in schema public to " + name);
        owner.direct("grant insert on school to " + name);
        owner.direct("revoke all on religion from " + name);
        mail.direct("grant select,insert on tbl_tempmail to " + name);
        const QString home = its_register.folder().path;
        point_at(home, reader);
        const outcome found = run_tool(home, "check");
        owner.direct("drop owned by " + name);
        mail.direct("drop owned by " + name);
        owner.direct("drop role " + name);
        QCOMPARE(found.code, 1);
        QCOMPARE(found.output.count("\n  "), tables_of(database::server).size() - 1);
        QVERIFY(found.output.contains("  the login may not read the table religion: "));
        QVERIFY(found.output.contains("  nothing can be added to the table company: "));
        QVERIFY(found.output.contains("the mail queue: as it should be\n"));
    }

    void check_tells_what_follows_of_other_types_data() { engines_under_test(); }
    void check_tells_what_follows_of_other_types()
    {
        FETCH_ENGINE(kind);
        const test_register its_register{kind};
        const QString home = its_register.folder().path;
        point_at(home, its_register.address());
        for (const char* each : {"contract", "branch_code"})
            give_other_types(its_register, each);
        const outcome works = run_tool(home, "check");
        QVERIFY2(works.code == 0, works.output);
        const QStringList remarks = told(works);
        QCOMPARE(remarks.size(), 2);
        QVERIFY(remarks[0].startsWith("filled up with blanks, which the client leaves out when it reads: "));
        QVERIFY(remarks[0].contains("contract.pers_no (") &&
                remarks[0].contains("branch_code.branch_name ("));
        QVERIFY(remarks[1].startsWith("read in whole numbers, what stands behind the point is not shown: "));
        QVERIFY(remarks[1].contains("contract.con_amount (") &&
                remarks[1].contains("branch_code.code_bran ("));
        if (kind != engine::postgresql)
            return;
        connection db = its_register.connect();
        db.direct("alter table dues_b_tbl alter column pres_money drop default,"
                  "alter column pres_money type money using pres_money::money");
        db.direct("alter table religion alter column religion_name type varchar(5)");
        db.direct("alter table id_tbl alter column id drop default,alter column id type integer using 1");
        const outcome fails = run_tool(home, "check");
        QCOMPARE(fails.code, 1);
        QCOMPARE(fails.errors, QByteArray{"orvo_db: 2 things are to be mended\n"});
        QVERIFY(told(fails).join(u'\n').contains("fails: dues_b_tbl.pres_money (money)\n"));
        QVERIFY(told(fails).join(u'\n').contains("fails: id_tbl.id (integer)\n"));
        QVERIFY(told(fails).join(u'\n').contains("saved: religion.religion_name (character varying(5))"));
    }

    void init_brings_up_what_an_earlier_one_made_data() { engines_under_test(); }
    void init_brings_up_what_an_earlier_one_made()
    {
        FETCH_ENGINE(kind);
        const test_register its_register{kind};
        const QString home = its_register.folder().path;
        point_at(home, its_register.address());
        make_as_earlier(its_register);
        connection db = its_register.connect();
        db.direct("insert into education_tbl(detail_name,test_avg) values ('가',60)");
        db.direct("insert into std_h_tbl(pers_no,iss_no) values ('1',12)");
        db.direct("insert into std_b_tbl(pers_no,test_avg) values ('1',87)");
        QCOMPARE(told(run_tool(home, "check")).size(), 6);
        QCOMPARE(run_tool(home, "init").errors.count("its present type"), 3);
        QCOMPARE(told(run_tool(home, "check")).size(), 1); // the credit period has no member
        QCOMPARE(run_tool(home, "init").errors.count("its present type"), 0);
        connection again = its_register.connect();
        again.write("update std_b_tbl set test_avg='{v}' where test_avg='87'", {{"v", "87.5"}});
        again.write("insert into education_tbl(test_avg) values ('{v}')", {{"v", "60점"}});
        again.write("insert into std_h_tbl(iss_no) values ('{v}')", {{"v", ""}});
        again.write("insert into std_b_tbl(test_avg) values ('{v}')", {{"v", ""}});
        QString found;
        for (const auto& [text, name] : {std::pair{"select * from education_tbl", "test_avg"},
                                         {"select * from std_h_tbl", "iss_no"},
                                         {"select * from std_b_tbl", "test_avg"}})
            for (const auto row : again.read(text))
                found += row.text(name) + u'|';
        QCOMPARE(found, "60|60점|12||87.5|0|");
        const QByteArray dump = run_tool(home, "dump").output;
        QVERIFY(dump.contains("\t87.5\t") && dump.contains("\t60점\t"));
    }

    void only_registers_of_its_own_are_brought_up()
    {
        const test_register its_register{engine::embedded};
        make_as_earlier(its_register);
        connection db = its_register.connect();
        db.direct("alter table std_b_tbl add column another text");
        db.direct("alter table education_tbl rename column edu_place to place");
        QCOMPARE(run_tool(its_register.folder().path, "init").errors.count("its present type"), 1);
    }

    void check_tells_what_does_not_add_up_data() { engines_under_test(); }
    void check_tells_what_does_not_add_up()
    {
        FETCH_ENGINE(kind);
        const test_register its_register{kind};
        const QString home = its_register.folder().path;
        point_at(home, its_register.address());
        connection db = its_register.connect();
        a_member{kim}.of_kind(10).store_in(db); // of a lifetime kind: what he paid counts for the year
        a_dues_year{kim, "2026"}.of_kind(10).with("yet_money", 20'000).store_in(db);
        a_payment{kim, "평생회원", 30'000}.store_in(db);
        a_dues_year{kim, "2025"}.paid_in_full().store_in(db); // and this was not paid
        a_member{lee}.store_in(db);
        a_dues_year{lee, "2026"}.with("yet_money", 20'000).with("incom_flag", "1").store_in(db);
        a_payment{lee, "2026", 30'000}.store_in(db);
        a_member{"9902021234567"}.store_in(db);
        a_dues_year{park, "2026"}.store_in(db); // nobody's
        for (const char* each : {"have_lic_tbl", "contract"})
            a_row{each}.with("pers_no", park).store_in(db);
        for (const char* each : {"std_h_tbl", "std_b_tbl", "std_b_tbl", "contract_list"})
            a_row{each}.with("pers_no", choi).store_in(db);
        give_other_types(its_register, "school");
        connection below = beneath(its_register);
        for (const char* row : {"10,'가'", "10,'나'", "20,'다'", "null,'라'"})
            below.direct("insert into school(code_school,school_name) values (" + std::string{row} + ")");

        const save_act paying{"paying", "회비 입금", nullptr};
        save_log saves{home + "/orvo.saves", [] { return save_author{"kim", "김담당", test_clock()}; }};
        saves.end(saves.begin({&paying, kim, {}}), save_end::finished);
        saves.mark(saves.begin({&paying, lee, {}}), {"line", "입금"});

        const outcome found = run_tool(home, "check");
        QCOMPARE(found.code, 0);
        QCOMPARE(
            told(found).mid(2), // behind the types of the schools
            (QStringList{
                "rows of numbers that no member has, as a save leaves them that broke: dues_h_tbl 1, "
                "have_lic_tbl 1, contract 1; 1 number: 770303-*******",
                "rows that a change of number left behind, as in use: std_h_tbl 1, std_b_tbl 2; 1 number: "
                "650404-*******",
                "pledges that a deletion left, as in use: contract_list 1; 1 number: 650404-*******",
                "members without any dues: 1: 990202-*******",
                "years that are not settled, as what is open is not the dues less the payments: 1: "
                "900101-******* 2025",
                "years whose mark of payment is not that of their amount, as a change of the year leaves it "
                "in "
                "use: 1: 851212-******* 2026",
                "the code 10 of school stands there 2 times: workstations take the first row",
                "school has 1 row without a code, which no workstation takes",
                "2026-11-22 10:00, kim: 회비 입금, 851212-*******; stored: 입금",
            }));
        QCOMPARE(run_tool(home, "sync-codes").code, 0);
    }
};

QTEST_GUILESS_MAIN(check_test)
#include "check_test.moc"

#include "db/dialect.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/failure_of.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

namespace {

const QString one_member = QStringLiteral("9001011234568");
const QString other_member = QStringLiteral("9002022234567");

/// What both engines have to find in the rows of `fill`: a column of all that is found.
struct question {
    const char* text;
    QString value; ///< of the slot {v}
    const char* column;
    QString answer;
};

const std::vector<question> questions{
    // a word behind a number, a slot or a literal without a blank
    {"select * from branch_code where code_bran=3and branch_name<>''", {}, "code_bran", "3"},
    {"select * from branch_code where code_bran={v}and branch_name<>''", "3", "code_bran", "3"},
    {"select count(*) as n from person_m_tbl where code_member<>'13'group by code_member", {}, "n", "2"},
    // both conditions behind both joins; names of any case; the first of several columns of a name
    {"SELECT distinct a.*,b.*,c.* from DUES_H_TBL a inner join person_m_tbl b inner join money_member c on "
     "b.code_member = c.code_member on a.pers_no = b.pers_no where a.val_year<>'{v}'",
     "2024", "VAL_YEAR", "2023 2025 2026"},
    {"select a.*,b.* from dues_h_tbl a inner join person_m_tbl b on a.pers_no=b.pers_no",
     {},
     "Code_Member",
     "30 30 30 30"},
    // a sum between quoted numbers
    {"select count(a.pers_no) as n from company a where (a.company_morning+a.company_midday between '1' and "
     "'{v}') and a.primary_flag='1'",
     "200", "n", "3"},
    {"select count(a.pers_no) as n from company a where a.company_morning+a.company_midday between '801' and "
     "'1000'",
     {},
     "n",
     "1"},
    // nothing against a number is 0
    {"select * from std_b_tbl where pers_no='1' and (std_id='' or std_id='0')", {}, "std_id", "0"},
    {"select * from std_b_tbl where std_id in ('{v}','')", "7", "std_id", "0 7"},
    {"select * from std_b_tbl where std_id='{v}'", "", "code_private", "0"},
    {"select e_date from std_h_tbl where (CAST(e_date As int) > {v})", "20261122", "e_date", "20271231"},
    // numbers and texts in either form, zeros in front kept
    {"select * from person_m_tbl where lic_no=00123", {}, "lic_no", "00123"},
    {"select * from person_m_tbl where lic_no={v}", "00123", "lic_no", "00123"},
    {"select * from person_m_tbl where pers_no={v}", one_member, "pers_no", one_member},
    {"select * from person_m_tbl where code_bran='{v}'", " 010 ", "pers_no", one_member},
    {"select * from person_m_tbl where code_bran<>'11' and code_bran={v}", "10", "pers_no", one_member},
    {"select * from have_lic_tbl where iss_no like '%{v}%'", "23", "iss_no", "1234"},
    {"select * from have_lic_tbl where iss_no='01234' and iss_no='{v}'", " 1234", "iss_no", "1234"},
    // what a name is goes by its table, under whatever name the statement knows that
    {"select * from std_h_tbl where iss_no='{v}'", "제01호", "iss_no", "제01호"},
    {"select a.iss_no as iss_no from STD_H_TBL a,person_m_tbl b where a.pers_no=b.pers_no and A.iss_no<>''",
     {},
     "iss_no",
     "제01호"},
    {"select test_avg from education_tbl where test_avg='{v}'", "060", "test_avg", "060"},
    {"select * from std_b_tbl where test_avg>'{v}' and test_avg<'88'", "9.5", "test_avg", "87.5"},
    {"select b.test_avg as test_avg from std_b_tbl b where b.test_avg in ('{v}','')", "87.50", "test_avg",
     "0 87.5"},
    {"select sum(test_avg) as score from std_b_tbl", {}, "score", "87.5"},
    // what an operator looks for
    {"select * from branch_code where branch_name like '%{v}%'", "kbs", "code_bran", "1 2"},
    {"select * from branch_code where branch_name like '%{v}%'", "KBS", "code_bran", "1 2"},
    {"select * from branch_code where branch_name like '%{v}%'", "서울 a", "code_bran", "3"},
    {"select * from branch_code where branch_name like '%{v}%'", "\\%", "code_bran", "4"},
    {"select * from branch_code where branch_name like '%{v}%'", "'", "code_bran", "5"},
    {"select * from branch_code where branch_name like '%{v}%'", "", "code_bran", "1 2 3 4 5"},
    // rows in the order of the key where the statement names none, or as far as it leaves one open
    {"select * from dues_h_tbl", {}, "val_year", "2023 2024 2025 2026"},
    {"select * from dues_h_tbl order by incom_flag desc", {}, "val_year", "2023 2024 2025 2026"},
    {"select distinct val_year from dues_h_tbl where yet_money>={v}", "0", "val_year", "2023 2024 2025 2026"},
    // money beyond 32 bits, and nothing told from an empty text
    {"select sum(pres_money) as total from dues_b_tbl", {}, "total", "6000000000"},
    {"select max(pers_mem_day) as day from dues_b_tbl where pers_mem_day<>''", {}, "day", "20260315"},
};

void fill(connection& db)
{
    int code = 0;
    for (const char* name : {"KBS 본관", "kbs별관", "서울 A동", "C:\\%동", "o'clock"})
        a_row{"branch_code"}.with("code_bran", ++code).with("branch_name", QString{name}).store_in(db);
    a_row{"money_member"}.with("code_member", 20).store_in(db);
    a_member{one_member}.of_branch(10).licensed("00123").store_in(db);
    a_member{other_member}.of_branch(11).licensed("123").store_in(db);
    for (const char* year : {"2025", "2023", "2026", "2024"})
        a_dues_year{one_member, year}.of_kind(30).store_in(db);
    db.write("update dues_h_tbl set yet_money=0 where val_year='2023'");
    for (const char* year : {"2025", "2026"})
        a_payment{one_member, year, 3'000'000'000}.store_in(db);
    for (const int meals : {0, 1, 150, 200, 201, 1000})
        a_workplace{one_member}.with("company_morning", meals).with("company_midday", 0).store_in(db);
    for (const char* end : {"", "20261121", "20271231"})
        a_row{"std_h_tbl"}.with("e_date", end).store_in(db);
    db.write("insert into std_b_tbl(pers_no,std_id,code_private) values ('1','{v}','')", {{"v", ""}});
    a_row{"std_b_tbl"}.with("pers_no", "2").with("std_id", 7).with("test_avg", "87.5").store_in(db);
    a_row{"education_tbl"}.with("test_avg", "060").store_in(db);
    a_row{"std_h_tbl"}.with("pers_no", one_member).with("iss_no", "제01호").store_in(db);
    a_row{"have_lic_tbl"}.with("iss_no", 1234).store_in(db);
}

ready_statement made(std::string_view text, engine kind)
{
    return translate(statement_text{text}, text, kind, database::server, false);
}

} // namespace

class statement_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void questions_are_answered_data() { engines_under_test(); }
    void questions_are_answered()
    {
        FETCH_ENGINE(kind);
        const test_register its_register{kind};
        connection db = its_register.connect();
        fill(db);
        for (const auto& each : questions) {
            QStringList found;
            for (const auto row : db.read(each.text, {{"v", each.value}}))
                found.append(row.text(each.column));
            QVERIFY2(found.join(u' ') == each.answer,
                     qPrintable(QString{each.text} + " gives " + found.join(u' ')));
        }
    }

    void writes_change_their_rows_alone_data() { engines_under_test(); }
    void writes_change_their_rows_alone()
    {
        FETCH_ENGINE(kind);
        const test_register its_register{kind};
        connection db = its_register.connect();
        fill(db);
        // "mem_dues--5000" would be a comment, and every row changed.
        QCOMPARE(db.write("update dues_h_tbl set yet_money=mem_dues-{sum} where val_year='{year}'",
                          {{"sum", -5000}, {"year", "2025"}}),
                 1);
        QCOMPARE(db.number("select sum(yet_money) as n from dues_h_tbl"), 55'000 + 50'000 + 50'000);
        QCOMPARE(db.write("update std_b_tbl set std_id='{v}',end_day='' where std_id='7'", {{"v", ""}}), 1);
        QCOMPARE(db.number("select count(*) as n from std_b_tbl where std_id=0"), 2);
        QCOMPARE(db.write("delete dues_h_tbl where val_year='1999'"), 0);
        QCOMPARE(db.write("delete dues_h_tbl where val_year<>'{v}'", {{"v", "2025"}}), 3);
        QCOMPARE(db.write("delete from dues_h_tbl"), 1);
    }

    void slots_refuse_what_is_no_number()
    {
        const char* bare = "update dues_h_tbl set yet_money=mem_dues-{v}";
        const char* quoted = "delete std_b_tbl where app_id='{v}'";
        const char* score = "update std_b_tbl set test_avg='{v}'";
        const std::pair<const char*, const char*> cases[] = {
            {bare, ""},       {bare, "mem_dues"},
            {bare, "5--"},    {bare, "1.5"},
            {bare, "1,000"},  {bare, "9223372036854775808"},
            {bare, "1 or 1"}, {"delete id_tbl where id={v}", "abc"},
            {quoted, "abc"},  {quoted, "1' or '1'='1"},
            {quoted, "1.5"},  {quoted, "12x"},
            {score, "87,5"},  {score, "8 7"},
        };
        for (const engine kind : {engine::embedded, engine::postgresql})
            for (const auto& [text, value] : cases)
                QCOMPARE(failure_of([&] {
                             made(text, kind).bind({{"v", value}});
                         }),
                         failure_kind::conversion);
        // SQL Server itself refuses what stands in quotes, and the quotes hold.
        for (const auto& [text, value] : cases)
            if (text == bare)
                QCOMPARE(failure_of([&] {
                             made(text, engine::sqlserver).bind({{"v", value}});
                         }),
                         failure_kind::conversion);
        QVERIFY_EXCEPTION_THROWN(made(quoted, engine::embedded).bind({{"w", "x"}}), std::logic_error);
        // A code out of a column of another type is the same code.
        for (const char* text : {bare, quoted})
            QVERIFY(made(text, engine::postgresql).bind({{"v", "10.00"}}).front() ==
                    bound_value{std::int64_t{10}});
    }

    void sql_server_gets_the_text_as_it_stands()
    {
        const std::tuple<const char*, const char*, const char*> cases[] = {
            {"delete person_m_tbl where pers_no='{v}'", "", "delete person_m_tbl where pers_no=''"},
            {"select  a from t where\n a.b =10and  c like'%{v}%'", "o'c{k}",
             "select  a from t where\n a.b =10and  c like'%o''c{k}%'"},
            {"update t set std_id='{v}',n='가''나' where lic_no={v}", " -007 ",
             "update t set std_id=' -007 ',n='가''나' where lic_no=(-007)"},
            {"select a from t where n={v}and lic_no={v}", "00123",
             "select a from t where n=123and lic_no=00123"},
            {"update t set n=m-{v},a='-{v}'", "-5", "update t set n=m-(-5),a='--5'"},
            {"select a from t where std_id in ('{v}','{v}한')", "",
             "select a from t where std_id in ('','한')"},
        };
        for (const auto& [text, value, sent] : cases) {
            const ready_statement ready = made(text, engine::sqlserver);
            QCOMPARE(ready.filled(ready.bind({{"v", value}})), std::string{sent});
        }
    }

    void only_some_writes_can_be_sent_twice()
    {
        const std::pair<const char*, bool> cases[] = {
            {"select * from id_tbl", true},
            {"delete id_tbl where id='{id}'", true},
            {"update id_tbl set id='{id}',passwd='a-b' where pers_no='{p}'", true},
            {"update dues_h_tbl set incom_flag='1' where mem_dues-yet_money>0", true},
            {"update dues_h_tbl set yet_money=yet_money-{amount} where pers_no='{p}'", false},
            {"update dues_h_tbl set yet_money=mem_dues-{sum} where pers_no='{p}'", true},
            {"update std_h_tbl set yet_avg=tot_avg-com_avg,com_avg='{n}' where std_id='{id}'", false},
            {"insert into id_tbl (pers_no) values ('{p}')", false},
        };
        for (const auto& [text, repeatable] : cases)
            QVERIFY2(statement_text{text}.can_be_repeated() == repeatable, text);
    }
};

QTEST_GUILESS_MAIN(statement_test)
#include "statement_test.moc"

#include "db/dialect.h"
#include "support/engines.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

namespace {

/// A statement as it is written, and in the two dialects.
struct sample {
    const char* name;
    std::string_view text;
    const char* sqlite;
    const char* postgresql = nullptr; // null: the same with the other sign for parameters
};

const std::vector<sample> samples{
    {"delete without from", "delete books_tbl where b_no='{b_no}'", "delete from books_tbl where b_no = ?1"},
    {"delete with from", "delete from dues_b_tbl where pers_no='{p}' and dues_id='{d}'",
     "delete from dues_b_tbl where pers_no = ?1 and dues_id = ?2"},
    {"number joined to a word",
     "select max(code_sect) as m_code from section_code where code_bran=10and code_big=20",
     "select max ( code_sect ) as m_code from section_code where code_bran = 10 and code_big = 20"},
    {"slot joined to a word",
     "select max(code_sect) as m_code from section_code where code_bran={code_bran}and code_big={code_big}",
     "select max ( code_sect ) as m_code from section_code where code_bran = ?1 and code_big = ?2"},
    {"literal joined to a word",
     "select b.center_money as center_money,count(a.code_member) as p_count from person_m_tbl a,money_member "
     "b "
     "where a.code_member=b.code_member and a.code_member<>'13'group by b.center_money",
     "select b.center_money as center_money , count ( a.code_member ) as p_count from person_m_tbl a , "
     "money_member b where a.code_member = b.code_member and a.code_member <> 13 group by b.center_money"},
    {"conditions behind both joins",
     "select distinct a.*,b.*,c.* from dues_h_tbl a inner join person_m_tbl b inner join money_member c "
     "on b.code_member = c.code_member on a.pers_no = b.pers_no where a.incom_flag='1' and "
     "a.val_year='{this_year}'and b.code_bran='{code_bran}' and a.code_member='{code_member}'",
     "select distinct a.* , b.* , c.* from dues_h_tbl a inner join person_m_tbl b inner join money_member c "
     "on ( b.code_member = c.code_member ) and ( a.pers_no = b.pers_no ) where a.incom_flag = '1' and "
     "a.val_year = ?1 and b.code_bran = ?2 and a.code_member = ?3 order by a.pers_no , a.val_year",
     "select distinct a.* , b.* , c.* from dues_h_tbl a inner join person_m_tbl b inner join money_member c "
     "on b.code_member = c.code_member on a.pers_no = b.pers_no where a.incom_flag = '1' and "
     "a.val_year = $1 and b.code_bran = $2 and a.code_member = $3 order by a.pers_no , a.val_year"},
    {"conditions behind their joins",
     "select a.*,b.branch_name as branch_name,c.*,c.code_post as com_post from supplement a inner JOIN "
     "branch_code b on a.code_bran=b.code_bran inner join company c on a.company_id=c.company_id where "
     "a.exe_year='{year}' and c.code_great='{great}' order by a.pers_name asc",
     "select a.* , b.branch_name as branch_name , c.* , c.code_post as com_post from supplement a inner JOIN "
     "branch_code b on a.code_bran = b.code_bran inner join company c on a.company_id = c.company_id where "
     "a.exe_year = ?1 and c.code_great = ?2 order by a.pers_name asc , a.sup_id"},
    {"a sum between quoted numbers",
     "select distinct count(a.pers_no) as TotalDiet from company a inner join person_m_tbl b on "
     "a.pers_no=b.pers_no where (a.company_morning+a.company_midday+a.company_evening+a.company_between "
     "between '1' and '{hi}') and a.primary_flag='1'",
     "select distinct count ( a.pers_no ) as TotalDiet from company a inner join person_m_tbl b on "
     "a.pers_no = b.pers_no where ( a.company_morning + a.company_midday + a.company_evening + "
     "a.company_between between 1 and ?1 ) and a.primary_flag = 1"},
    {"dates between quoted dates",
     "select a.* from person_m_tbl a,dues_h_tbl b where b.regi_date between '{f}' and '{t}'",
     "select a.* from person_m_tbl a , dues_h_tbl b where b.regi_date between ?1 and ?2 order by a.pers_no"},
    {"empty text against a number column",
     "select * from std_b_tbl where pers_no='{p}' and (std_id='' or std_id='0')",
     "select * from std_b_tbl where pers_no = ?1 and ( std_id = 0 or std_id = 0 ) order by std_b_tbl.app_id"},
    {"empty text against a text column",
     "select max(pers_mem_day) as max_day from dues_b_tbl where pers_mem_day<>''",
     "select max ( pers_mem_day ) as max_day from dues_b_tbl where pers_mem_day <> ''"},
    {"empty text into columns", "update supplement set degree='',company_id='' where sup_id='{sup_id}'",
     "update supplement set degree = '' , company_id = 0 where sup_id = ?1"},
    {"values of all kinds into columns",
     "insert into std_b_tbl(pers_no,std_id,end_day,att_count,code_private,csr_flag) values "
     "('{p}',{std_id},'',0,'','{csr}')",
     "insert into std_b_tbl ( pers_no , std_id , end_day , att_count , code_private , csr_flag ) values "
     "( ?1 , ?2 , '' , 0 , 0 , ?3 )"},
    {"numbers in a list", "select * from person_m_tbl where code_bran in ('{a}','')",
     "select * from person_m_tbl where code_bran in ( ?1 , 0 ) order by person_m_tbl.pers_no"},
    {"text cast to a number",
     "select std_id from std_h_tbl where (pers_no='{p}') AND (CAST(e_date As int) > {today})",
     "select std_id from std_h_tbl where ( pers_no = ?1 ) AND ( CAST ( e_date As int ) > ?2 ) "
     "order by std_h_tbl.std_id",
     "select std_id from std_h_tbl where ( pers_no = $1 ) AND ( CAST ( nullif( e_date , '' ) As int ) > $2 ) "
     "order by std_h_tbl.std_id"},
    {"text column against a bare number", "select * from id_tbl where id=00123 and passwd={code}",
     "select * from id_tbl where id = '00123' and passwd = ?1 order by id_tbl.pers_no"},
    {"text column like", "select * from branch_code where branch_name like '%{word}%'",
     "select * from branch_code where branch_name like ?1 order by branch_code.code_bran",
     "select * from branch_code where branch_name like $1 escape '' order by branch_code.code_bran"},
    {"number column like", "select * from have_lic_tbl a where a.iss_no like '%{word}%'",
     "select * from have_lic_tbl a where a.iss_no like ?1 order by a.lic_id",
     "select * from have_lic_tbl a where a.iss_no ::text like $1 escape '' order by a.lic_id"},
    {"doubles without an order of their own",
     "select distinct pers_no from dues_b_tbl where code_member='10' or pers_mem_day='{day}'",
     "select distinct pers_no from dues_b_tbl where code_member = 10 or pers_mem_day = ?1 order by 1"},
    {"one literal of several pieces",
     "insert into books_tbl(company_name,code_post,book_flag) values ('O''Neill','{p1}-{p2}','1')",
     "insert into books_tbl ( company_name , code_post , book_flag ) values ( 'O''Neill' , ?1 , '1' )"},
    {"arithmetic", "update dues_h_tbl set yet_money=mem_dues-{sum} where pers_no='{p}' and val_year='{y}'",
     "update dues_h_tbl set yet_money = mem_dues - ?1 where pers_no = ?2 and val_year = ?3"},
    {"names in capitals", "SELECT * FROM STD_H_TBL WHERE STD_ID='{id}'",
     "SELECT * FROM STD_H_TBL WHERE STD_ID = ?1 order by std_h_tbl.std_id"},
};

ready_statement made(std::string_view text, engine kind, bool letters = false)
{
    return translate(statement_text{text}, text, kind, database::server, letters);
}

/// Number 1 in each slot.
values ones(const ready_statement& statement)
{
    values all;
    for (const parameter& each : statement.parameters)
        for (const literal_piece& piece : each.pieces)
            if (piece.is_slot)
                all.add({piece.text, 1});
    return all;
}

} // namespace

class statement_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void statements_become_the_engines_own_data();
    void statements_become_the_engines_own();
    void every_engine_takes_the_statements_data();
    void every_engine_takes_the_statements();
    void letters_with_case_are_found_by_ilike();
    void rows_of_the_copy_stay_in_the_order_of_writing();
    void slots_take_what_they_must_data();
    void slots_take_what_they_must();
    void slots_refuse_what_is_no_number_data();
    void slots_refuse_what_is_no_number();
    void a_slot_without_a_value_is_the_callers_mistake();
    void a_text_that_does_not_end_is_the_callers_mistake_data();
    void a_text_that_does_not_end_is_the_callers_mistake();
    void only_some_writes_can_be_sent_twice_data();
    void only_some_writes_can_be_sent_twice();
};

void statement_test::statements_become_the_engines_own_data()
{
    QTest::addColumn<std::size_t>("index");
    for (std::size_t i = 0; i < samples.size(); ++i)
        QTest::newRow(samples[i].name) << i;
}

void statement_test::statements_become_the_engines_own()
{
    QFETCH(std::size_t, index);
    const sample& one = samples[index];
    QByteArray postgresql{one.postgresql};
    if (postgresql.isNull())
        postgresql = QByteArray{one.sqlite}.replace('?', '$');
    QCOMPARE(QByteArray::fromStdString(made(one.text, engine::embedded).sql), one.sqlite);
    QCOMPARE(QByteArray::fromStdString(made(one.text, engine::postgresql).sql), postgresql);
}

void statement_test::every_engine_takes_the_statements_data()
{
    engines_under_test();
}

void statement_test::every_engine_takes_the_statements()
{
    FETCH_ENGINE(kind);
    const test_register empty{kind};
    connection db = empty.connect();
    for (const sample& one : samples) {
        try {
            const ready_statement statement = made(one.text, kind);
            if (statement.what == verb::select)
                db.read(one.text, ones(statement));
            else
                db.write(one.text, ones(statement));
        } catch (const db_failure& failure) {
            QFAIL(qPrintable(QLatin1String{one.name} + QStringLiteral(": ") + failure.text()));
        }
    }
}

void statement_test::letters_with_case_are_found_by_ilike()
{
    constexpr std::string_view text = "select * from branch_code where branch_name like '%{word}%'";
    const statement_text statement{text};
    QVERIFY(has_letter_variant(statement, engine::postgresql));
    QVERIFY(!has_letter_variant(statement, engine::embedded));
    QVERIFY(!has_letter_variant(statement_text{"delete from person_m_tbl"}, engine::postgresql));
    QVERIFY(made(text, engine::postgresql, true).sql.find("branch_name ilike $1 escape ''") !=
            std::string::npos);
    QVERIFY(has_cased_letter("김 a"));
    QVERIFY(!has_cased_letter("김 1-2 ㅎ中"));
}

void statement_test::rows_of_the_copy_stay_in_the_order_of_writing()
{
    constexpr std::string_view text = "select pers_no,pers_name from person_m_tbl";
    const ready_statement local =
        translate(statement_text{text}, text, engine::embedded, database::local, false);
    QCOMPARE(local.sql,
             std::string{"select pers_no , pers_name from person_m_tbl order by person_m_tbl.rowid"});
}

void statement_test::slots_take_what_they_must_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("bound"); // of numbers with a sign of kind in front
    QTest::newRow("text") << QByteArray{"update id_tbl set passwd='{v}'"} << "it's"
                          << "text it's";
    QTest::newRow("text keeps its blanks") << QByteArray{"update id_tbl set passwd='{v}'"} << " 12 "
                                           << "text  12 ";
    QTest::newRow("text in a longer literal")
        << QByteArray{"select * from id_tbl where id like '%{v}%'"} << "a%"
        << "text %a%%";
    QTest::newRow("quoted number") << QByteArray{"delete std_b_tbl where app_id='{v}'"} << "12"
                                   << "number 12";
    QTest::newRow("quoted number with blanks and zeros")
        << QByteArray{"delete std_b_tbl where app_id='{v}'"} << " 012 "
        << "number 12";
    QTest::newRow("quoted nothing is zero") << QByteArray{"delete std_b_tbl where app_id='{v}'"} << ""
                                            << "number 0";
    QTest::newRow("bare number") << QByteArray{"delete std_b_tbl where app_id={v}"} << "-5"
                                 << "number -5";
    QTest::newRow("bare number against a text column keeps its zeros")
        << QByteArray{"delete id_tbl where id={v}"} << "00123"
        << "text 00123";
    QTest::newRow("64 bits") << QByteArray{"update dues_b_tbl set pres_money={v}"} << "9223372036854775807"
                             << "number 9223372036854775807";
}

void statement_test::slots_take_what_they_must()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, given);
    QFETCH(QString, bound);
    for (const engine kind : engines) {
        const std::vector<bound_value> all = made(text.toStdString(), kind).bind({{"v", given}});
        QCOMPARE(all.size(), std::size_t{1});
        const auto* number = std::get_if<std::int64_t>(&all.front());
        QCOMPARE(number
                     ? QStringLiteral("number %1").arg(*number)
                     : QStringLiteral("text ") + QString::fromStdString(std::get<std::string>(all.front())),
                 bound);
    }
}

void statement_test::slots_refuse_what_is_no_number_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("given");
    const QByteArray bare = "update dues_h_tbl set yet_money=mem_dues-{v}";
    const QByteArray bare_text = "delete id_tbl where id={v}";
    const QByteArray quoted = "delete std_b_tbl where app_id='{v}'";
    QTest::newRow("nothing in a bare slot") << bare << "";
    QTest::newRow("a word") << bare << "mem_dues";
    QTest::newRow("a comment") << bare << "5--";
    QTest::newRow("a fraction") << bare << "1.5";
    QTest::newRow("separators") << bare << "1,000";
    QTest::newRow("beyond 64 bits") << bare << "9223372036854775808";
    QTest::newRow("an expression") << bare << "1 or 1=1";
    QTest::newRow("a word against a text column") << bare_text << "abc";
    QTest::newRow("a word in quotes against a number column") << quoted << "abc";
    QTest::newRow("a tail in quotes against a number column") << quoted << "1' or '1'='1";
}

void statement_test::slots_refuse_what_is_no_number()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, given);
    for (const engine kind : engines) {
        try {
            made(text.toStdString(), kind).bind({{"v", given}});
            QFAIL("the value was taken");
        } catch (const db_failure& failure) {
            QCOMPARE(failure.kind(), failure_kind::conversion);
            QCOMPARE(failure.statement(), QString::fromUtf8(text));
        }
    }
}

void statement_test::a_slot_without_a_value_is_the_callers_mistake()
{
    const ready_statement statement = made("delete id_tbl where id='{id}'", engine::embedded);
    QVERIFY_EXCEPTION_THROWN(statement.bind({{"passwd", "x"}}), std::logic_error);
}

void statement_test::a_text_that_does_not_end_is_the_callers_mistake_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("literal") << QByteArray{"select * from id_tbl where id='x"};
    QTest::newRow("slot") << QByteArray{"select * from id_tbl where id={x"};
    QTest::newRow("slot in a literal") << QByteArray{"select * from id_tbl where id='{x'"};
    QTest::newRow("literal behind a doubled quote") << QByteArray{"select * from id_tbl where id='x''"};
}

void statement_test::a_text_that_does_not_end_is_the_callers_mistake()
{
    QFETCH(QByteArray, text);
    QVERIFY_EXCEPTION_THROWN(statement_text{text.toStdString()}, std::logic_error);
}

void statement_test::only_some_writes_can_be_sent_twice_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("repeatable");
    QTest::newRow("read") << QByteArray{"select * from id_tbl"} << true;
    QTest::newRow("delete") << QByteArray{"delete id_tbl where id='{id}'"} << true;
    QTest::newRow("assignment") << QByteArray{"update id_tbl set id='{id}',passwd='a-b' where pers_no='{p}'"}
                                << true;
    QTest::newRow("assignment with arithmetic in its condition")
        << QByteArray{"update dues_h_tbl set incom_flag='1' where mem_dues-yet_money>0"} << true;
    QTest::newRow("reckoned from the old value")
        << QByteArray{"update dues_h_tbl set yet_money=yet_money-{amount} where pers_no='{p}'"} << false;
    QTest::newRow("reckoned from the old value, no condition")
        << QByteArray{"update dues_h_tbl set yet_money=yet_money+1"} << false;
    QTest::newRow("insert") << QByteArray{"insert into id_tbl (pers_no) values ('{p}')"} << false;
}

void statement_test::only_some_writes_can_be_sent_twice()
{
    QFETCH(QByteArray, text);
    QTEST(statement_text{text.toStdString()}.can_be_repeated(), "repeatable");
}

QTEST_GUILESS_MAIN(statement_test)
#include "statement_test.moc"

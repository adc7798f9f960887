#include "support/builders.h"
#include "support/engines.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

namespace {

const QString one_member = QStringLiteral("9001011234568");
const QString other_member = QStringLiteral("9002022234567");

/// Texts of one column, joined by blanks.
QString joined(const rows& found, std::string_view column)
{
    QStringList all;
    for (const auto row : found)
        all.append(row.text(column));
    return all.join(u' ');
}

} // namespace

class fields_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void texts_come_back_as_they_were_given_data();
    void texts_come_back_as_they_were_given();
    void a_nul_does_not_cut_a_text_short_data() { engines_under_test(); }
    void a_nul_does_not_cut_a_text_short();
    void a_negative_amount_changes_no_other_row_data() { engines_under_test(); }
    void a_negative_amount_changes_no_other_row();
    void an_empty_number_is_zero_and_found_data() { engines_under_test(); }
    void an_empty_number_is_zero_and_found();
    void numbers_are_found_in_every_form_data();
    void numbers_are_found_in_every_form();
    void rows_come_in_key_order_data() { engines_under_test(); }
    void rows_come_in_key_order();
    void a_null_is_told_from_an_empty_text_data() { engines_under_test(); }
    void a_null_is_told_from_an_empty_text();
    void columns_are_found_without_case_and_the_first_of_doubles_data() { engines_under_test(); }
    void columns_are_found_without_case_and_the_first_of_doubles();
    void like_finds_data();
    void like_finds();
    void quoted_bounds_hold_numbers_data() { engines_under_test(); }
    void quoted_bounds_hold_numbers();
    void an_empty_date_casts_to_zero_data() { engines_under_test(); }
    void an_empty_date_casts_to_zero();
    void sums_and_counts_are_numbers_data() { engines_under_test(); }
    void sums_and_counts_are_numbers();
};

void fields_test::texts_come_back_as_they_were_given_data()
{
    QTest::addColumn<engine>("kind");
    QTest::addColumn<QString>("text");
    const std::pair<const char*, QString> texts[] = {
        {"apostrophe", QStringLiteral("O'Neill's")},
        {"apostrophes alone", QStringLiteral("''")},
        {"backslash", QStringLiteral("C:\\new\\table\\")},
        {"emoji", QStringLiteral("영양 🍚 관리")},
        {"percent alone", QStringLiteral("%")},
        {"question mark and dollar", QStringLiteral("? ?1 $1 :a @b")},
        {"braces", QStringLiteral("{pers_no}")},
        {"lines and tabs", QStringLiteral("첫째\n둘째\r\n\t셋째")},
        {"end of a statement", QStringLiteral("'); drop table person_m_tbl; --")},
        {"blanks at both ends", QStringLiteral("  가  ")},
        {"long", QString{10'000, QChar{u'한'}}},
    };
    for (const engine kind : engines)
        for (const auto& [name, text] : texts)
            QTest::addRow("%s: %s", name_of(kind), name) << kind << text;
}

void fields_test::texts_come_back_as_they_were_given()
{
    FETCH_ENGINE(kind);
    QFETCH(QString, text);
    const test_register empty{kind};
    connection mail = empty.connect(database::mail);
    mail.write("insert into tbl_tempmail (mailto,message) values ('a@b','{text}')", {{"text", text}});
    mail.write("insert into tbl_tempmail (mailto,message) values ('c@d','other')");
    QCOMPARE(mail.read("select message from tbl_tempmail where mailto='a@b'").front().text("message"), text);
    QCOMPARE(mail.read("select mailto from tbl_tempmail where message='{text}'", {{"text", text}}).size(),
             std::size_t{1});
}

void fields_test::a_nul_does_not_cut_a_text_short()
{
    FETCH_ENGINE(kind);
    const test_register empty{kind};
    connection db = empty.connect();
    const QString text = QStringLiteral("가") + QChar{u'\0'} + QStringLiteral("나");
    db.write("insert into branch_code (code_bran,branch_name) values (10,'{text}')", {{"text", text}});
    QCOMPARE(db.read("select branch_name from branch_code").front().text("branch_name"),
             QStringLiteral("가나"));
}

void fields_test::a_negative_amount_changes_no_other_row()
{
    FETCH_ENGINE(kind);
    const test_register empty{kind};
    connection db = empty.connect();
    for (const char* year : {"2024", "2025", "2026"})
        a_dues_year{one_member, year, 30'000}.store_in(db);
    const qint64 written = db.write(
        "update dues_h_tbl set yet_money=mem_dues-{sum} where pers_no='{pers_no}' and val_year='{year}'",
        {{"sum", -5000}, {"pers_no", one_member}, {"year", "2025"}});
    QCOMPARE(written, 1);
    QCOMPARE(joined(db.read("select * from dues_h_tbl"), "yet_money"), QStringLiteral("30000 35000 30000"));
}

void fields_test::an_empty_number_is_zero_and_found()
{
    FETCH_ENGINE(kind);
    const test_register empty{kind};
    connection db = empty.connect();
    db.write("insert into std_b_tbl(pers_no,std_id,edu_id,code_private) values ('{p}','{none}',0,'')",
             {{"p", one_member}, {"none", ""}});
    db.write("insert into std_b_tbl(pers_no,std_id) values ('{p}','7')", {{"p", one_member}});
    const values given{{"p", one_member}, {"none", ""}};
    const rows found =
        db.read("select * from std_b_tbl where pers_no='{p}' and (std_id='' or std_id='0')", given);
    QCOMPARE(joined(found, "std_id"), QStringLiteral("0"));
    QCOMPARE(joined(found, "code_private"), QStringLiteral("0"));
    QCOMPARE(db.read("select * from std_b_tbl where std_id='{none}'", given).size(), std::size_t{1});
    QCOMPARE(db.write("update std_b_tbl set std_id='{none}' where std_id='7'", given), 1);
    QCOMPARE(joined(db.read("select std_id from std_b_tbl"), "std_id"), QStringLiteral("0 0"));
}

void fields_test::numbers_are_found_in_every_form_data()
{
    QTest::addColumn<engine>("kind");
    QTest::addColumn<QByteArray>("condition");
    for (const engine kind : engines)
        for (const char* condition :
             {"code_bran='{code}'", "code_bran={code}", "code_bran='10'", "code_bran=10",
              "code_bran in ('9','{code}')", "code_bran<>'11'", "code_bran between '2' and '{code}'",
              "lic_no='00123'", "lic_no=00123", "pers_no='{p}'", "pers_no={p}"})
            QTest::addRow("%s: %s", name_of(kind), condition) << kind << QByteArray{condition};
}

void fields_test::numbers_are_found_in_every_form()
{
    FETCH_ENGINE(kind);
    QFETCH(QByteArray, condition);
    const test_register empty{kind};
    connection db = empty.connect();
    a_member{one_member}.of_branch(10).licensed("00123").store_in(db);
    a_member{other_member}.of_branch(11).licensed("123").store_in(db);
    const std::string text = "select * from person_m_tbl where " + condition.toStdString();
    QCOMPARE(joined(db.read(text, {{"code", "10"}, {"p", one_member}}), "pers_no"), one_member);
}

void fields_test::rows_come_in_key_order()
{
    FETCH_ENGINE(kind);
    const test_register empty{kind};
    connection db = empty.connect();
    for (const char* year : {"2025", "2023", "2026", "2024"})
        a_dues_year{one_member, year}.store_in(db);
    const QString by_key = QStringLiteral("2023 2024 2025 2026");
    QCOMPARE(joined(db.read("select * from dues_h_tbl where pers_no='{p}'", {{"p", one_member}}), "val_year"),
             by_key);
    db.write("update dues_h_tbl set yet_money=0,incom_flag='1' where val_year='2023'");
    QCOMPARE(joined(db.read("select * from dues_h_tbl where pers_no='{p}'", {{"p", one_member}}), "val_year"),
             by_key);
    // Those that are alike in the order of the statement keep the key's.
    QCOMPARE(joined(db.read("select * from dues_h_tbl order by incom_flag desc"), "val_year"), by_key);
}

void fields_test::a_null_is_told_from_an_empty_text()
{
    FETCH_ENGINE(kind);
    const test_register empty{kind};
    connection db = empty.connect();
    const rows none = db.read("select max(code_bran) as m_code from branch_code");
    QCOMPARE(none.size(), std::size_t{1});
    QVERIFY(none.front().is_null("m_code"));
    QCOMPARE(none.front().text("m_code"), QString{});
    QCOMPARE(db.number("select max(code_bran) as m_code from branch_code"), 0);
    a_member{one_member}.licensed("").store_in(db);
    const rows found = db.read("select max(lic_no) as newest from person_m_tbl");
    QVERIFY(!found.front().is_null("newest"));
    QCOMPARE(found.front().text("newest"), QString{});
    QVERIFY_EXCEPTION_THROWN(found.front().text("no_such_column"), std::logic_error);
}

void fields_test::columns_are_found_without_case_and_the_first_of_doubles()
{
    FETCH_ENGINE(kind);
    const test_register empty{kind};
    connection db = empty.connect();
    a_member{one_member}.of_kind(20).store_in(db);
    a_dues_year{one_member, "2026"}.of_kind(30).store_in(db);
    const rows found =
        db.read("select distinct a.*,b.*,a.code_member as OldKind from dues_h_tbl a inner join "
                "person_m_tbl b on a.pers_no=b.pers_no");
    QCOMPARE(found.size(), std::size_t{1});
    QCOMPARE(found.front().number("code_member"), 30);
    QCOMPARE(found.front().number("CODE_MEMBER"), 30);
    QCOMPARE(found.front().number("oldkind"), 30);
    QCOMPARE(found.front().text("PERS_NO"), one_member);
}

void fields_test::like_finds_data()
{
    QTest::addColumn<engine>("kind");
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("codes");
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"lower for upper", "kbs", "1 2"},
        {"upper for lower", "KBS", "1 2"},
        {"Hangul", "서울", "3"},
        {"Hangul with letters", "서울 a", "3"},
        {"an operator's percent", "서%A", "3"},
        {"an operator's underscore", "k_s", "1 2"},
        {"backslash is a letter", "\\", "4"},
        {"backslash shields nothing", "\\%", "4"},
        {"apostrophe", "'", "5"},
        {"nothing finds all", "", "1 2 3 4 5"},
    };
    for (const engine kind : engines)
        for (const auto& [name, word, codes] : cases)
            QTest::addRow("%s: %s", name_of(kind), name) << kind << QString::fromUtf8(word) << codes;
}

void fields_test::like_finds()
{
    FETCH_ENGINE(kind);
    QFETCH(QString, word);
    const test_register empty{kind};
    connection db = empty.connect();
    int code = 0;
    for (const char* name : {"KBS 본관", "kbs별관", "서울 A동", "C:\\동", "o'clock"})
        a_row{"branch_code"}
            .with("code_bran", ++code)
            .with("branch_name", QString::fromUtf8(name))
            .store_in(db);
    const rows found =
        db.read("select * from branch_code where branch_name like '%{word}%'", {{"word", word}});
    QTEST(joined(found, "code_bran"), "codes");
}

void fields_test::quoted_bounds_hold_numbers()
{
    FETCH_ENGINE(kind);
    const test_register empty{kind};
    connection db = empty.connect();
    a_member{one_member}.store_in(db);
    for (const int meals : {0, 1, 150, 200, 201, 1000})
        a_workplace{one_member}.with("company_morning", meals).with("company_midday", 0).store_in(db);
    const auto between = [&](const char* low, const char* high) {
        return db.number(
            "select distinct count(a.pers_no) as TotalDiet from company a inner join person_m_tbl b on "
            "a.pers_no=b.pers_no where (a.company_morning+a.company_midday+a.company_evening+"
            "a.company_between between '{lo}' and '{hi}') and b.code_bran='10'",
            {{"lo", low}, {"hi", high}});
    };
    QCOMPARE(between("1", "200"), 3);
    QCOMPARE(between("201", "400"), 1);
    QCOMPARE(between("801", "1000"), 1);
}

void fields_test::an_empty_date_casts_to_zero()
{
    FETCH_ENGINE(kind);
    const test_register empty{kind};
    connection db = empty.connect();
    for (const char* end : {"", "20261121", "20271231"})
        a_row{"std_h_tbl"}.with("pers_no", one_member).with("e_date", end).store_in(db);
    const rows found =
        db.read("select e_date from std_h_tbl where (pers_no='{p}') AND (CAST(e_date As int) > {today})",
                {{"p", one_member}, {"today", 20261122}});
    QCOMPARE(joined(found, "e_date"), QStringLiteral("20271231"));
}

void fields_test::sums_and_counts_are_numbers()
{
    FETCH_ENGINE(kind);
    const test_register empty{kind};
    connection db = empty.connect();
    const qint64 large = 3'000'000'000;
    for (const char* year : {"2025", "2026"})
        a_payment{one_member, year, large}.store_in(db);
    const rows found =
        db.read("select sum(pres_money) as total,count(*) as lines from dues_b_tbl where pers_no='{p}'",
                {{"p", one_member}});
    QCOMPARE(found.front().text("total"), QStringLiteral("6000000000"));
    QCOMPARE(found.front().number("lines"), 2);
    QCOMPARE(db.number("select sum(pres_money) as total from dues_b_tbl"), 2 * large);
}

QTEST_GUILESS_MAIN(fields_test)
#include "fields_test.moc"

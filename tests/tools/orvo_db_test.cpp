#include "base/resident_number.h"
#include "db/schema/schema.h"
#include "demo/demo.h"
#include "setup/missing_tables.h"
#include "support/engines.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <map>

using namespace orvo;

namespace {

struct outcome {
    int code = -1;
    QByteArray output;
    QByteArray errors;
};

outcome run_tool(const QString& home, const QStringList& arguments, const QByteArray& input = {})
{
    QProcess tool;
    tool.start(QStringLiteral(ORVO_DB_PROGRAM), QStringList{QStringLiteral("--home"), home} + arguments);
    tool.write(input);
    tool.closeWriteChannel();
    if (!tool.waitForFinished(60000) || tool.exitStatus() != QProcess::NormalExit)
        return {};
    return {tool.exitCode(), tool.readAllStandardOutput(), tool.readAllStandardError()};
}

QStringList words(const char* text)
{
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

/// A dump's lines by table, "server.company".
std::map<QByteArray, QList<QByteArray>> tables_in(const QByteArray& dump)
{
    std::map<QByteArray, QList<QByteArray>> all;
    QList<QByteArray>* rows = nullptr;
    for (const QByteArray& line : dump.split('\n')) {
        if (line.startsWith('['))
            rows = &all[line.mid(1, line.indexOf(']') - 1)];
        else if (rows && !line.isEmpty())
            rows->push_back(line);
    }
    return all;
}

} // namespace

class orvo_db_test : public QObject {
    Q_OBJECT

private:
    QTemporaryDir folder_;
    QString filled_; ///< a program folder whose register holds the smallest demo with all its shapes
    QString many_;   ///< one with a large demo

    QString new_home(const QString& name);
    connection open(const QString& home, database which = database::server);

private Q_SLOTS:
    void initTestCase();
    void the_same_plan_makes_the_same_register();
    void both_engines_hold_the_same();
    void rare_shapes_are_there_data();
    void rare_shapes_are_there();
    void nothing_hangs_in_the_air_data();
    void nothing_hangs_in_the_air();
    void resident_numbers_pass_the_check();
    void balances_follow_from_payments();
    void pledges_follow_from_instalments();
    void the_members_kind_is_that_of_the_newest_year();
    void demo_operators_can_log_in();
    void a_filling_that_breaks_off_leaves_nothing();
    void a_register_in_use_is_left_alone();
    void init_makes_what_is_missing_and_no_more();
    void codes_are_mirrored();
    void a_failed_mirroring_leaves_the_old_codes();
    void operators_come_and_go();
    void misuse_is_refused_data();
    void misuse_is_refused();
    void a_dump_keeps_one_row_in_one_line();
};

QString orvo_db_test::new_home(const QString& name)
{
    const QString home = folder_.filePath(name);
    QDir{}.mkpath(home);
    return home;
}

connection orvo_db_test::open(const QString& home, database which)
{
    server_address server;
    server.folder = home;
    connection on = make_connection(server, which);
    on.open();
    return on;
}

void orvo_db_test::initTestCase()
{
    filled_ = new_home(QStringLiteral("filled"));
    const outcome made = run_tool(filled_, words("demo --members 50 --seed 7 --today 20240615"));
    QVERIFY2(made.code == 0, made.errors);
    many_ = new_home(QStringLiteral("many"));
    const outcome more = run_tool(many_, words("demo --members 30000 --seed 3 --today 20240615"));
    QVERIFY2(more.code == 0, more.errors);
}

void orvo_db_test::the_same_plan_makes_the_same_register()
{
    const QString again = new_home(QStringLiteral("again"));
    const QString other = new_home(QStringLiteral("other"));
    QCOMPARE(run_tool(again, words("demo --members 50 --seed 7 --today 20240615")).code, 0);
    QCOMPARE(run_tool(other, words("demo --members 50 --seed 8 --today 20240615")).code, 0);
    const QByteArray first = run_tool(filled_, words("dump --local")).output;
    QVERIFY(first.count('\n') > 600);
    QVERIFY(run_tool(again, words("dump --local")).output == first);

    const auto one = tables_in(first);
    const auto two = tables_in(run_tool(other, words("dump --local")).output);
    QCOMPARE(two.at("server.person_m_tbl").size(), 50);
    QVERIFY(one.at("server.person_m_tbl").first() != two.at("server.person_m_tbl").first());
    QVERIFY(one.at("server.company") != two.at("server.company"));
    QVERIFY(one.at("server.branch_code") == two.at("server.branch_code"));
}

void orvo_db_test::both_engines_hold_the_same()
{
    std::optional<server_address> server = postgresql_server();
    if (!server)
        QSKIP("ORVO_TEST_POSTGRESQL names no server; scripts/with_postgresql.sh starts one");
    const QString name = QStringLiteral("orvo_db_test_%1").arg(QCoreApplication::applicationPid());
    const QString home = new_home(QStringLiteral("postgresql"));
    QVERIFY(QDir{home}.mkdir(QStringLiteral("conf")));
    QFile configuration{home + QStringLiteral("/conf/connection.ini")};
    QVERIFY(configuration.open(QIODevice::WriteOnly));
    configuration.write(QStringLiteral("[SERVER]\nengine=postgresql\nhost=%1\nport=%2\nuser=%3\n"
                                       "database=%4\nmail_database=%4_mail\n")
                            .arg(server->host, QString::number(server->port), server->user, name)
                            .toUtf8());
    configuration.close();

    QCOMPARE(run_tool(home, words("init")).code, 1); // the databases are not there
    const outcome made = run_tool(home, words("init --create-databases"));
    QVERIFY2(made.code == 0, made.errors);
    const outcome filled = run_tool(home, words("demo --members 50 --seed 7 --today 20240615"));
    QVERIFY2(filled.code == 0, filled.errors);
    const QByteArray dump = run_tool(home, words("dump --local")).output;
    server->name = QStringLiteral("postgres");
    connection maintenance = make_connection(*server, database::server);
    maintenance.open();
    for (const char* each : {"", "_mail"})
        maintenance.direct("drop database " + name.toStdString() + each);
    QVERIFY(dump == run_tool(filled_, words("dump --local")).output);
}

void orvo_db_test::rare_shapes_are_there_data()
{
    QTest::addColumn<QString>("from_where");
    QTest::addColumn<int>("at_least");
    const auto row = [](const char* what, const QString& from_where, int at_least = 1) {
        QTest::newRow(what) << from_where << at_least;
    };
    const auto member = [&](const char* what, const char* where, int at_least = 1) {
        row(what, QStringLiteral("person_m_tbl where ") + QString::fromUtf8(where), at_least);
    };
    member("an apostrophe in a name", "pers_name like '%''%'");
    member("a surname of two syllables", "pers_name like '남궁%'");
    member("a syllable outside of the old code page", "pers_name like '%뷁%'");
    member("mail is stopped", "get_mail_place='발송중지'");
    member("a number that begins with 00", "pers_no like '00%'");
    member("no mail address", "email=''");
    member("of the head office", "code_bran=0");
    for (const int length : {0, 7, 8, 9, 10, 11, 12})
        row(qPrintable(QStringLiteral("a telephone number of %1 digits").arg(length)),
            QStringLiteral("person_m_tbl where length(pers_tel)=%1").arg(length));
    for (const int length : {7, 8, 9, 10, 11})
        row(qPrintable(QStringLiteral("a number of Seoul of %1 digits").arg(length)),
            QStringLiteral("person_m_tbl where pers_tel like '02%' and length(pers_tel)=%1").arg(length));
    member("a mobile of ten digits", "length(pers_hp)=10");
    row("no workplace", QStringLiteral("person_m_tbl where pers_no not in (select pers_no from company)"), 2);
    row("mail goes to a workplace that is not there",
        QStringLiteral(
            "person_m_tbl where get_mail_place='직장' and pers_no not in (select pers_no from company)"));
    row("workplaces with like names on one member",
        QStringLiteral("company a inner join company b on a.pers_no=b.pers_no and a.company_id<b.company_id "
                       "where substr(b.company_name,1,length(a.company_name))=a.company_name and "
                       "b.company_name<>a.company_name"));
    row("a comma and a percent sign in a workplace's name",
        QStringLiteral("company where company_name like '%,%' and instr(company_name,'%')>0"));
    row("a workplace that was left", QStringLiteral("company where pers_out_date<>'' and primary_flag=0"));
    row("paid for life", QStringLiteral("dues_b_tbl where val_year='평생회원'"));
    row("paid at the head office", QStringLiteral("dues_b_tbl where pers_mem_day<>'' and pers_mem_b_day=''"));
    row("paid at a branch", QStringLiteral("dues_b_tbl where pers_mem_day='' and pers_mem_b_day<>''"));
    row("not opened in the console yet",
        QStringLiteral("person_m_tbl where pers_no not in (select pers_no from id_tbl)"));
}

void orvo_db_test::rare_shapes_are_there()
{
    QFETCH(QString, from_where);
    QFETCH(int, at_least);
    connection server = open(filled_);
    const qint64 found = server.number(("select count(*) as cnt from " + from_where).toStdString());
    QVERIFY2(found >= at_least, qPrintable(QString::number(found)));
}

void orvo_db_test::nothing_hangs_in_the_air_data()
{
    QTest::addColumn<QString>("strays");
    const auto row = [](const char* what, const char* strays) {
        QTest::newRow(what) << QString::fromUtf8(strays);
    };
    row("branch", "person_m_tbl where code_bran not in (select code_bran from branch_code)");
    row("division", "person_m_tbl where code_big not in (select code_big from big_division)");
    row("sub-branch",
        "person_m_tbl a left join section_code b on a.code_bran=b.code_bran and a.code_big=b.code_big "
        "and a.code_sect=b.code_sect where b.code_sect is null and a.code_sect<>0");
    row("member kind", "person_m_tbl where code_member not in (select code_member from money_member)");
    row("school", "person_m_tbl where code_school not in (select code_school from school)");
    row("degree", "person_m_tbl where code_univer not in (select code_univer from univer_degree)");
    row("education", "person_m_tbl where code_scholar not in (select code_scholar from scholarship)");
    row("religion", "person_m_tbl where code_religion not in (select code_religion from religion)");
    row("contractor",
        "person_m_tbl where code_deposit<>0 and code_deposit not in (select code_deposit from deposit)");
    row("body", "person_m_tbl where sub_code<>0 and sub_code not in (select sub_code from sub_element)");
    row("workplace class",
        "company a left join small_division b on a.code_part=b.code_part and "
        "a.code_great=b.code_great and a.code_small=b.code_small where b.code_small is null");
    row("major class", "small_division a left join great_division b on a.code_part=b.code_part and "
                       "a.code_great=b.code_great where b.code_great is null");
    row("job line", "company where job_line_code not in (select job_line_code from job_line)");
    row("job level", "company where job_level_code not in (select job_level_code from job_level)");
    row("form", "company where code_use not in (select code_use from make_use_of)");
    row("place of payment", "dues_b_tbl where code_receipt not in (select code_receipt from receipt_place)");
    row("workplace of nobody", "company where pers_no not in (select pers_no from person_m_tbl)");
    row("dues of nobody", "dues_h_tbl where pers_no not in (select pers_no from person_m_tbl)");
    row("fee that does not add up", "money_member where mem_dues<>center_money+bran_money");
    row("two primary workplaces, or none",
        "(select pers_no from company group by pers_no having sum(primary_flag)<>1)");
    row("head office's place with a branch's day only",
        "dues_b_tbl where code_receipt=1 and pers_mem_day=''");
    row("a day after today", "dues_b_tbl where pers_mem_day>'20240615' or pers_mem_b_day>'20240615'");
    row("an entry before the payment", "dues_b_tbl where pres_let_day<max(pers_mem_day,pers_mem_b_day)");
    row("a workplace left before it was joined",
        "company where pers_out_date<>'' and pers_out_date<pers_in_date");
    row("a login twice", "(select id from id_tbl where id<>'' group by id having count(*)>1)");
}

void orvo_db_test::nothing_hangs_in_the_air()
{
    QFETCH(QString, strays);
    connection server = open(many_);
    QCOMPARE(server.number(("select count(*) as cnt from " + strays).toStdString()), 0);
}

void orvo_db_test::resident_numbers_pass_the_check()
{
    connection server = open(many_);
    for (const auto& each : server.read("select pers_no,pers_sex from person_m_tbl")) {
        const std::string number = each.text("pers_no").toStdString();
        QCOMPARE(number.size(), std::size_t{13});
        QCOMPARE(number.back(), resident_check_digit(std::string_view{number}.substr(0, 12)));
        const int year = (number[6] < '3' ? 1900 : 2000) + std::stoi(number.substr(0, 2));
        QVERIFY2(QDate::isValid(year, std::stoi(number.substr(2, 2)), std::stoi(number.substr(4, 2))),
                 number.c_str());
        QCOMPARE(each.text("pers_sex"),
                 (number[6] - '0') % 2 == 1 ? QStringLiteral("1") : QStringLiteral("0"));
    }
}

void orvo_db_test::balances_follow_from_payments()
{
    connection server = open(many_);
    std::map<std::pair<QString, QString>, qint64> paid;
    for (const auto& each : server.read("select pers_no,code_member,val_year,pres_money from dues_b_tbl"))
        paid[{each.text("pers_no"), each.text("val_year")}] += each.number("pres_money");
    std::array<int, 4> seen{}; // too much, in full, in part, nothing
    for (const auto& each : server.read("select * from dues_h_tbl")) {
        const qint64 kind = each.number("code_member");
        const QString year = kind >= 10 && kind <= 13 ? QStringLiteral("평생회원") : each.text("val_year");
        const qint64 sum = paid[{each.text("pers_no"), year}];
        QCOMPARE(each.number("yet_money"), each.number("mem_dues") - sum);
        QCOMPARE(each.text("incom_flag"),
                 each.number("yet_money") <= 0 ? QStringLiteral("1") : QStringLiteral("0"));
        const qint64 yet = each.number("yet_money");
        ++seen[yet < 0 ? 0 : yet == 0 ? 1 : sum > 0 ? 2 : 3];
        paid.erase({each.text("pers_no"), year});
    }
    QVERIFY(paid.empty()); // no line without its year
    for (const int count : seen)
        QVERIFY(count > 100);
}

void orvo_db_test::pledges_follow_from_instalments()
{
    connection server = open(many_);
    // The console holds the number of an instalment in 16 bits.
    QVERIFY(server.number("select max(con_id) as most from contract_list") <= 9000);
    QVERIFY(server.number("select count(*) as cnt from contract_list") > 500);
    QCOMPARE(server.number(
                 "select count(*) as cnt from contract a where con_money<>(select coalesce(sum(con_money),0) "
                 "from contract_list b where a.pers_no=b.pers_no and a.con_day=b.con_day)"),
             0);
    QCOMPARE(
        server.number("select count(*) as cnt from contract where con_money>con_amount or con_check<>'0'"),
        0);
    QVERIFY(server.number("select count(*) as cnt from contract where con_finish='1'") > 0);
    QCOMPARE(server.number("select count(distinct code_member) as cnt from person_m_tbl"), 14);
}

void orvo_db_test::the_members_kind_is_that_of_the_newest_year()
{
    connection server = open(many_);
    QCOMPARE(server.number(
                 "select count(*) as cnt from person_m_tbl a inner join dues_h_tbl b on a.pers_no=b.pers_no "
                 "where a.code_member<>b.code_member and b.val_year=(select max(val_year) from dues_h_tbl c "
                 "where c.pers_no=a.pers_no)"),
             0);
}

void orvo_db_test::demo_operators_can_log_in()
{
    connection server = open(filled_);
    for (const demo::demo_operator& each : demo::operators()) {
        const QString id = QString::fromUtf8(each.id.data(), static_cast<qsizetype>(each.id.size()));
        const QString password =
            QString::fromUtf8(each.password.data(), static_cast<qsizetype>(each.password.size()));
        const rows found =
            server.read("select * from admin_tbl where admin_id='{id}'  and admin_pass='{password}' ",
                        {{"id", id}, {"password", password}});
        QCOMPARE(found.size(), std::size_t{1});
        QCOMPARE(found.front().number("code_bran"), qint64{each.branch});
        QCOMPARE(found.front().number("author1"), qint64{each.author1});
    }
    const outcome listed = run_tool(filled_, words("operator list"));
    QCOMPARE(listed.output.count('\n'), 1 + static_cast<qsizetype>(demo::operators().size()));
}

void orvo_db_test::a_filling_that_breaks_off_leaves_nothing()
{
    server_address address;
    address.folder = new_home(QStringLiteral("broken"));
    connection server = make_connection(address, database::server, file_use::create);
    server.open();
    setup::make_missing_tables(server, database::server);
    struct stop {};
    const auto until_dues = [](std::string_view table, qint64, bool) {
        if (table == "dues_h_tbl")
            throw stop{};
    };
    QVERIFY_EXCEPTION_THROWN(
        demo::fill(server, {.members = 60, .seed = 1, .today = QDate{2024, 6, 15}}, until_dues), stop);
    QVERIFY(demo::table_in_the_way(server).empty());
    QCOMPARE(server.number("select count(*) as cnt from admin_tbl"), 0);
}

void orvo_db_test::a_register_in_use_is_left_alone()
{
    const QByteArray before = run_tool(filled_, words("dump --local")).output;
    const outcome again = run_tool(filled_, words("demo --members 60 --seed 9"));
    QCOMPARE(again.code, 1);
    QVERIFY(again.errors.contains("person_m_tbl"));
    QVERIFY(run_tool(filled_, words("dump --local")).output == before);
}

void orvo_db_test::init_makes_what_is_missing_and_no_more()
{
    const QString home = new_home(QStringLiteral("half"));
    QCOMPARE(run_tool(home, words("init")).code, 0);
    {
        connection server = open(home);
        server.direct("drop table company");
        server.direct("insert into branch_code values (10,'서울지부')");
    }
    const outcome again = run_tool(home, words("init"));
    QCOMPARE(again.code, 0);
    QVERIFY2(again.errors.contains("made 1 tables") && again.errors.contains("are there already"),
             again.errors);
    connection server = open(home);
    QCOMPARE(server.number("select count(*) as cnt from company"), 0);
    QCOMPARE(server.number("select count(*) as cnt from sqlite_master where name='ix_company_1'"), 1);
    QCOMPARE(server.number("select count(*) as cnt from branch_code"), 1);
}

void orvo_db_test::codes_are_mirrored()
{
    const QString home = new_home(QStringLiteral("mirror"));
    QCOMPARE(run_tool(home, words("demo --members 50")).code, 0);
    {
        connection server = open(home);
        server.direct("update branch_code set branch_name='새지부' where code_bran=130");
        server.direct("delete from religion where code_religion=60");
        server.direct("insert into money_member values (14,'명예회원',9000000000,1,2)");
        connection local = open(home, database::local);
        local.direct("insert into school values (9990,'이제 없는 학교')");
    }
    QCOMPARE(run_tool(home, words("sync-codes")).code, 0);
    const auto all = tables_in(run_tool(home, words("dump --local")).output);
    for (const std::string_view name : mirrored_tables()) {
        const QByteArray table{name.data(), static_cast<qsizetype>(name.size())};
        QVERIFY2(!all.at("local." + table).isEmpty(), table);
        QVERIFY2(all.at("local." + table) == all.at("server." + table), table);
    }
    QVERIFY(all.at("local.money_member").contains(QStringLiteral("14\t명예회원\t9000000000\t1\t2").toUtf8()));
}

void orvo_db_test::a_failed_mirroring_leaves_the_old_codes()
{
    const QString home = new_home(QStringLiteral("failed mirror"));
    QCOMPARE(run_tool(home, words("demo --members 50")).code, 0);
    {
        connection server = open(home);
        server.direct("delete from branch_code");
        server.direct("drop table money_member"); // the last that is read
    }
    QCOMPARE(run_tool(home, words("sync-codes")).code, 1);
    connection local = open(home, database::local);
    QCOMPARE(local.number("select count(*) as cnt from branch_code"), 14);
}

void orvo_db_test::operators_come_and_go()
{
    const QString home = new_home(QStringLiteral("operators"));
    QCOMPARE(run_tool(home, words("demo --members 50")).code, 0);
    QCOMPARE(
        run_tool(home, words("operator add kim --password p'w --name 김담당 --email kim@association.example "
                             "--send-id kim01 --branch 20 --education"))
            .code,
        0);
    QCOMPARE(run_tool(home, words("operator add lee --password - --name 이담당 --branch 0 --admin --right3"),
                      "from a pipe\r\nnot this\n")
                 .code,
             0);
    connection server = open(home);
    const rows kim = server.read("select * from admin_tbl where admin_id='kim'");
    QCOMPARE(kim.front().text("admin_pass"), QStringLiteral("p'w"));
    QCOMPARE(kim.front().text("log_name"), QStringLiteral("김담당"));
    QCOMPARE(kim.front().text("log_email"), QStringLiteral("kim@association.example"));
    QCOMPARE(kim.front().text("send_id"), QStringLiteral("kim01"));
    QCOMPARE(kim.front().number("code_bran"), 20);
    QCOMPARE(kim.front().number("author1") * 100 + kim.front().number("author2") * 10 +
                 kim.front().number("author3"),
             10);
    const rows lee = server.read("select * from admin_tbl where admin_id='lee'");
    QCOMPARE(lee.front().text("admin_pass"), QStringLiteral("from a pipe"));
    QCOMPARE(lee.front().number("author1") * 100 + lee.front().number("author2") * 10 +
                 lee.front().number("author3"),
             101);
    QCOMPARE(run_tool(home, words("operator remove kim")).code, 0);
    QCOMPARE(server.number("select count(*) as cnt from admin_tbl where admin_id='kim'"), 0);
    QCOMPARE(server.number("select count(*) as cnt from admin_tbl"), 4);
}

void orvo_db_test::misuse_is_refused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("why");
    const auto row = [](const char* what, const QStringList& arguments, int code, const char* why) {
        QTest::newRow(what) << arguments << code << QByteArray{why};
    };
    row("no command", {}, 2, "which command");
    row("an unknown command", words("drop"), 2, "\"drop\"");
    row("an unknown option", words("dump --all"), 2, "all");
    row("an argument too many", words("init now"), 2, "\"now\"");
    row("no action", words("operator"), 2, "operator wants");
    row("an unknown action", words("operator rename kim"), 2, "\"rename\"");
    row("no branch", words("operator add kim --password p --name k"), 2, "--branch");
    row("a blank branch",
        {QStringLiteral("operator"), QStringLiteral("add"), QStringLiteral("kim"),
         QStringLiteral("--password"), QStringLiteral("p"), QStringLiteral("--name"), QStringLiteral("k"),
         QStringLiteral("--branch"), QString{}},
        2, "--branch");
    row("an unknown branch", words("operator add kim --password p --name k --branch 15"), 1, "15");
    row("a taken id", words("operator add head --password p --name k --branch 0"), 1, "exists already");
    row("an empty password", words("operator add kim --password - --name k --branch 0"), 1,
        "needs a password");
    row("a name wider than its column",
        words("operator add kim --password p --branch 0 --name") + QStringList{QString{41, u'가'}}, 1,
        "log_name");
    row("removing nobody", words("operator remove nobody"), 1, "nobody");
    row("no members", words("demo --members 0"), 2, "--members");
    row("not a day", words("demo --today 20240231"), 2, "--today");
    row("databases of the embedded engine", words("init --create-databases"), 2, "postgresql");
}

void orvo_db_test::misuse_is_refused()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, code);
    QFETCH(QByteArray, why);
    const QByteArray before = run_tool(filled_, words("dump")).output;
    const outcome refused = run_tool(filled_, arguments);
    QCOMPARE(refused.code, code);
    QVERIFY2(refused.errors.contains(why), refused.errors);
    QVERIFY(refused.output.isEmpty());
    QVERIFY(run_tool(filled_, words("dump")).output == before);
}

void orvo_db_test::a_dump_keeps_one_row_in_one_line()
{
    const QString home = new_home(QStringLiteral("escapes"));
    QCOMPARE(run_tool(home, words("init")).code, 0);
    open(home).direct(
        "insert into books_tbl(company_name,pers_add) values ('a'||char(9)||'b\\','c'||char(13,10)||'d')");
    const auto all = tables_in(run_tool(home, words("dump")).output);
    QCOMPARE(all.at("server.books_tbl"), QList<QByteArray>{"a\\tb\\\\\t\t\t\tc\\r\\nd\t\t\t1"});
    QCOMPARE(all.count("mail.tbl_tempmail"), std::size_t{1});
    QCOMPARE(all.count("local.zip"), std::size_t{0});
}

QTEST_GUILESS_MAIN(orvo_db_test)
#include "orvo_db_test.moc"

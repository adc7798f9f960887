#include "base/resident_number.h"
#include "db/schema/schema.h"
#include "demo/demo.h"
#include "setup/missing_tables.h"
#include "tools/tool.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

#include <map>

using namespace orvo;

namespace {

QByteArray dump(const QString& home)
{
    return run_tool(home, "dump --local").output;
}

connection open(const QString& home, database which = database::server)
{
    server_address server;
    server.folder = home;
    connection db = make_connection(server, which, file_use::create);
    db.open();
    return db;
}

qint64 count(connection& db, const QString& from_where)
{
    return db.number("select count(*) as cnt from " + from_where.toStdString());
}

const QString plan = QStringLiteral("demo --members 50 --seed 7 --today 20240615");

} // namespace

class orvo_db_test : public QObject {
    Q_OBJECT

    QTemporaryDir folder_;
    QString filled_; ///< a program folder whose register holds the smallest demo with all its shapes
    QString many_;   ///< one with a large demo

    QString new_home(const QString& name, const QString& command = {})
    {
        const QString home = folder_.filePath(name);
        QDir{}.mkpath(home);
        if (!command.isEmpty() && run_tool(home, command).code != 0)
            throw std::runtime_error{command.toStdString()};
        return home;
    }

private Q_SLOTS:
    void check_tells_what_the_configuration_leaves_open()
    {
        const QString home = new_home("weak", "init");
        QCOMPARE(run_tool(home, "check").code, 0);
        QVERIFY(content_of(home + "/conf/connection.ini").contains("\ntls=require\n"));
        write_file(home + "/conf/connection.ini", "[SERVER]\nengine=postgresql\nport=1\nhost=127.0.0.1\n");
        QFile::setPermissions(home + "/conf/connection.ini", read_only);
        const outcome found = run_tool(home, "check");
        QCOMPARE(found.code, 1);
        QVERIFY2(found.output.startsWith("the configuration: not as it should be\n  others can read "),
                 found.output);
        QVERIFY2(found.output.contains("\n  conf/connection.ini says nothing of tls, "), found.output);
    }

    void two_at_once_make_one_register_data() { engines_under_test(); }
    void two_at_once_make_one_register()
    {
        FETCH_ENGINE(kind);
        if (kind == engine::sqlserver)
            QSKIP("its tables are made by hand");
        for (int round = 0; round < 3; ++round) {
            std::optional<test_register> its_register;
            QString home = new_home(QStringLiteral("race%1").arg(round));
            if (kind == engine::postgresql) {
                its_register.emplace(kind);
                home = its_register->folder().path;
                QFile::remove(file_of(its_register->address(), database::local));
                point_at(home, its_register->address());
                for (const database each : {database::server, database::mail}) {
                    connection db = its_register->connect(each);
                    for (const table& one : tables_of(each))
                        db.direct("drop table " + std::string{one.name});
                }
            }
            QProcess both[2];
            for (QProcess& each : both)
                each.start(QStringLiteral(ORVO_DB_PROGRAM), {"--home", home, "init"});
            for (QProcess& each : both) {
                QVERIFY(each.waitForFinished(60000));
                QVERIFY2(each.exitCode() == 0, each.readAllStandardError());
            }
            const outcome whole = run_tool(home, "check");
            QVERIFY2(whole.code == 0, whole.output);
        }
    }

    void a_new_folder_is_its_owners_alone()
    {
        const mode_t usual = ::umask(022);
        const QString home = folder_.filePath("deep/new");
        const int code = run_tool(home, "init").code;
        ::umask(usual);
        QCOMPARE(code, 0);
        QCOMPARE(mode_of(home), 0700);
        QCOMPARE(mode_of(home + "/conf"), 0700);
        for (const char* each : {"conf/connection.ini", "orvo_db.sqlite", "orvo_mail.sqlite", "orvo.mdb"})
            QCOMPARE(mode_of(home + u'/' + each), 0600);
    }

    void initTestCase()
    {
        filled_ = new_home("filled", plan);
        many_ = new_home("many", "demo --members 30000 --seed 3 --today 20240615");
    }

    void the_same_plan_makes_the_same_register()
    {
        const QByteArray first = dump(filled_);
        QVERIFY(first.count('\n') > 600);
        QVERIFY(dump(new_home("again", plan)) == first);
        QVERIFY(dump(new_home("other", QString{plan}.replace("seed 7", "seed 8"))) != first);
    }

    void sql_server_holds_the_same()
    {
        const test_register its_register{engine::sqlserver};
        const QString home = its_register.folder().path;
        point_at(home, its_register.address());
        const outcome made = run_tool(home, plan);
        QVERIFY2(made.code == 0, made.errors);
        QVERIFY(dump(home) == dump(filled_));
    }

    void postgresql_holds_the_same()
    {
        std::optional<server_address> server = postgresql_server();
        if (!server)
            QSKIP("ORVO_TEST_POSTGRESQL names no server; scripts/with_postgresql.sh starts one");
        server->name = QStringLiteral("orvo_db_test_%1").arg(QCoreApplication::applicationPid());
        server->mail_name = server->name + QStringLiteral("_mail");
        const QString home = new_home("postgresql");
        point_at(home, *server);
        QCOMPARE(run_tool(home, "init").code, 1); // the databases are not there
        QCOMPARE(run_tool(home, "init --create-databases").code, 0);
        QCOMPARE(run_tool(home, plan).code, 0);
        const QByteArray made = dump(home);
        server_address of_all = *server;
        of_all.name = QStringLiteral("postgres");
        connection maintenance = make_connection(of_all, database::server);
        maintenance.open();
        for (const QString& each : {server->name, server->mail_name})
            maintenance.direct("drop database " + each.toStdString());
        QVERIFY(made == dump(filled_));
    }

    void rare_shapes_are_there()
    {
        connection server = open(filled_);
        QStringList shapes{
            "person_m_tbl where pers_name like '%''%'",
            "person_m_tbl where pers_name like '%뷁%'", // outside of the old code page
            "person_m_tbl where get_mail_place='발송중지'",
            "person_m_tbl where pers_no like '00%'",
            "person_m_tbl where email=''",
            "person_m_tbl where code_bran=0",
            "person_m_tbl where length(pers_hp)=10",
            "person_m_tbl where pers_no not in (select pers_no from id_tbl)",
            "person_m_tbl where get_mail_place='직장' and pers_no not in (select pers_no from company)",
            "company a inner join company b on a.pers_no=b.pers_no and a.company_id<b.company_id "
            "where substr(b.company_name,1,length(a.company_name))=a.company_name and "
            "b.company_name<>a.company_name",
            "company where company_name like '%,%' and instr(company_name,'%')>0",
            "company where pers_out_date<>'' and primary_flag=0",
            "dues_b_tbl where val_year='평생회원'",
            "dues_b_tbl where pers_mem_day<>'' and pers_mem_b_day=''",
            "dues_b_tbl where pers_mem_day='' and pers_mem_b_day<>''",
        };
        for (const int length : {0, 7, 8, 9, 10, 11, 12})
            shapes.append(QStringLiteral("person_m_tbl where length(pers_tel)=%1").arg(length));
        for (const QString& each : shapes)
            QVERIFY2(count(server, each) > 0, qPrintable(each));
    }

    void nothing_hangs_in_the_air()
    {
        connection server = open(many_);
        for (const char* strays :
             {"person_m_tbl where code_bran not in (select code_bran from branch_code)",
              "person_m_tbl a left join section_code b on a.code_bran=b.code_bran and a.code_big=b.code_big "
              "and "
              "a.code_sect=b.code_sect where b.code_sect is null and a.code_sect<>0",
              "person_m_tbl where code_member not in (select code_member from money_member)",
              "company a left join small_division b on a.code_part=b.code_part and a.code_great=b.code_great "
              "and "
              "a.code_small=b.code_small where b.code_small is null",
              "company where pers_no not in (select pers_no from person_m_tbl)",
              "dues_h_tbl where pers_no not in (select pers_no from person_m_tbl)",
              "dues_b_tbl where code_receipt not in (select code_receipt from receipt_place)",
              "money_member where mem_dues<>center_money+bran_money",
              "(select pers_no from company group by pers_no having sum(primary_flag)<>1)",
              "dues_b_tbl where pers_mem_day>'20240615' or pers_mem_b_day>'20240615'",
              "dues_b_tbl where pres_let_day<max(pers_mem_day,pers_mem_b_day)",
              "company where pers_out_date<>'' and pers_out_date<pers_in_date",
              "(select id from id_tbl where id<>'' group by id having count(*)>1)",
              "contract where con_money>con_amount or con_check<>'0'",
              "contract a where con_money<>(select coalesce(sum(con_money),0) from contract_list b where "
              "a.pers_no=b.pers_no and a.con_day=b.con_day)",
              "contract_list where con_id>9000", // the console holds the number in 16 bits
              "person_m_tbl a inner join dues_h_tbl b on a.pers_no=b.pers_no where "
              "a.code_member<>b.code_member "
              "and b.val_year=(select max(val_year) from dues_h_tbl c where c.pers_no=a.pers_no)"})
            QVERIFY2(count(server, strays) == 0, strays);
        QVERIFY(count(server, "contract_list") > 500);
    }

    void balances_follow_from_payments()
    {
        connection server = open(many_);
        std::map<std::pair<QString, QString>, qint64> paid;
        for (const auto& each : server.read("select pers_no,val_year,pres_money from dues_b_tbl"))
            paid[{each.text("pers_no"), each.text("val_year")}] += each.number("pres_money");
        std::array<int, 4> seen{}; // too much, in full, in part, nothing
        for (const auto& each : server.read("select * from dues_h_tbl")) {
            const qint64 kind = each.number("code_member");
            const QString year =
                kind >= 10 && kind <= 13 ? QStringLiteral("평생회원") : each.text("val_year");
            const qint64 sum = paid[{each.text("pers_no"), year}];
            const qint64 yet = each.number("yet_money");
            QCOMPARE(yet, each.number("mem_dues") - sum);
            QCOMPARE(each.text("incom_flag"), QString::number(yet <= 0));
            ++seen[yet < 0 ? 0 : yet == 0 ? 1 : sum > 0 ? 2 : 3];
            paid.erase({each.text("pers_no"), year});
        }
        QVERIFY(paid.empty()); // no line without its year
        for (const int times : seen)
            QVERIFY(times > 100);
    }

    void resident_numbers_pass_the_check()
    {
        connection db = open(filled_);
        for (const auto each : db.read("select pers_no from person_m_tbl")) {
            const std::string number = each.text("pers_no").toStdString();
            const QDate born{2000, std::stoi(number.substr(2, 2)), std::stoi(number.substr(4, 2))};
            QVERIFY2(born.isValid() && number.back() == resident_check_digit(number.substr(0, 12)),
                     number.c_str());
        }
    }

    void members_homes_have_their_postal_codes()
    {
        connection local = open(filled_, database::local);
        std::map<QString, QString> codes;
        for (const auto& each : local.read("select * from zip")) {
            const QString place = each.text("do") + u' ' + each.text("gu") + u' ' + each.text("dong");
            QCOMPARE(codes.try_emplace(place, each.text("post")).first->second, each.text("post"));
        }
        int found = 0;
        for (const auto& each : open(filled_).read("select code_post,pers_add from person_m_tbl"))
            found += codes[each.text("pers_add").section(u' ', 0, 2)] == each.text("code_post");
        QVERIFY(found >= 48); // of 50, as neighbours are drawn with codes of their own
    }

    void demo_operators_can_log_in()
    {
        connection server = open(filled_);
        for (const demo::demo_operator& each : demo::operators()) {
            const rows found = server.read(
                "select * from admin_tbl where admin_id='{id}'  and admin_pass='{password}' ",
                {{"id", std::string{each.id}.c_str()}, {"password", std::string{each.password}.c_str()}});
            QCOMPARE(found.size(), std::size_t{1});
            QCOMPARE(found.front().number("code_bran"), qint64{each.branch});
            QCOMPARE(found.front().number("author1"), qint64{each.author1});
        }
    }

    void a_filling_that_breaks_off_leaves_nothing()
    {
        connection server = open(new_home("broken"));
        setup::make_missing_tables(server, database::server);
        const auto until_dues = [](std::string_view table, qint64, bool) {
            if (table == "dues_h_tbl")
                throw std::runtime_error{"stop"};
        };
        QVERIFY_EXCEPTION_THROWN(
            demo::fill(server, {.members = 60, .seed = 1, .today = QDate{2024, 6, 15}}, until_dues),
            std::runtime_error);
        QVERIFY(demo::table_in_the_way(server).empty());
        QCOMPARE(count(server, "admin_tbl"), 0);
    }

    void codes_are_mirrored_and_missing_tables_made()
    {
        const QString home = new_home("mirror", plan);
        connection server = open(home);
        connection local = open(home, database::local);
        server.direct("insert into money_member values (14,'명예회원',9000000000,1,2)");
        server.direct("delete from religion where code_religion=60");
        QCOMPARE(run_tool(home, "sync-codes").code, 0);
        QCOMPARE(count(local, "money_member where code_member=14 and mem_dues=9000000000"), 1);
        QCOMPARE(count(local, "religion where code_religion=60"), 0);
        server.direct("drop table money_member");
        QCOMPARE(run_tool(home, "sync-codes").code, 1);
        QCOMPARE(run_tool(home, "init").code, 0); // makes what is missing and no more
        QCOMPARE(count(server, "money_member"), 0);
        QVERIFY(count(server, "person_m_tbl") > 0);
    }

    void operators_come_and_go()
    {
        const QString home = new_home("operators", plan);
        QCOMPARE(run_tool(home,
                          "operator add kim --password p'w --name 김담당 --email kim@association.example "
                          "--send-id kim01 --branch 20 --education")
                     .code,
                 0);
        QCOMPARE(run_tool(home, "operator add lee --password - --name 이 --branch 0 --admin --right3",
                          "from a pipe\r\nnot this\n")
                     .code,
                 0);
        connection server = open(home);
        QCOMPARE(count(server,
                       "admin_tbl where admin_id='kim' and admin_pass='p''w' and log_name='김담당' and "
                       "log_email='kim@association.example' and send_id='kim01' and code_bran=20 and "
                       "author1=0 and author2=1 and author3=0"),
                 1);
        QCOMPARE(count(server,
                       "admin_tbl where admin_id='lee' and admin_pass='from a pipe' and author1=1 and "
                       "author2=0 and author3=1"),
                 1);
        QCOMPARE(run_tool(home, "operator remove kim").code, 0);
        QCOMPARE(count(server, "admin_tbl where admin_id='kim'"), 0);
        QCOMPARE(run_tool(home, "operator list").output.count('\n'), 2 + qsizetype(demo::operators().size()));
    }

    void misuse_is_refused()
    {
        const QByteArray before = dump(filled_);
        const std::tuple<QString, int, const char*> cases[] = {
            {"", 2, "which command"},
            {"drop", 2, "\"drop\""},
            {"dump --all", 2, "all"},
            {"init now", 2, "\"now\""},
            {"init --create-databases", 2, "postgresql"},
            {"operator rename kim", 2, "\"rename\""},
            {"operator add kim --password p --name k", 2, "--branch"},
            {"operator add kim --password p --name k --branch 15", 1, "15"},
            {"operator add head --password p --name k --branch 0", 1, "exists already"},
            {"operator add kim --password - --name k --branch 0", 1, "needs a password"},
            {"operator add kim --password p --branch 0 --name " + QString{41, u'가'}, 1, "log_name"},
            {"operator remove nobody", 1, "nobody"},
            {"demo --members 0", 2, "--members"},
            {"demo --today 20240231", 2, "--today"},
            {"demo --members 60 --seed 9", 1, "person_m_tbl"}, // a register in use
            {"import-zip", 2, "a file"},
            {"import-zip no.txt --encoding latin1", 2, "--encoding"},
            {"import-zip no.txt", 1, "no.txt"},
        };
        for (const auto& [command, code, why] : cases) {
            const outcome refused = run_tool(filled_, command);
            QCOMPARE(refused.code, code);
            QVERIFY2(refused.errors.contains(why), refused.errors);
            QVERIFY(refused.output.isEmpty());
        }
        QVERIFY(dump(filled_) == before);
    }
};

QTEST_GUILESS_MAIN(orvo_db_test)
#include "orvo_db_test.moc"

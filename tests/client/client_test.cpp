#include "client/client.h"
#include "client/configuration.h"
#include "client/system_log.h"
#include "support/files.h"
#include "support/ordinary_user.h"
#include "support/test_register.h"

#include <QCoreApplication>
#include <QTest>

using namespace orvo;

namespace {

/// Sets a variable of the environment and takes it back.
class environment {
public:
    environment(const char* name, const QString& value) : name_{name}, before_{qgetenv(name)}
    {
        qputenv(name, value.toUtf8());
    }
    ~environment() { qputenv(name_, before_); }
    environment(const environment&) = delete;
    environment& operator=(const environment&) = delete;

private:
    const char* name_;
    QByteArray before_;
};

QString beside_the_program(const char* name)
{
    return QCoreApplication::applicationDirPath() + u'/' + QLatin1String{name};
}

} // namespace

class client_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void configuration_values_data();
    void configuration_values();
    void a_server_is_embedded_where_nothing_is_said();
    void a_server_is_read_whole();
    void engines_of_the_configuration_data();
    void engines_of_the_configuration();
    void times_of_the_configuration_data();
    void times_of_the_configuration();
    void the_environment_names_the_program_folder();
    void the_program_folder_is_the_programs_own_where_it_holds_conf();
    void the_users_program_folder_is_filled_once();
    void a_program_folder_tells_whether_it_can_be_written();
    void log_lines_have_their_form();
    void a_log_that_cannot_be_written_is_silent_data();
    void a_log_that_cannot_be_written_is_silent();
    void the_branch_of_an_operator_data();
    void the_branch_of_an_operator();
    void today_is_the_clocks();

private:
    QTemporaryDir home_;
    program_folder folder_;

    void configure(const QByteArray& content) { write_file(folder_.file("conf/connection.ini"), content); }
};

void client_test::initTestCase()
{
    // An ordinary user is to be kept from the folder in it by that folder's own rights.
    QVERIFY(QFile::setPermissions(home_.path(), read_only | QFile::WriteOwner));
}

void client_test::init()
{
    folder_ = open_program_folder(home_.path() + QStringLiteral("/home"));
}

void client_test::cleanup()
{
    QFile::setPermissions(folder_.path, read_only | QFile::WriteOwner);
    QVERIFY(QDir{folder_.path}.removeRecursively());
}

void client_test::configuration_values_data()
{
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::newRow("as it stands") << "VERSION"
                                  << "main_ver"
                                  << "10";
    QTest::newRow("section in lower case") << "version"
                                           << "main_ver"
                                           << "10";
    QTest::newRow("missing key") << "VERSION"
                                 << "none"
                                 << "Default";
    QTest::newRow("missing section") << "NONE"
                                     << "main_ver"
                                     << "Default";
    QTest::newRow("empty is not missing") << "VERSION"
                                          << "empty"
                                          << "";
    QTest::newRow("255 characters are read") << "VERSION"
                                             << "longest" << QString{255, QChar{u'a'}};
    QTest::newRow("more are cut") << "VERSION"
                                  << "longer" << QString{255, QChar{u'b'}};
    QTest::newRow("characters are not bytes") << "VERSION"
                                              << "hangul" << QString{255, QChar{u'가'}};
    QTest::newRow("null characters go") << "VERSION"
                                        << "null"
                                        << "12";
}

void client_test::configuration_values()
{
    write_file(folder_.file("conf/version.ini"),
               "[Version]\nmain_ver=10\nempty=\nlongest=" + QByteArray{255, 'a'} +
                   "\nlonger=" + QByteArray{256, 'b'} + "\nhangul=" + QString{300, QChar{u'가'}}.toUtf8() +
                   "\nnull=1" + QByteArray{1, '\0'} + "2\n");
    QFETCH(QString, section);
    QFETCH(QString, key);
    QTEST(read_conf_value(folder_, "version.ini", section, key), "value");
    QCOMPARE(read_conf_value(folder_, "none.ini", section, key), QStringLiteral("Default"));
}

void client_test::a_server_is_embedded_where_nothing_is_said()
{
    const server_address server = read_server_address(folder_);
    QCOMPARE(server.kind, engine::embedded);
    QCOMPARE(server.folder, folder_.path);
    QCOMPARE(server.connect_timeout, std::chrono::seconds{15});
    QCOMPARE(server.statement_timeout, std::chrono::seconds{30});
    QCOMPARE(QStringList({server.host, server.name, server.mail_name, server.tls, server.password}),
             QStringList({"localhost", "orvo_db", "orvo_mail", "prefer", ""}));
}

void client_test::a_server_is_read_whole()
{
    configure(
        "[SERVER]\nengine=PostgreSQL\nhost=10.0.0.7\nport=5433\nuser=orvo\npassword=\" p;w=d \"\n"
        "database=register\nmail_database=mail\ntls=require\nconnect_timeout=3\nstatement_timeout=60\n");
    const server_address server = read_server_address(folder_);
    QCOMPARE(server.kind, engine::postgresql);
    QCOMPARE(server.port, 5433);
    QCOMPARE(
        QStringList({server.host, server.user, server.password, server.name, server.mail_name, server.tls}),
        QStringList({"10.0.0.7", "orvo", " p;w=d ", "register", "mail", "require"}));
    QCOMPARE(server.connect_timeout, std::chrono::seconds{3});
    QCOMPARE(server.statement_timeout, std::chrono::seconds{60});
    // The workstation's own file stays in its folder.
    QCOMPARE(file_of(server, database::local), folder_.file("orvo.mdb"));
}

void client_test::engines_of_the_configuration_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("is_known");
    QTest::addColumn<engine>("kind");
    QTest::newRow("embedded") << QByteArray{"embedded"} << true << engine::embedded;
    QTest::newRow("capitals") << QByteArray{"POSTGRESQL"} << true << engine::postgresql;
    QTest::newRow("SQL Server") << QByteArray{"sqlserver"} << true << engine::sqlserver;
    QTest::newRow("empty") << QByteArray{} << true << engine::embedded;
    QTest::newRow("unknown") << QByteArray{"oracle"} << false << engine::embedded;
}

void client_test::engines_of_the_configuration()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, is_known);
    configure("[SERVER]\nengine=" + name + "\n");
    if (is_known) {
        QTEST(read_server_address(folder_).kind, "kind");
        return;
    }
    try {
        read_server_address(folder_);
        QFAIL("it was taken for another engine");
    } catch (const db_failure& failure) {
        QVERIFY(failure.text().contains(QString::fromUtf8(name)));
        QVERIFY(failure.text().contains(QLatin1String{"connection.ini"}));
    }
}

void client_test::times_of_the_configuration_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("seconds");
    QTest::newRow("given") << QByteArray{"2"} << 2;
    QTest::newRow("nothing would never end or end at once") << QByteArray{"0"} << 30;
    QTest::newRow("negative") << QByteArray{"-5"} << 30;
    QTest::newRow("no number") << QByteArray{"long"} << 30;
}

void client_test::times_of_the_configuration()
{
    QFETCH(QByteArray, text);
    configure("[SERVER]\nstatement_timeout=" + text + "\n");
    QTEST(int(read_server_address(folder_).statement_timeout.count()), "seconds");
}

void client_test::the_environment_names_the_program_folder()
{
    const environment home{"ORVO_HOME", folder_.path + "/deep/in/it"};
    const program_folder found = find_program_folder();
    QCOMPARE(found.path, folder_.path + "/deep/in/it");
    QVERIFY(found.is_writable);
    QVERIFY(QFileInfo{found.path}.isDir());
}

void client_test::the_program_folder_is_the_programs_own_where_it_holds_conf()
{
    const environment home{"ORVO_HOME", {}};
    const environment data{"XDG_DATA_HOME", folder_.path};
    QVERIFY(QDir{}.mkpath(beside_the_program("conf")));
    QCOMPARE(find_program_folder().path, QCoreApplication::applicationDirPath());
    QVERIFY(QDir{}.rmdir(beside_the_program("conf")));
    QCOMPARE(find_program_folder().path, folder_.path + "/orvo");
}

void client_test::the_users_program_folder_is_filled_once()
{
    const environment home{"ORVO_HOME", {}};
    const environment data{"XDG_DATA_HOME", folder_.path};
    const QString templates = beside_the_program("../share/orvo/home");
    write_file(templates + "/conf/connection.ini", "[SERVER]\n");
    write_file(templates + "/sample/page.html", "<p>");
    QVERIFY(QFile::setPermissions(templates + "/conf/connection.ini",
                                  QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));

    const program_folder first = find_program_folder();
    QCOMPARE(content_of(first.file("sample/page.html")), QByteArray{"<p>"});
    QCOMPARE(mode_of(first.file("conf/connection.ini")), 0600);
    // What the user has changed or thrown away stays so.
    write_file(first.file("conf/connection.ini"), "[SERVER]\nhost=a\n");
    QVERIFY(QFile::remove(first.file("sample/page.html")));
    const program_folder second = find_program_folder();
    QCOMPARE(second.path, first.path);
    QCOMPARE(content_of(second.file("conf/connection.ini")), QByteArray{"[SERVER]\nhost=a\n"});
    QVERIFY(!QFile::exists(second.file("sample/page.html")));
    QVERIFY(QDir{beside_the_program("../share")}.removeRecursively());
}

void client_test::a_program_folder_tells_whether_it_can_be_written()
{
    QVERIFY(folder_.is_writable);
    QCOMPARE(QDir{folder_.path}.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{});
    write_file(folder_.file("file"), {});
    QVERIFY(!open_program_folder(folder_.file("file/below")).is_writable);
    QVERIFY(QFile::setPermissions(folder_.path, read_only));
    const ordinary_user somebody;
    QVERIFY(!open_program_folder(folder_.path).is_writable);
}

void client_test::log_lines_have_their_form()
{
    write_system_log(folder_, {QDate{2026, 1, 2}, QTime{3, 4, 5}}, QStringLiteral("전송 완료"));
    write_system_log(folder_, {QDate{2026, 11, 22}, QTime{23, 59, 0}}, "100%n");
    QCOMPARE(QString::fromUtf8(content_of(folder_.file("SystemLog.txt"))),
             QStringLiteral("01/02/26 03:04:05 - 전송 완료\n11/22/26 23:59:00 - 100%n\n"));
}

void client_test::a_log_that_cannot_be_written_is_silent_data()
{
    QTest::addColumn<bool>("is_there");
    QTest::newRow("read-only folder") << true;
    QTest::newRow("no folder") << false;
}

void client_test::a_log_that_cannot_be_written_is_silent()
{
    QFETCH(bool, is_there);
    QVERIFY(QFile::setPermissions(folder_.path, read_only));
    const program_folder unwritable{is_there ? folder_.path : folder_.file("nowhere"), false};
    {
        const ordinary_user somebody;
        write_system_log(unwritable, test_clock(), "text");
    }
    QVERIFY(!QFile::exists(unwritable.file("SystemLog.txt")));
}

void client_test::the_branch_of_an_operator_data()
{
    QTest::addColumn<QString>("branch");
    QTest::addColumn<bool>("is_branch");
    QTest::newRow("head office") << "0" << false;
    QTest::newRow("head office, two digits") << "00" << false;
    QTest::newRow("nobody") << "" << false;
    QTest::newRow("branch") << "10" << true;
    QTest::newRow("branch with zeros and blanks") << " 07 " << true;
}

void client_test::the_branch_of_an_operator()
{
    session_variables session;
    QFETCH(QString, branch);
    session.session_branch = branch;
    QTEST(session.is_branch_operator(), "is_branch");
}

void client_test::today_is_the_clocks()
{
    const running_client running{engine::embedded};
    QCOMPARE(running.c.today(), QStringLiteral("20261122"));
}

QTEST_GUILESS_MAIN(client_test)
#include "client_test.moc"

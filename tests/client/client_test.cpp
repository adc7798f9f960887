#include "client/client.h"
#include "client/configuration.h"
#include "client/system_log.h"
#include "support/files.h"
#include "support/ordinary_user.h"
#include "support/test_register.h"

#include <QCoreApplication>
#include <QTest>

using namespace orvo;

class client_test : public QObject {
    Q_OBJECT

    QTemporaryDir home_;
    program_folder folder_;

    server_address read(const QByteArray& server) const
    {
        write_file(folder_.file("conf/connection.ini"), "[SERVER]\n" + server);
        return read_server_address(folder_);
    }

private Q_SLOTS:
    void init()
    {
        // An ordinary user is to be kept from the folder in it by that folder's own rights.
        QVERIFY(QFile::setPermissions(home_.path(), read_only | QFile::WriteOwner));
        folder_ = open_program_folder(home_.path() + QStringLiteral("/home"));
    }
    void cleanup()
    {
        QFile::setPermissions(folder_.path, read_only | QFile::WriteOwner);
        QVERIFY(QDir{folder_.path}.removeRecursively());
    }

    void configuration_values()
    {
        write_file(folder_.file("conf/version.ini"),
                   "[Version]\nmain_ver=10\nempty=\nhangul=" + QString{300, u'가'}.toUtf8() + "\nnull=1" +
                       QByteArray{1, '\0'} + "2\n");
        const auto value = [&](const char* key, const char* section = "VERSION") {
            return read_conf_value(folder_, "version.ini", section, key);
        };
        QCOMPARE(value("main_ver"), QStringLiteral("10"));
        QCOMPARE(value("empty"), QString{});
        QCOMPARE(value("hangul"), QString(255, u'가'));
        QCOMPARE(value("null"), QStringLiteral("12"));
        QCOMPARE(value("none"), QStringLiteral("Default"));
        QCOMPARE(value("main_ver", "NONE"), QStringLiteral("Default"));
        QCOMPARE(read_conf_value(folder_, "none.ini", "VERSION", "main_ver"), QStringLiteral("Default"));
    }

    void the_server_of_the_configuration()
    {
        const server_address usual = read_server_address(folder_);
        QVERIFY(usual.tls_root.isEmpty());
        QCOMPARE(usual.kind, engine::embedded);
        QCOMPARE(usual.folder, folder_.path);
        QCOMPARE(usual.connect_timeout, std::chrono::seconds{15});
        QCOMPARE(usual.statement_timeout, std::chrono::seconds{30});
        QCOMPARE((QStringList{usual.host, usual.name, usual.mail_name, usual.tls, usual.password}),
                 (QStringList{"localhost", "orvo_db", "orvo_mail", "prefer", ""}));

        const server_address all =
            read("engine=PostgreSQL\nhost=10.0.0.7\nport=5433\nuser=orvo\npassword=\" p;w=d \"\n"
                 "database=register\nmail_database=mail\ndriver=a "
                 "b\ntls=Verify\ntls_root=our.crt\nconnect_timeout=3\n"
                 "statement_timeout=60\n");
        QCOMPARE(all.kind, engine::postgresql);
        QCOMPARE(all.port, 5433);
        QCOMPARE(
            (QStringList{all.host, all.user, all.password, all.name, all.mail_name, all.driver, all.tls}),
            (QStringList{"10.0.0.7", "orvo", " p;w=d ", "register", "mail", "a b", "verify"}));
        QCOMPARE(all.tls_root, folder_.file("conf/our.crt"));
        QCOMPARE(all.connect_timeout, std::chrono::seconds{3});
        QCOMPARE(all.statement_timeout, std::chrono::seconds{60});
        // The workstation's own file stays in its folder.
        QCOMPARE(file_of(all, database::local), folder_.file("orvo.mdb"));

        for (const char* never_or_at_once : {"0", "-5", "long"})
            QCOMPARE(read(QByteArray{"statement_timeout="} + never_or_at_once).statement_timeout,
                     std::chrono::seconds{30});
        QCOMPARE(read("engine=sqlserver").kind, engine::sqlserver);
        for (const auto& [line, value] : {std::pair{"engine=oracle", "oracle"}, {"tls=required", "required"}})
            try {
                read(line);
                QFAIL(line);
            } catch (const db_failure& failure) {
                QVERIFY(failure.text().contains(value) && failure.text().contains("connection.ini"));
            }
    }

    void what_a_configuration_leaves_open()
    {
        using list = std::vector<weakness>;
        QCOMPARE(weaknesses_of(folder_), list{});
        const auto owner = QFile::ReadOwner | QFile::WriteOwner;
        const std::tuple<const char*, QFile::Permissions, list> cases[] = {
            {"engine=postgresql\ntls=prefer", owner, {}}, // an administrator's choice
            {"engine=postgresql", owner, {weakness::no_tls}},
            {"engine=sqlserver\ntls=", owner, {weakness::no_tls}},
            {"engine=embedded", owner, {}},
            {"engine=embedded", owner | QFile::ReadGroup, {weakness::readable_by_others}},
            {"", owner | QFile::ReadOther, {weakness::readable_by_others}},
            {"engine=postgresql", read_only, {weakness::readable_by_others, weakness::no_tls}},
        };
        for (const auto& [text, rights, found] : cases) {
            read(text);
            QVERIFY(QFile::setPermissions(folder_.file("conf/connection.ini"), rights));
            QVERIFY2(weaknesses_of(folder_) == found, text);
            QVERIFY(QFile::remove(folder_.file("conf/connection.ini")));
        }
    }

    void the_program_folder_is_found_and_filled_once()
    {
        qputenv("ORVO_HOME", folder_.file("deep/in/it").toUtf8());
        QCOMPARE(find_program_folder().path, folder_.file("deep/in/it"));
        QVERIFY(find_program_folder().is_writable);

        qunsetenv("ORVO_HOME");
        qputenv("XDG_DATA_HOME", folder_.path.toUtf8());
        const QDir program{QCoreApplication::applicationDirPath()};
        QVERIFY(program.mkpath("conf"));
        QCOMPARE(find_program_folder().path, program.path());
        QVERIFY(program.rmdir("conf"));

        const QString templates = program.filePath("../share/orvo/home");
        write_file(templates + "/conf/connection.ini", "[SERVER]\n");
        write_file(templates + "/sample/page.html", "<p>");
        const program_folder first = find_program_folder();
        QCOMPARE(first.path, folder_.file("orvo"));
        QCOMPARE(content_of(first.file("sample/page.html")), QByteArray{"<p>"});
        QCOMPARE(mode_of(first.file("conf/connection.ini")), 0600);
        QCOMPARE(mode_of(first.file("conf")), 0700);
        QCOMPARE(mode_of(first.path), 0700);
        // What the user has changed or thrown away stays so.
        write_file(first.file("conf/connection.ini"), "[SERVER]\nhost=a\n");
        QVERIFY(QFile::remove(first.file("sample/page.html")));
        QCOMPARE(content_of(find_program_folder().file("conf/connection.ini")),
                 QByteArray{"[SERVER]\nhost=a\n"});
        QVERIFY(!QFile::exists(first.file("sample/page.html")));
        QVERIFY(QDir{program.filePath("../share")}.removeRecursively());
    }

    void the_log_is_written_where_it_can_be()
    {
        write_system_log(folder_, {QDate{2026, 1, 2}, QTime{3, 4, 5}}, QStringLiteral("전송 완료"));
        write_system_log(folder_, {QDate{2026, 11, 22}, QTime{23, 59, 0}}, "100%n");
        const QString log = folder_.file("SystemLog.txt");
        QCOMPARE(content_of(log), "01/02/26 03:04:05 - 전송 완료\n11/22/26 23:59:00 - 100%n\n");
        QVERIFY(QFile::remove(log));
        QVERIFY(QFile::setPermissions(folder_.path, read_only));
        const ordinary_user somebody;
        const program_folder unwritable = open_program_folder(folder_.path);
        QVERIFY(!unwritable.is_writable);
        write_system_log(unwritable, test_clock(), "text");
        QVERIFY(!QFile::exists(log));
    }

    void an_operator_sees_what_is_his_branchs()
    {
        // Of which of the branches 7, 8 and 0 an operator sees members; all three are head office's.
        for (const auto& [branch, seen] : {std::pair{"0", "780"},
                                           {"00", "780"},
                                           {" 000 ", "780"},
                                           {"7", "70"},
                                           {"07", "70"},
                                           {" 7 ", "70"},
                                           {"10", "0"},
                                           {"", ""},
                                           {"  ", ""},
                                           {"abc", ""},
                                           {"7 A", ""},
                                           {"0x7", ""},
                                           {"7\t", ""},
                                           {"0.0", ""},
                                           {"+7", ""},
                                           {"-7", ""},
                                           {"-0", ""},
                                           {"７", ""},
                                           {"2147483648", ""},
                                           {"18446744073709551616", ""}}) {
            session_variables session;
            session.session_branch = QString{branch};
            QString all;
            for (const int code : {7, 8, 0})
                if (sees_members_of(branch, code))
                    all += QString::number(code);
            QCOMPARE(all, QString{seen});
            QVERIFY2(session.is_branch_operator() == (all != "780"), branch);
        }
    }
};

QTEST_GUILESS_MAIN(client_test)
#include "client_test.moc"

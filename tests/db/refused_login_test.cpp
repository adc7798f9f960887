#include "db/odbc_text.h"
#include "support/engines.h"
#include "support/failure_of.h"
#include "support/pausable_proxy.h"
#include "support/tds_server.h"
#include "support/test_register.h"

#include <QProcess>
#include <QRegularExpression>
#include <QSslKey>
#include <QSslSocket>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

using namespace orvo;

namespace {

QByteArray framed(char letter, const QByteArray& content)
{
    QByteArray size{4, '\0'};
    qToBigEndian(static_cast<quint32>(content.size() + 4), size.data());
    return letter + size + content;
}

/// What a server says that refuses: its code, its words, and the place in its source that says them.
QByteArray refusal(const char* code, const char* words)
{
    QByteArray fields;
    for (const QByteArray& each : {QByteArray{"S치명적오류"},
                                   QByteArray{"VFATAL"},
                                   QByteArray{"C"} + code,
                                   QByteArray{"M"} + words,
                                   QByteArray{"Fauth.c"},
                                   QByteArray{"L338"},
                                   QByteArray{"Rauth_failed"},
                                   {}})
        fields += each + '\0';
    return framed('E', fields);
}

QString its_authority()
{
    return qEnvironmentVariable("ORVO_TEST_AUTHORITY");
}

/// One that answers for nobody but itself.
struct other_authority {
    explicit other_authority(const QTemporaryDir& folder)
        : key{folder.filePath("other.key")}, certificate{folder.filePath("other.crt")}
    {
        const QString words = "req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 "
                              "-subj /CN=127.0.0.1 -addext subjectAltName=IP:127.0.0.1";
        QProcess maker;
        maker.start("openssl", words.split(u' ') + QStringList{"-keyout", key, "-out", certificate});
        if (!maker.waitForFinished() || maker.exitCode() != 0)
            throw std::runtime_error{"no certificate"};
    }
    QString key, certificate;
};

/// A machine in the middle with a certificate that it made itself. It takes the password that it asks for.
class impostor : public QTcpServer {
public:
    explicit impostor(const other_authority& by) : by_{by} { listen(QHostAddress::LocalHost); }

    QByteArray password;

protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto* line = new QSslSocket{this};
        line->setSocketDescriptor(descriptor);
        QFile key{by_.key};
        if (key.open(QIODevice::ReadOnly))
            line->setPrivateKey(QSslKey{&key, QSsl::Ec});
        line->setLocalCertificate(by_.certificate);
        connect(line, &QIODevice::readyRead, this, [this, line] {
            const QByteArray said = line->readAll();
            if (!line->isEncrypted()) { // the question for TLS
                line->write("S");
                line->startServerEncryption();
            } else if (!said.startsWith('p')) { // who it is
                line->write(framed('R', QByteArray{"\0\0\0\3", 4}));
            } else {
                password = said.mid(5, said.size() - 6);
                line->disconnectFromHost();
            }
        });
    }

private:
    const other_authority& by_;
};

/// Lets the impostor, which lives in the test's own thread, do its work while the client waits.
class spinning_watch : public line_watch {
public:
    bool try_again(const db_failure&) override { return false; }
    bool keep_waiting(std::chrono::milliseconds waited, bool) override
    {
        QCoreApplication::processEvents();
        return waited < std::chrono::seconds{20};
    }
};

} // namespace

class refused_login_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void the_server_refuses()
    {
        if (!is_at_hand(engine::postgresql))
            QSKIP("ORVO_TEST_POSTGRESQL names no server; scripts/with_postgresql.sh starts one");
        pausable_proxy proxy{*postgresql_server()};
        server_address stranger = proxy.address();
        stranger.user = QStringLiteral("stranger");
        stranger.name = QStringLiteral("postgres");
        server_address nowhere = proxy.address();
        nowhere.name = QStringLiteral("nowhere");
        const char* password = "사용자 \"orvo\"의 password 인증을 실패했습니다";
        const char* starting = "시스템이 새로 가동 중입니다.";
        // Operators read these words: neither codes nor the server's source belong to them.
        const std::tuple<server_address, QByteArray, failure_kind, const char*> cases[] = {
            {stranger, {}, failure_kind::login_refused, "does not exist"},
            {nowhere, {}, failure_kind::login_refused, "does not exist"},
            {nowhere, refusal("28P01", password), failure_kind::login_refused, password},
            {nowhere, refusal("42501", "no right"), failure_kind::login_refused, "no right"},
            {nowhere, refusal("57P03", starting), failure_kind::line_lost, starting},
            {nowhere, refusal("53300", "full"), failure_kind::line_lost, "full"},
            {nowhere, framed('R', QByteArray{"\0\0\0\3", 4}), failure_kind::login_refused, ""}, // password?
        };
        for (const auto& [server, answer, kind, words] : cases) {
            proxy.answer_with(answer);
            connection db = make_connection(server, database::server);
            try {
                db.open();
                QFAIL("the server let anybody in");
            } catch (const db_failure& failure) {
                QCOMPARE(failure.kind(), kind);
                const QString end =
                    answer.startsWith('E') ? QStringLiteral("치명적오류:  ") + words : QString{};
                QVERIFY2(failure.text().endsWith(end) && failure.text().contains(QString{words}),
                         qPrintable(failure.text()));
            }
            QVERIFY(!db.is_up());
        }
    }

    void the_line_is_encrypted_as_it_is_told()
    {
        if (!is_at_hand(engine::postgresql))
            QSKIP("ORVO_TEST_POSTGRESQL names no server; scripts/with_postgresql.sh starts one");
        server_address server = *postgresql_server();
        server.name = QStringLiteral("postgres");
        for (const auto& [tls, encrypted] :
             {std::pair{"", 1}, {"prefer", 1}, {"require", 1}, {"verify", 1}, {"disable", 0}}) {
            server.tls = QString::fromLatin1(tls);
            server.tls_root = its_authority();
            connection db = make_connection(server, database::server);
            db.open();
            QCOMPARE(db.number("select count(*) as n from pg_stat_ssl where ssl and pid=pg_backend_pid()"),
                     encrypted);
        }
        pausable_proxy plain{server};
        plain.answer_with("N"); // to the question whether the server speaks TLS
        const tds_server plain_too{test_register{engine::embedded}.address()};
        for (server_address each : {plain.address(), plain_too.address()})
            for (const char* tls : {"require", "verify"}) {
                each.tls = QString::fromLatin1(tls);
                each.tls_root = its_authority();
                QCOMPARE(failure_of([&] { make_connection(each, database::server).open(); }),
                         failure_kind::line_lost);
            }
    }

    void only_the_server_itself_gets_the_password()
    {
        if (!is_at_hand(engine::postgresql))
            QSKIP("ORVO_TEST_POSTGRESQL names no server; scripts/with_postgresql.sh starts one");
        const QTemporaryDir folder;
        const other_authority other{folder};
        server_address server = *postgresql_server();
        server.name = QStringLiteral("postgres");
        server.password = QStringLiteral("secret");
        server.tls = QStringLiteral("verify");
        const std::tuple<QString, QString, const char*> cases[] = {
            {server.host, its_authority(), nullptr},
            {server.host, other.certificate, "certificate verify failed"},
            {server.host, {}, "certificate verify failed"}, // no authority of the system's answers for it
            {server.host, folder.filePath("none"), "does not exist"},
            {"localhost", its_authority(), "localhost"}, // the certificate bears another name
        };
        for (const auto& [host, root, why] : cases) {
            server.host = host;
            server.tls_root = root;
            connection db = make_connection(server, database::server);
            try {
                db.open();
                QVERIFY(!why);
            } catch (const db_failure& failure) {
                QCOMPARE(failure.kind(), failure_kind::line_lost);
                QVERIFY2(why && failure.text().contains(why), failure.what());
            }
        }

        impostor in_the_middle{other};
        const std::tuple<const char*, QString, const char*> trusted[] = {
            {"require", its_authority(), "secret"},
            {"verify", its_authority(), ""},
            {"verify", other.certificate, "secret"}, // a server's own certificate is its authority
        };
        for (const auto& [tls, root, got] : trusted) {
            server.host = QStringLiteral("127.0.0.1");
            server.port = in_the_middle.serverPort();
            server.tls = QString::fromLatin1(tls);
            server.tls_root = root;
            in_the_middle.password.clear();
            connection db = make_connection(server, database::server);
            spinning_watch watch;
            db.set_watch(&watch);
            QCOMPARE(failure_of([&] { db.open(); }), failure_kind::line_lost);
            QCOMPARE(in_the_middle.password, QByteArray{got});
        }
    }

    void odbc_is_told_whom_to_trust()
    {
        server_address server;
        server.host = QStringLiteral("db.example");
        server.tls_root = QStringLiteral("/a.crt");
        const char* section = "[orvo.verified.server]\nhost = db.example\n%1\nencryption = require\n"
                              "ca file = /a.crt\ncheck certificate hostname = yes\n";
        const std::tuple<const char*, const char*, const char*> cases[] = {
            {"FreeTDS", "disable", "SERVER=db.example;PORT=1433;...Encryption=off;"},
            {"FreeTDS", "prefer", "SERVER=db.example;PORT=1433;...Encryption=request;"},
            {"FreeTDS", "require", "SERVER=db.example;PORT=1433;...Encryption=require;"},
            {"FreeTDS", "verify", "SERVERNAME=orvo.verified.server;...Encryption=require;"},
            {"Other", "disable", "SERVER=db.example,1433;...Encrypt=no;"},
            {"Other", "prefer", "SERVER=db.example,1433;...Encrypt=yes;TrustServerCertificate=yes;"},
            {"Other", "require", "SERVER=db.example,1433;...Encrypt=yes;"},
            {"Other", "verify", "SERVER=db.example,1433;...Encrypt=yes;TrustServerCertificate=no;"},
        };
        for (const auto& [driver, tls, words] : cases) {
            server.driver = QString::fromLatin1(driver);
            server.tls = QString::fromLatin1(tls);
            QString text = odbc_connection_text(server, database::server);
            text.replace(QRegularExpression{"DATABASE=.*APP=orvo;(TDS_Version=7.4;ClientCharset=UTF-8;)?"},
                         "...");
            QCOMPARE(text, QStringLiteral("DRIVER={%1};").arg(server.driver) + words);
            const bool is_elsewhere = text.contains("SERVERNAME"); // the text has no word for an authority
            QCOMPARE(QString::fromUtf8(freetds_section(server)),
                     is_elsewhere ? QString{section}.arg("port = 1433") : QString{});
        }
        server.driver.clear();
        server.host += "\\members";
        server.tls = QStringLiteral("verify");
        QCOMPARE(QString::fromUtf8(freetds_section(server)), QString{section}.arg("instance = members"));
    }
};

QTEST_GUILESS_MAIN(refused_login_test)
#include "refused_login_test.moc"

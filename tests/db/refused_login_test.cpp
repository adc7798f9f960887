#include "support/engines.h"
#include "support/failure_of.h"
#include "support/pausable_proxy.h"
#include "support/tds_server.h"
#include "support/test_register.h"

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
             {std::pair{"", 1}, {"prefer", 1}, {"require", 1}, {"disable", 0}}) {
            server.tls = QString::fromLatin1(tls);
            connection db = make_connection(server, database::server);
            db.open();
            QCOMPARE(db.number("select count(*) as n from pg_stat_ssl where ssl and pid=pg_backend_pid()"),
                     encrypted);
        }
        pausable_proxy plain{server};
        plain.answer_with("N"); // to the question whether the server speaks TLS
        const tds_server plain_too{test_register{engine::embedded}.address()};
        for (server_address each : {plain.address(), plain_too.address()}) {
            each.tls = QStringLiteral("require");
            QCOMPARE(failure_of([&] { make_connection(each, database::server).open(); }),
                     failure_kind::line_lost);
        }
    }
};

QTEST_GUILESS_MAIN(refused_login_test)
#include "refused_login_test.moc"

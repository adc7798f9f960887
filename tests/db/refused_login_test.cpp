#include "support/engines.h"
#include "support/pausable_proxy.h"

#include <QTest>
#include <QtEndian>

using namespace orvo;

namespace {

QByteArray message(char letter, const QByteArray& content)
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
    return message('E', fields);
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
            {nowhere, refusal("57P03", starting), failure_kind::line_lost, starting},
            {nowhere, refusal("53300", "full"), failure_kind::line_lost, "full"},
            {nowhere, message('R', QByteArray{"\0\0\0\3", 4}), failure_kind::login_refused, ""}, // password?
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
};

QTEST_GUILESS_MAIN(refused_login_test)
#include "refused_login_test.moc"

#include "support/engines.h"

#include <QRegularExpression>

namespace orvo {

const char* name_of(engine kind)
{
    switch (kind) {
    case engine::embedded:
        return "embedded";
    case engine::postgresql:
        return "postgresql";
    case engine::sqlserver:
        break;
    }
    return "sqlserver";
}

std::optional<server_address> postgresql_server()
{
    const QString text = qEnvironmentVariable("ORVO_TEST_POSTGRESQL");
    if (text.isEmpty())
        return {};
    server_address server;
    server.kind = engine::postgresql;
    static const QRegularExpression pair{QStringLiteral("(\\w+)=(\\S+)")};
    for (auto each = pair.globalMatch(text); each.hasNext();) {
        const QRegularExpressionMatch found = each.next();
        const QString key = found.captured(1);
        if (key == QLatin1String("host"))
            server.host = found.captured(2);
        else if (key == QLatin1String("port"))
            server.port = found.captured(2).toInt();
        else if (key == QLatin1String("user"))
            server.user = found.captured(2);
    }
    server.tls = QStringLiteral("disable");
    return server;
}

bool is_at_hand(engine kind)
{
    return kind != engine::postgresql || postgresql_server().has_value();
}

void engines_under_test()
{
    QTest::addColumn<engine>("kind");
    for (const engine kind : engines)
        QTest::newRow(name_of(kind)) << kind;
}

} // namespace orvo

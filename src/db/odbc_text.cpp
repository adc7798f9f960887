#include "db/odbc_text.h"

#include <QRegularExpression>
#include <QTemporaryFile>

namespace orvo {

namespace {

/// The section's name; by no chance a server's.
const QString verified = QStringLiteral("orvo.verified.server");

struct driver_in_use {
    explicit driver_in_use(const server_address& server)
        : name{server.driver.isEmpty() ? QStringLiteral("FreeTDS") : server.driver},
          is_freetds{name.contains(QLatin1String("tds"), Qt::CaseInsensitive)},
          has_instance{server.host.contains(u'\\') && !server.port},
          port{QString::number(server.port ? server.port : 1433)}, verifies{server.tls ==
                                                                            QLatin1String("verify")}
    {
    }

    QString name;
    bool is_freetds;
    bool has_instance; ///< which the server is asked for its port
    QString port;
    bool verifies;
};

/// A value of the connection text. FreeTDS takes everything as far as "};"; other drivers want a brace
/// within doubled.
QString in_braces(QString value, bool is_freetds)
{
    static const QRegularExpression special{QStringLiteral("[;{}=]|^\\s|\\s$")};
    if (!value.contains(special))
        return value;
    if (!is_freetds)
        value.replace(u'}', QStringLiteral("}}"));
    return u'{' + value + u'}';
}

QString encryption(const QString& tls, bool is_freetds)
{
    if (tls == QLatin1String("verify"))
        return is_freetds ? QStringLiteral("Encryption=require;")
                          : QStringLiteral("Encrypt=yes;TrustServerCertificate=no;");
    if (tls == QLatin1String("require"))
        return is_freetds ? QStringLiteral("Encryption=require;") : QStringLiteral("Encrypt=yes;");
    if (tls == QLatin1String("disable"))
        return is_freetds ? QStringLiteral("Encryption=off;") : QStringLiteral("Encrypt=no;");
    // Every server of the last decades has a certificate, if only one that it made itself.
    return is_freetds ? QStringLiteral("Encryption=request;")
                      : QStringLiteral("Encrypt=yes;TrustServerCertificate=yes;");
}

} // namespace

QString odbc_connection_text(const server_address& server, database where)
{
    const driver_in_use driver{server};
    QString text = QStringLiteral("DRIVER={%1};").arg(driver.name);
    const auto add = [&](const char* key, const QString& value) {
        text += QLatin1String{key} + u'=' + in_braces(value, driver.is_freetds) + u';';
    };
    if (driver.is_freetds && driver.verifies) {
        add("SERVERNAME", verified);
    } else {
        add("SERVER",
            driver.is_freetds || driver.has_instance ? server.host : server.host + u',' + driver.port);
        if (driver.is_freetds && !driver.has_instance)
            add("PORT", driver.port);
    }
    add("DATABASE", where == database::mail ? server.mail_name : server.name);
    add("UID", server.user);
    add("PWD", server.password);
    add("APP", QStringLiteral("orvo"));
    if (driver.is_freetds)
        text += QStringLiteral("TDS_Version=7.4;ClientCharset=UTF-8;");
    return text + encryption(server.tls, driver.is_freetds); // the last ";" belongs to it
}

QByteArray freetds_section(const server_address& server)
{
    const driver_in_use driver{server};
    if (!driver.is_freetds || !driver.verifies)
        return {};
    const QString place = driver.has_instance ? QStringLiteral("instance = ") + server.host.section(u'\\', 1)
                                              : QStringLiteral("port = ") + driver.port;
    return QStringLiteral("[%1]\nhost = %2\n%3\nencryption = require\nca file = %4\n"
                          "check certificate hostname = yes\n")
        .arg(verified, server.host.section(u'\\', 0, 0), place, trusted_authorities(server))
        .toUtf8();
}

void provide_freetds_section(const QByteArray& section)
{
    static QTemporaryFile file;
    static QByteArray provided;
    if (section == provided)
        return;
    if (!file.open() || !file.resize(0) || file.write(section) != section.size() || !file.flush())
        throw db_failure{failure_kind::other, file.errorString()};
    file.close();
    qputenv("FREETDSCONF", QFile::encodeName(file.fileName()));
    provided = section;
}

} // namespace orvo

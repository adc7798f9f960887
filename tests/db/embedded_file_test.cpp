#include "support/builders.h"
#include "support/failure_of.h"
#include "support/files.h"
#include "support/ordinary_user.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

class embedded_file_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_missing_file_cannot_be_opened();
    void a_damaged_file_is_told_from_a_missing_one_data();
    void a_damaged_file_is_told_from_a_missing_one();
    void database_files_are_their_owners_alone();
    void a_register_in_a_folder_that_is_read_only_can_be_read();
};

void embedded_file_test::a_missing_file_cannot_be_opened()
{
    const QTemporaryDir folder;
    server_address server;
    server.folder = folder.path();
    for (const database each : {database::server, database::mail, database::local}) {
        connection db = make_connection(server, each);
        QCOMPARE(failure_of([&] { db.open(); }), failure_kind::line_lost);
        QVERIFY(!db.is_up());
        // An empty one in its place would look like a register.
        QVERIFY(!QFile::exists(file_of(server, each)));
        QCOMPARE(failure_of([&] { db.number("select count(*) as n from branch_code"); }),
                 failure_kind::line_lost);
    }
}

void embedded_file_test::a_damaged_file_is_told_from_a_missing_one_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("another kind of file") << QByteArray{"Standard Jet DB and so on"}.repeated(100);
    QTest::newRow("torn behind its head") << QByteArray{};
}

void embedded_file_test::a_damaged_file_is_told_from_a_missing_one()
{
    QFETCH(QByteArray, content);
    const test_register its_register{engine::embedded};
    QFile file{file_of(its_register.address(), database::server)};
    QVERIFY(file.open(QIODevice::ReadWrite));
    if (content.isEmpty()) {
        QVERIFY(file.resize(5000));
    } else {
        file.resize(0);
        file.write(content);
    }
    file.close();
    connection db = make_connection(its_register.address(), database::server);
    QCOMPARE(failure_of([&] {
                 db.open();
                 db.read("select * from branch_code");
             }),
             failure_kind::damaged);
}

void embedded_file_test::database_files_are_their_owners_alone()
{
    const QTemporaryDir folder;
    server_address server;
    server.folder = folder.path();
    for (const database each : {database::server, database::mail, database::local}) {
        connection db = make_connection(server, each, file_use::create);
        db.open();
        db.direct("create table t(a integer)");
        for (const char* companion : {"", "-wal", "-shm"})
            QCOMPARE(mode_of(file_of(server, each) + QLatin1String{companion}), 0600);
    }
}

void embedded_file_test::a_register_in_a_folder_that_is_read_only_can_be_read()
{
    const test_register its_register{engine::embedded};
    const QString path = file_of(its_register.address(), database::server);
    {
        connection db = its_register.connect();
        a_member{"9001011234568"}.store_in(db);
    }
    QVERIFY(QFile::setPermissions(path, read_only));
    QVERIFY(QFile::setPermissions(its_register.address().folder, read_only));
    {
        const ordinary_user somebody;
        connection db = its_register.connect();
        QCOMPARE(db.number("select count(*) as n from person_m_tbl"), 1);
        QVERIFY_EXCEPTION_THROWN(db.write("delete from person_m_tbl"), db_failure);
        QCOMPARE(db.number("select count(*) as n from person_m_tbl"), 1);
    }
    QVERIFY(QFile::setPermissions(its_register.address().folder, read_only | QFile::WriteOwner));
}

QTEST_GUILESS_MAIN(embedded_file_test)
#include "embedded_file_test.moc"

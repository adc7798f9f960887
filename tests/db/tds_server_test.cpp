#include "support/tds_server.h"
#include "support/test_register.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTest>

using namespace orvo;

class tds_server_test : public QObject {
    Q_OBJECT

    const test_register files_{engine::embedded};
    tds_server server_{files_.address()};

    /// What a client that is not the association's makes of an answer: its rows, or the error's number.
    QString answer(const QString& batch, const char* password = "p;w}d={'")
    {
        const QString call = "tsql -JUTF-8 -oqh -H127.0.0.1 -p%1 -Dorvo_db -Uadministrator -P\"$0\" 2>&1";
        QProcess client;
        client.start("sh", {"-c", call.arg(server_.address().port), password});
        client.write(batch.toUtf8() + "\ngo\n");
        client.closeWriteChannel();
        client.waitForFinished(60'000);
        const QString said = QString::fromUtf8(client.readAll()).trimmed();
        const auto failed = QRegularExpression{"(?:^|\\n)(?:Msg|Error) (\\d+)"}.match(said);
        return failed.hasMatch() ? failed.captured(1) : said;
    }

private Q_SLOTS:
    void batches_are_answered_and_written_down()
    {
        const QString insert = "insert into branch_code(code_bran,branch_name) values(%1)";
        const QString text(5000, u'긴');
        const std::pair<QString, QString> cases[] = {
            {insert.arg("'10','김''밥 {가} é😀'"), {}},
            {insert.arg("'11',N'나'),('',''),(3,'--;'"), {}},
            {insert.arg("12,''),(10,''"), "2627"},
            {insert.arg("'십',''"), "245"},
            {insert.arg("0,'" + text + "'"), "8152"},
            {"delete branch_code where branch_name='o'clock'", "105"},
            {"delete branch_code where branch_name=''; select 1", "102"},
            {"delete branch_code where branch_name=''--'", "102"},
            {"select * from branch_code where branch_name<>'o''c'", "0\t\n3\t--;\n10\t김'밥 {가} é😀\n11\t나"},
            {"select max(code_bran) as m_code from branch_code where code_bran<'0'", "NULL"},
            {"select '" + text + "' as x", text},
        };
        for (const auto& [batch, expected] : cases) {
            QCOMPARE(answer(batch), expected);
            QCOMPARE(server_.take_batches(), QStringList{batch + '\n'});
        }
    }

    void large_answers_come_whole()
    {
        QStringList numbers;
        for (int i = 900'000; i < 1'000'000; ++i)
            numbers.append(QString::number(i));
        answer("insert into id_tbl(pers_no) values('" + numbers.join("'),('") + "')");
        QCOMPARE(answer("select pers_no from id_tbl").split('\n'), numbers);
    }

    void a_bad_server_is_as_bad_as_it_is_told()
    {
        const QString insert = "insert into big_division(code_big) values(1)";
        const QString stored = "select count(*) as n from big_division";
        QCOMPARE(answer(stored, "x"), "18456");
        server_.answer_with({1205, "deadlock"});
        QCOMPARE(answer(insert), "1205");
        QCOMPARE(answer(stored), "0");
        server_.cut_in_place_of_answer();
        QCOMPARE(answer(insert), "20017");
        server_.cut_after_rows(0);
        QCOMPARE(answer(stored), "20017");
        QCOMPARE(answer(stored), "1");
    }
};

QTEST_GUILESS_MAIN(tds_server_test)
#include "tds_server_test.moc"

#include "client/batch_run.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/failure_of.h"
#include "support/pausable_proxy.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

namespace {

/// Gives up a lost line, or waits for it.
struct answering_watch : line_watch {
    bool try_again(const db_failure&) override { return goes_on; }
    bool keep_waiting(std::chrono::milliseconds, bool) override { return true; }
    bool goes_on = true;
};

QString number_of(qint64 row)
{
    return QStringLiteral("9001011%1").arg(row, 6, 10, QChar{u'0'});
}

/// Each row adds a point to a period, which several rows share, and registers a member: what a run of
/// renewals or completions does. Every tenth row has nothing to write.
batch_row row_of(qint64 row, qint64 periods, bool with_traces)
{
    const qint64 period = row % periods + 1;
    batch_row made;
    made.name = QStringLiteral("회원%1").arg(row);
    made.keys = {"period " + std::to_string(period)};
    made.reads = {{"select com_avg from std_h_tbl where std_id={id}", {{"id", period}}}};
    made.writes = [=](std::span<const rows> found) -> std::vector<batch_write> {
        if (row % 10 == 9)
            return {};
        const values given{
            {"id", period}, {"points", found[0].front().number("com_avg") + 1}, {"pers_no", number_of(row)}};
        batch_write point{{"update std_h_tbl set com_avg={points} where std_id={id}", given}};
        batch_write member{
            {"insert into person_m_tbl(pers_no,pers_name) values ('{pers_no}','O''Neil')", given}};
        if (with_traces) {
            point.trace = {"select std_id from std_h_tbl where std_id={id} and com_avg={points}", given};
            member.trace = {"select pers_no from person_m_tbl where pers_no='{pers_no}'", given};
        }
        return {point, member};
    };
    return made;
}

struct batch_under_test {
    batch_under_test(connection& db, qint64 rows, qint64 periods, bool with_traces = true)
        : run{db, rows, [=](qint64 row) { return row_of(row, periods, with_traces); }}
    {
    }
    batch_run run;
};

void make_periods(connection& db, qint64 count)
{
    for (qint64 each = 0; each < count; ++each)
        a_row{"std_h_tbl"}.with("pers_no", number_of(0)).with("com_avg", 0).store_in(db);
}

QString content(connection& db)
{
    QStringList all;
    for (const auto row : db.read("select std_id,com_avg from std_h_tbl order by std_id"))
        all.append(row.text("std_id") + u':' + row.text("com_avg"));
    for (const auto row : db.read("select pers_no from person_m_tbl order by pers_no"))
        all.append(row.text("pers_no"));
    return all.join(u' ');
}

/// What the rows leave, each by itself.
QString expected(qint64 rows, qint64 periods)
{
    QStringList all;
    for (qint64 period = 0; period < periods; ++period) {
        int points = 0;
        for (qint64 row = period; row < rows; row += periods)
            points += row % 10 != 9;
        all.append(QStringLiteral("%1:%2").arg(period + 1).arg(points));
    }
    for (qint64 row = 0; row < rows; ++row)
        if (row % 10 != 9)
            all.append(number_of(row));
    return all.join(u' ');
}

/// Says stop at that row.
struct stopping_progress : progress {
    explicit stopping_progress(qint64 row) : at{row} {}
    bool go_on(qint64 row) override { return row < at; }
    qint64 at;
};

} // namespace

class batch_run_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void stores_what_single_statements_would_data() { engines_under_test(); }
    void stores_what_single_statements_would()
    {
        FETCH_ENGINE(kind);
        const test_register its{kind};
        connection db = its.connect();
        make_periods(db, 40);
        batch_under_test batch{db, 700, 40};
        stopping_progress stop{100};
        QCOMPARE(failure_of([&] { batch.run.carry_out(&stop); }), failure_kind::cancelled);
        QVERIFY(batch.run.position() >= 100 && batch.run.position() < 700);
        QCOMPARE(content(db), expected(batch.run.position(), 40));
        batch.run.carry_out();
        QCOMPARE(content(db), expected(700, 40));
        QCOMPARE(batch.run.report(), QStringLiteral("630명 저장"));
    }

    /// What stays stored is all before the row, and of the row what came before its failure; what is left
    /// out is that row alone.
    void breaks_at_its_row_data() { engines_under_test(); }
    void breaks_at_its_row()
    {
        FETCH_ENGINE(kind);
        const test_register its{kind};
        connection db = its.connect();
        make_periods(db, 100);
        a_member{number_of(37)}.store_in(db);
        a_member{number_of(88)}.store_in(db);
        batch_under_test batch{db, 90, 100};
        for (int times = 0; times < 2; ++times) {
            try {
                batch.run.carry_out();
                QFAIL("stored a number twice");
            } catch (const db_failure& failure) {
                QCOMPARE(failure.kind(), failure_kind::duplicate);
                QCOMPARE(failure.how_far(), QStringLiteral("34명 저장, 38번째(회원37)에서 중단"));
            }
            QCOMPARE(db.number("select com_avg from std_h_tbl where std_id=38"), 1);
            QCOMPARE(db.number("select com_avg from std_h_tbl where std_id=39"), 0);
        }
        db.direct("delete from person_m_tbl where pers_no='" + number_of(37).toStdString() + "'");
        QCOMPARE(failure_of([&] { batch.run.carry_out(); }), failure_kind::duplicate);
        batch.run.leave_out_row();
        batch.run.carry_out();
        QCOMPARE(content(db), expected(90, 100));
    }

    /// Whatever answer is lost, each row is stored once, and what nobody can look for is asked.
    void lost_answers_are_looked_for()
    {
        if (!is_at_hand(engine::postgresql))
            QSKIP("ORVO_TEST_POSTGRESQL names no server; scripts/with_postgresql.sh starts one");
        int asked = 0;
        for (const bool with_traces : {true, false})
            for (const bool waits : {true, false})
                for (int statement = 1; statement < 160; statement += 23) {
                    const test_register its{engine::postgresql};
                    pausable_proxy proxy{its.address()};
                    answering_watch watch;
                    connection direct = its.connect();
                    connection db = make_connection(proxy.address(), database::server);
                    make_periods(direct, 30);
                    db.open();
                    db.set_watch(&watch);
                    watch.goes_on = waits;
                    batch_under_test batch{db, 60, 30, with_traces};
                    proxy.cut_in_place_of_answer(statement);
                    for (int times = 0; times < 4 && !batch.run.is_over(); ++times)
                        try {
                            batch.run.carry_out();
                        } catch (const db_failure& failure) {
                            watch.goes_on = true;
                            if (!batch.run.doubt())
                                continue;
                            QVERIFY(!with_traces);
                            ++asked;
                            QVERIFY(
                                failure.how_far().endsWith(QStringLiteral("까지 저장 여부를 알 수 없음")));
                            const QString first = number_of(batch.run.doubt()->first);
                            batch.run.settle_doubt(
                                !direct
                                     .read("select * from person_m_tbl where pers_no='{pers_no}'",
                                           {{"pers_no", first}})
                                     .empty());
                        }
                    QCOMPARE(content(direct), expected(60, 30));
                }
        QVERIFY(asked > 0);
    }

    /// 1,000 rows of a read and two writes are six waits; rows that read what the one before them wrote
    /// wait each for itself.
    void many_rows_cost_few_waits()
    {
        if (!is_at_hand(engine::postgresql))
            QSKIP("ORVO_TEST_POSTGRESQL names no server; scripts/with_postgresql.sh starts one");
        for (const auto& [periods, waits] : {std::pair{1000, 6}, {1, 1900}}) {
            const test_register its{engine::postgresql};
            pausable_proxy proxy{its.address()};
            connection db = make_connection(proxy.address(), database::server);
            db.open();
            make_periods(db, periods);
            const int before = proxy.waits();
            batch_under_test batch{db, 1000, periods};
            batch.run.carry_out();
            QCOMPARE(proxy.waits() - before, waits);
        }
    }
};

QTEST_GUILESS_MAIN(batch_run_test)
#include "batch_run_test.moc"

#include "client/save_log.h"
#include "db/schema/schema.h"
#include "support/engines.h"
#include "support/failure_of.h"
#include "support/files.h"
#include "support/pausable_proxy.h"
#include "support/saves.h"
#include "support/test_register.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

using namespace orvo;

namespace {

/// Does something behind the answer of a statement, and answers the question of a lost line.
class cutting_watch : public line_watch {
public:
    bool try_again(const db_failure&) override { return goes_on; }
    bool keep_waiting(std::chrono::milliseconds, bool) override { return true; }
    void done_waiting() override
    {
        if (behind)
            behind(++statements);
    }

    std::function<void(int)> behind;
    bool goes_on = false;
    int statements = 0;
};

/// All rows of the register but the numbers that the server assigns, and web passwords, which no note keeps.
QStringList content(connection& db)
{
    QStringList all;
    for (const table& each : tables_of(database::server)) {
        const rows found = db.read("select * from " + std::string{each.name});
        for (const auto row : found) {
            QString line = QString::fromUtf8(each.name.data(), static_cast<qsizetype>(each.name.size()));
            for (const column& field : each.columns)
                if (field.type != column_type::identity && field.name != "passwd")
                    line += u'|' + row.text(field.name);
            all.append(line);
        }
    }
    all.sort();
    return all;
}

/// How a save ends before it has come to its end, and how it goes on.
enum class broken {
    tried_again,  ///< the line was cut behind a statement, and the operator waits for it
    given_up,     ///< he does not, and presses once more later
    unanswered,   ///< the statement was carried out, and its answer was lost
    program_died, ///< and the next start finishes the save by its note
    machine_died  ///< of which the disk has no more than the beginning
};

/// One run of a save on a register of its own, behind a line that can break.
struct save_run {
    explicit save_run(const save_under_test& of)
        : proxy{its_register.address()}, direct{its_register.connect()},
          local{its_register.connect(database::local)}, db{make_connection(proxy.address(), database::server)}
    {
        of.prepare(direct);
        db.open();
        what.emplace(of.plan(direct), db, local, &log());
        db.set_watch(&watch);
    }

    save_log& log()
    {
        if (!log_)
            log_.emplace(path, [] { return save_author{"kim", "김담당", test_clock()}; });
        return *log_;
    }

    /// As at the next start of the program.
    void finish_by_note(const save_act& act)
    {
        what.reset();
        log_.reset();
        const std::vector<save_note> notes = log().unfinished();
        QCOMPARE(notes.size(), 1U);
        save found{*log().plan_of(notes.front(), std::array{&act}), direct, local, log(), notes.front()};
        QCOMPARE(found.objection(), QString{});
        found.carry_out();
        QVERIFY(log().unfinished().empty());
    }

    void lose_marks()
    {
        log_.reset();
        write_file(path, content_of(path).split('\n').front() + '\n');
    }

    QTemporaryDir home;
    const QString path = home.filePath("orvo.saves");
    test_register its_register{engine::postgresql};
    pausable_proxy proxy;
    cutting_watch watch;
    connection direct, local, db;
    std::optional<save> what;

private:
    std::optional<save_log> log_;
};

} // namespace

/// Each save, broken at each of its statements, is brought to the end that an undisturbed one has.
class broken_saves_test : public QObject {
    Q_OBJECT

private:
    static void finish_anyhow(const save_under_test& of, int statement, broken how, const QStringList& end)
    {
        save_run run{of};
        const save_act& act = *run.what->plan().act;
        run.watch.goes_on = how == broken::tried_again;
        const bool is_answered = how == broken::tried_again || how == broken::given_up;
        if (!is_answered)
            run.proxy.cut_in_place_of_answer(statement + 1);
        else if (statement == 0)
            run.proxy.cut_lines();
        run.watch.behind = [&](int done) {
            if (is_answered && done == statement)
                run.proxy.cut_lines();
        };
        bool broke = false;
        try {
            run.what->carry_out();
        } catch (const db_failure& failure) {
            broke = true;
            QVERIFY2(failure.kind() == failure_kind::line_lost ||
                         failure.kind() == failure_kind::outcome_unknown,
                     failure.what());
            QVERIFY(!failure.missing().isEmpty());
        }
        QCOMPARE(broke, how != broken::tried_again);
        if (how == broken::unanswered && run.what->is_in_doubt()) { // and a second press meets nobody
            run.proxy.refuse();
            QCOMPARE(failure_of([&] { run.what->carry_out(); }), failure_kind::outcome_unknown);
            run.proxy.resume();
        }
        run.watch.goes_on = true;
        run.watch.behind = {};
        // Whom it broke before anything was sent has no note: he presses again.
        if (broke && (how == broken::program_died || how == broken::machine_died) &&
            !run.log().unfinished().empty()) {
            if (how == broken::machine_died)
                run.lose_marks();
            run.finish_by_note(act);
        } else if (broke) {
            run.what->carry_out();
        }
        QCOMPARE(content(run.direct), end);
        QVERIFY(run.log().unfinished().empty());
        QVERIFY(!content_of(run.path).contains("secret"));
    }

private Q_SLOTS:
    void costs_its_waits()
    {
        if (!is_at_hand(engine::postgresql))
            QSKIP("ORVO_TEST_POSTGRESQL names no server; scripts/with_postgresql.sh starts one");
        for (const save_under_test& of : saves_under_test()) {
            save_run far_away{of};
            far_away.proxy.delay_answers(
                std::chrono::milliseconds{qEnvironmentVariableIntValue("ORVO_LINE_DELAY")});
            const int sent = far_away.proxy.statements();
            const int waited = far_away.proxy.waits();
            QElapsedTimer clock;
            clock.start();
            far_away.what->carry_out();
            if (qEnvironmentVariableIsSet("ORVO_LINE_DELAY"))
                std::printf("| %s | %d | %lld ms |\n", of.name, of.waits, clock.elapsed());
            QVERIFY2(far_away.proxy.statements() - sent == of.statements, of.name);
            QVERIFY2(far_away.proxy.waits() - waited == of.waits, of.name);
        }
    }

    void broken_at_every_statement_data()
    {
        QTest::addColumn<std::size_t>("which");
        for (std::size_t i = 0; i < saves_under_test().size(); ++i)
            QTest::newRow(saves_under_test()[i].name) << i;
    }
    void broken_at_every_statement()
    {
        if (!is_at_hand(engine::postgresql))
            QSKIP("ORVO_TEST_POSTGRESQL names no server; scripts/with_postgresql.sh starts one");
        QFETCH(std::size_t, which);
        const save_under_test& of = saves_under_test()[which];
        save_run undisturbed{of};
        const QStringList before = content(undisturbed.direct);
        undisturbed.what->carry_out();
        const QStringList end = content(undisturbed.direct);
        QVERIFY(end != before);
        for (int statement = 0; statement < of.waits; ++statement)
            for (const broken how : {broken::tried_again, broken::given_up, broken::unanswered,
                                     broken::program_died, broken::machine_died}) {
                finish_anyhow(of, statement, how, end);
                if (QTest::currentTestFailed())
                    QFAIL(qPrintable(QStringLiteral("statement %1, way %2").arg(statement).arg(int(how))));
            }
    }

    /// SQL Server carries out what its client has no more patience for, and the payment is pressed again.
    void a_payment_that_timed_out_is_stored_once()
    {
        const auto of =
            std::ranges::find(saves_under_test(), QLatin1String{"a payment is added"},
                              [](const save_under_test& each) { return QLatin1String{each.name}; });
        QStringList end;
        int in_doubt = 0;
        for (int late = of->statements; late >= 0; --late) { // the first one is not disturbed
            const test_register its{engine::sqlserver};
            server_address hasty = its.address();
            hasty.statement_timeout = std::chrono::seconds{1};
            connection direct = its.connect();
            connection local = its.connect(database::local);
            connection db = make_connection(hasty, database::server);
            of->prepare(direct);
            save what{of->plan(direct), db, local};
            db.open();
            cutting_watch watch;
            watch.behind = [&](int done) {
                if (done == late)
                    its.sql_server().hold_answers();
            };
            watch.behind(0);
            db.set_watch(&watch);
            try {
                what.carry_out();
            } catch (const db_failure& failure) {
                QVERIFY2(failure.kind() == failure_kind::outcome_unknown ||
                             failure.kind() == failure_kind::timed_out,
                         failure.what());
                QCOMPARE(failure.kind() == failure_kind::outcome_unknown, what.is_in_doubt());
                in_doubt += what.is_in_doubt();
            }
            its.sql_server().resume();
            if (end.isEmpty())
                end = content(direct);
            else if (!what.is_over())
                what.carry_out();
            QCOMPARE(content(direct), end);
        }
        QCOMPARE(in_doubt, 2); // the payment, and the year that it settles
    }

    /// A step that goes by the name of another would be taken for stored.
    void no_two_steps_bear_one_name()
    {
        static const save_act twice{"twice", "", [](save& of) {
                                        for (int i = 0; i < 2; ++i)
                                            of.write({"same", ""}, "update contract set con_money=0");
                                    }};
        running_client on{engine::embedded};
        QVERIFY_EXCEPTION_THROWN(on.c.begin({&twice, {}, {}}).carry_out(), std::logic_error);
    }

    /// What came later is not undone by finishing what broke before it.
    void what_has_changed_since_is_not_finished()
    {
        for (const char* name : {"a payment is changed", "a member is changed", "a workplace is changed",
                                 "an instalment is changed", "a year is changed", "a member is deleted"}) {
            const auto of =
                std::ranges::find(saves_under_test(), QLatin1String{name},
                                  [](const save_under_test& each) { return QLatin1String{each.name}; });
            running_client on{engine::embedded};
            of->prepare(on.c.db_conn);
            const save begun = on.c.begin(of->plan(on.c.db_conn));
            on.c.saves.begin(begun.plan());
            const auto objection = [&] {
                return on.c.take_up(on.c.saves.unfinished().front(), std::array{begun.plan().act})
                    ->objection();
            };
            QCOMPARE(objection(), QString{});
            for (const char* change :
                 {"update dues_b_tbl set pres_money=1", "update person_m_tbl set pers_name='다른 이'",
                  "update company set job_dept='새 부서'", "update contract_list set con_money=1",
                  "update dues_h_tbl set mem_dues=1"})
                on.c.db_conn.direct(change);
            QVERIFY2(!objection().isEmpty(), name);
        }
    }
};

QTEST_GUILESS_MAIN(broken_saves_test)
#include "broken_saves_test.moc"

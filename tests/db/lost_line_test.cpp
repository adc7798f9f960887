#include "support/builders.h"
#include "support/engines.h"
#include "support/failure_of.h"
#include "support/pausable_proxy.h"
#include "support/test_register.h"

#include <QElapsedTimer>
#include <QTest>

using namespace orvo;

namespace {

/// Answers the question of a lost line, and keeps what it was told.
class answering_watch : public line_watch {
public:
    bool try_again(const db_failure& lost) override
    {
        asked.push_back(lost.statement());
        return answer();
    }
    bool keep_waiting(std::chrono::milliseconds waited, bool) override { return waited < patience; }

    std::vector<QString> asked;
    std::function<bool()> answer = [] { return true; };
    std::chrono::milliseconds patience{60'000};
};

constexpr const char* count_of_branches = "select count(*) as n from branch_code";
constexpr const char* insert = "insert into branch_code (code_bran) values (20)";
constexpr const char* reckoning = "update branch_code set code_bran=code_bran+10";

/// A register with the branch 10 behind a line that can break.
struct bad_line {
    explicit bad_line(std::chrono::seconds timeout = std::chrono::seconds{15},
                      std::chrono::seconds statement_timeout = std::chrono::seconds{30})
        : proxy{its_register.address()}, direct{its_register.connect()}, db{[&] {
              server_address server = proxy.address();
              server.connect_timeout = timeout;
              server.statement_timeout = statement_timeout;
              return make_connection(server, database::server);
          }()}
    {
        db.set_watch(&watch);
        direct.write("insert into branch_code (code_bran,branch_name) values (10,'서울')");
    }

    QString codes()
    {
        QStringList all;
        for (const auto row : direct.read("select * from branch_code"))
            all.append(row.text("code_bran"));
        return all.join(u' ');
    }

    test_register its_register{engine::postgresql};
    pausable_proxy proxy;
    answering_watch watch;
    connection direct; ///< the same register past the proxy
    connection db;
};

} // namespace

class lost_line_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        if (!is_at_hand(engine::postgresql))
            QSKIP("ORVO_TEST_POSTGRESQL names no server; scripts/with_postgresql.sh starts one");
    }

    void a_server_that_is_gone_cannot_be_opened()
    {
        bad_line line;
        line.proxy.refuse();
        QCOMPARE(failure_of([&] { line.db.open(); }), failure_kind::line_lost);
        QVERIFY(!line.db.is_up());
        QVERIFY(line.watch.asked.empty()); // whoever opens asks
        line.proxy.resume();
        line.db.open();
        QCOMPARE(line.db.number(count_of_branches), 1);
    }

    void a_silent_server_is_given_up()
    {
        bad_line line{std::chrono::seconds{1}};
        line.proxy.keep_silent();
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(failure_of([&] { line.db.open(); }), failure_kind::line_lost);
        QVERIFY(clock.elapsed() >= 900 && clock.elapsed() < 5000);
        line.watch.patience = std::chrono::milliseconds{60};
        QCOMPARE(failure_of([&] { line.db.open(); }), failure_kind::cancelled);
        QVERIFY(!line.db.is_up());
    }

    void a_statement_behind_a_cut_asks_once_and_goes_on_data()
    {
        QTest::addColumn<QString>("text");
        // Noticed before anything is sent, so that even what cannot be repeated is sent, and sent once.
        for (const char* text : {insert, reckoning, "delete branch_code where code_bran='20'"})
            QTest::newRow(text) << QString{text};
    }
    void a_statement_behind_a_cut_asks_once_and_goes_on()
    {
        QFETCH(QString, text);
        bad_line line;
        line.db.open();
        QCOMPARE(line.db.number(count_of_branches), 1);
        line.proxy.cut_lines();
        QCOMPARE(line.db.number(count_of_branches), 1);
        QCOMPARE(line.watch.asked, std::vector{QString{count_of_branches}});
        line.proxy.cut_lines();
        const int before = line.proxy.statements();
        line.db.write(text.toStdString());
        QCOMPARE(line.watch.asked.size(), std::size_t{2});
        QCOMPARE(line.proxy.statements() - before, 1);
    }

    void a_server_that_ended_the_line_leaves_no_doubt()
    {
        bad_line line;
        line.db.open();
        for (const char* text : {insert, "update branch_code set code_bran=code_bran+30"}) {
            line.direct.direct("select pg_terminate_backend(pid) from pg_stat_activity where "
                               "datname=current_database() and pid<>pg_backend_pid()");
            QTest::qWait(100);
            QVERIFY(line.db.write(text) > 0);
        }
        QCOMPARE(line.watch.asked.size(), std::size_t{2});
        QCOMPARE(line.codes(), QStringLiteral("40 50"));
    }

    void it_is_asked_until_the_server_is_back_or_given_up()
    {
        bad_line line;
        line.db.open();
        line.proxy.refuse();
        line.watch.answer = [] { return false; };
        try {
            line.db.number(count_of_branches);
            QFAIL("nobody is there");
        } catch (const db_failure& failure) {
            QCOMPARE(failure.kind(), failure_kind::line_lost);
            QCOMPARE(failure.number(), error_number::unreachable);
            QCOMPARE(failure.statement(), QString{count_of_branches});
        }
        QCOMPARE(line.watch.asked.size(), std::size_t{1});
        QVERIFY(!line.db.is_up());
        line.watch.answer = [&] {
            if (line.watch.asked.size() == 4)
                line.proxy.resume();
            return true;
        };
        QCOMPARE(line.db.number(count_of_branches), 1);
        QCOMPARE(line.watch.asked, std::vector(4, QString{count_of_branches}));
    }

    void a_transaction_is_not_gone_on_with()
    {
        bad_line line;
        line.db.open();
        const auto save = [&] {
            transaction all_or_nothing{line.db};
            line.db.write(reckoning);
            line.proxy.cut_lines();
            line.db.write(insert);
            all_or_nothing.commit();
        };
        QCOMPARE(failure_of(save), failure_kind::line_lost);
        QVERIFY(line.watch.asked.empty());
        QCOMPARE(line.codes(), QStringLiteral("10"));
    }

    void an_assignment_without_an_answer_is_sent_again()
    {
        bad_line line;
        line.db.open();
        line.proxy.cut_in_place_of_answer(1);
        QCOMPARE(line.db.write("update branch_code set branch_name='부산' where code_bran='10'"), 1);
        QCOMPARE(line.watch.asked.size(), std::size_t{1});
        QCOMPARE(line.proxy.statements(), 2);
        // Given up, or refused at the second time, it may be stored all the same.
        const char* taking_20 = "update branch_code set code_bran=20";
        for (const bool goes_on : {false, true}) {
            line.watch.answer = [&] {
                line.direct.direct("update branch_code set code_bran=10;"
                                   "alter table branch_code add constraint not_20 check (code_bran<>20)");
                return goes_on;
            };
            line.proxy.cut_in_place_of_answer(1);
            QCOMPARE(failure_of([&] { line.db.write(taking_20); }), failure_kind::outcome_unknown);
            line.direct.direct("alter table branch_code drop constraint not_20");
            line.watch.answer = [] { return true; };
        }
    }

    void what_cannot_be_repeated_is_not_sent_again()
    {
        for (const auto& [text, codes] : {std::pair{insert, "10 20"}, {reckoning, "20"}}) {
            bad_line line;
            line.db.open();
            line.proxy.cut_in_place_of_answer(1);
            try {
                line.db.write(text);
                QFAIL("nobody answered");
            } catch (const db_failure& failure) {
                QCOMPARE(failure.kind(), failure_kind::outcome_unknown);
                QCOMPARE(failure.statement(), QString{text});
            }
            QCOMPARE(line.proxy.statements(), 1);
            QVERIFY(line.watch.asked.empty());
            QCOMPARE(line.codes(), QString{codes});
            QVERIFY(line.db.number(count_of_branches) > 0); // the next statement has the line again
        }
    }

    void an_answer_that_comes_too_late_is_nobodys()
    {
        bad_line line{std::chrono::seconds{15}, std::chrono::seconds{0}};
        line.db.open();
        line.watch.answer = [] { return false; };
        line.proxy.hold_answers();
        QCOMPARE(failure_of([&] { line.db.read("select branch_name from branch_code"); }),
                 failure_kind::line_lost);
        line.proxy.resume();
        line.watch.answer = [] { return true; };
        QCOMPARE(line.db.number(count_of_branches), 1);
        line.proxy.hold_answers();
        QCOMPARE(failure_of([&] { line.db.write(insert); }), failure_kind::outcome_unknown);
        line.proxy.resume();
        QCOMPARE(line.db.number(count_of_branches), 2); // the operator looks
        QCOMPARE(line.db.write("update branch_code set code_bran=code_bran+1 where code_bran>'10'"), 1);
        QCOMPARE(line.codes(), QStringLiteral("10 21"));
    }

    void what_is_ended_on_a_stalled_line_ends_soon()
    {
        bad_line line;
        line.direct.write("delete from branch_code");
        load_branches(line.direct, 20'000);
        line.db.open();
        line.db.number(count_of_branches);
        class leaving_rows : public rows {
        public:
            explicit leaving_rows(pausable_proxy& over) : proxy{over} {}
            bool take(std::span<const cell>) override { return proxy.hold_answers(), false; }
            pausable_proxy& proxy;
        } leaving{line.proxy};
        const auto read = [&] { line.db.read(count_of_branches); };
        const std::function<void()> ways[] = {
            [&] { QCOMPARE(failure_of(read), failure_kind::cancelled); }, // prepared, and in a pipeline
            [&] {
                QCOMPARE(failure_of([&] { line.db.read("select * from job_line"); }),
                         failure_kind::cancelled);
            },
            [&] { line.db.read_each("select * from branch_code", {}, leaving); },
        };
        for (const auto& leave : ways) {
            if (&leave != &ways[2])
                line.proxy.hold_answers();
            line.watch.patience = std::chrono::milliseconds{60};
            QElapsedTimer clock;
            clock.start();
            leave();
            QVERIFY2(clock.elapsed() < 3000, qPrintable(QString::number(clock.elapsed())));
            line.proxy.resume();
            line.watch.patience = std::chrono::minutes{1};
            line.db.number(count_of_branches);
        }
        QCOMPARE(line.watch.asked.size(), std::size_t{3});
    }

    void a_read_that_breaks_off_begins_anew()
    {
        bad_line line;
        line.direct.write("delete from branch_code");
        load_branches(line.direct, 20'000);
        line.db.open();
        class counting_rows : public rows {
        public:
            void begin(const column_names& names) override
            {
                before = size();
                rows::begin(names);
            }
            std::size_t before = 0;
        } found;
        line.proxy.cut_after(150'000);
        line.db.read_each("select * from branch_code", {}, found);
        QVERIFY(found.before > 0 && found.before < 20'000);
        QCOMPARE(found.size(), std::size_t{20'000});
        for (std::size_t i = 0; i < found.size(); ++i)
            QCOMPARE(found[i].number("code_bran"), static_cast<qint64>(i + 1));
        QCOMPARE(line.watch.asked.size(), std::size_t{1});
    }

    void statements_are_prepared_anew_behind_a_cut()
    {
        bad_line line;
        a_member{"9001011234568"}.store_in(line.direct);
        line.db.open();
        for (int time = 0; time < 3; ++time) {
            for (const char* name : {"영희", "철수"})
                QCOMPARE(
                    line.db.read("select * from person_m_tbl where pers_name like '%{key}%'", {{"key", name}})
                        .size(),
                    std::size_t{name == std::string_view{"영희"}});
            line.proxy.cut_lines();
        }
    }

    void statements_are_prepared_anew_for_a_changed_table()
    {
        bad_line line;
        line.db.open();
        const char* all = "select * from branch_code";
        const char* renaming = "update branch_code set branch_name='부산'";
        line.db.write(renaming);
        QCOMPARE(line.db.read(all).columns().size(), std::size_t{2});
        line.direct.direct("alter table branch_code add column place text");
        QCOMPARE(line.db.read_together({{count_of_branches}, {all}})[1].columns().size(), std::size_t{3});
        line.direct.direct("alter table branch_code drop column place");
        QCOMPARE(line.db.read(all).columns().size(), std::size_t{2});
        line.db.direct("deallocate all");
        QCOMPARE(line.db.write(renaming), 1);
        QVERIFY(line.watch.asked.empty());
    }
};

QTEST_GUILESS_MAIN(lost_line_test)
#include "lost_line_test.moc"

#include "db/hindrance.h"
#include "support/builders.h"
#include "support/failure_of.h"
#include "support/tds_server.h"
#include "support/test_register.h"

#include <QElapsedTimer>
#include <QTest>

using namespace orvo;
using enum failure_kind;

namespace {

class hasty_watch : public line_watch {
public:
    bool try_again(const db_failure&) override { return ++asked, tries_again; }
    bool keep_waiting(std::chrono::milliseconds waited, bool) override { return waited < patience; }
    std::chrono::milliseconds patience{60'000};
    bool tries_again = false;
    int asked = 0;
};

/// A server on files of its own, and a line to it.
struct server_at_hand {
    server_at_hand() { db.set_watch(&watch); }
    connection connect(int seconds = 20) const
    {
        server_address address = server.address();
        address.statement_timeout = std::chrono::seconds{seconds};
        connection line = make_connection(address, database::server);
        line.open();
        return line;
    }
    test_register files{engine::embedded};
    tds_server server{files.address()};
    hasty_watch watch;
    connection db{connect()};
};

constexpr const char* branches = "select * from branch_code";
constexpr const char* insert = "insert into branch_code (code_bran) values (0)";
constexpr const char* renaming = "update branch_code set branch_name='부산'";

} // namespace

class odbc_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void texts_go_over_the_line_as_they_stand()
    {
        server_at_hand at;
        const values given{{"name", "O'Neill {d '1'} ? -- 🍚\\"}, {"code", 7}, {"less", -5}, {"none", ""}};
        at.db.write("insert into  branch_code(code_bran,branch_name)values('{code}','{name}')", given);
        at.db.read("select * from branch_code where code_bran>={code}and branch_name LIKE '%{name}%'", given);
        at.db.write("update branch_code set code_bran=code_bran-{less} where branch_name='{name}'", given);
        at.db.write("delete branch_code where code_bran='{none}'", given);
        const QString name = QStringLiteral("O''Neill {d ''1''} ? -- 🍚\\");
        QCOMPARE(
            at.server.take_batches(),
            (QStringList{"insert into  branch_code(code_bran,branch_name)values('7','" + name + "')",
                         "select * from branch_code where code_bran>=7and branch_name LIKE '%" + name + "%'",
                         "update branch_code set code_bran=code_bran-(-5) where branch_name='" + name + "'",
                         "delete branch_code where code_bran=''"}));
        QCOMPARE(at.server.refused_calls(), 0); // nothing is prepared, nothing scrolls
    }

    void failures_bear_the_engines_number_and_text()
    {
        server_at_hand at;
        const std::pair<int, failure_kind> cases[] = {{2627, duplicate}, {245, conversion}, {2628, overflow},
                                                      {9002, disk_full}, {229, other},      {208, other}};
        for (const auto& [number, kind] : cases) {
            at.server.answer_with({number, QStringLiteral("거절 'x'")});
            const db_failure why = caught([&] { at.db.read(branches); });
            QCOMPARE(why.kind(), kind);
            QCOMPARE(hindrance_of(engine::sqlserver, why), number == 208   ? hindrance::no_table
                                                           : number == 229 ? hindrance::no_right
                                                                           : hindrance::other);
            QVERIFY(at.db.read(branches).empty()); // the line is as good as before
            at.server.refuse_logins({number, QStringLiteral("거절 'x'")});
            try {
                at.connect();
                QFAIL("nothing failed");
            } catch (const db_failure& failure) {
                QCOMPARE(failure.text(), QStringLiteral("거절 'x'"));
                QCOMPARE(failure.details(), QStringLiteral("거절 'x'\n[%1]").arg(number));
            }
        }
        at.server.refuse_logins();
        QCOMPARE(failure_of([&] { at.connect(); }), login_refused);
    }

    void a_hundred_thousand_rows_come_whole()
    {
        server_at_hand at;
        load_branches(at.db, 320);
        const rows all = at.db.read("select a.code_bran as code_bran,b.branch_name as branch_name from "
                                    "branch_code a,branch_code b");
        QCOMPARE(all.size(), std::size_t{102'400});
        qint64 sum = 0;
        for (const auto row : all)
            sum += row.text("branch_name") == QStringLiteral("서울") ? row.number("code_bran") : 0;
        QCOMPARE(sum, 320 * (320 * 321 / 2));
    }

    void a_line_that_breaks_is_told()
    {
        server_at_hand at;
        load_branches(at.db, 10'000);
        at.server.cut_after_rows(5000);
        QCOMPARE(failure_of([&] { at.db.read(branches); }), line_lost);
        at.db.open();
        at.server.cut_in_place_of_answer();
        QCOMPARE(failure_of([&] { at.db.write(insert); }), outcome_unknown);
        QCOMPARE(failure_of([&] { at.db.write(insert); }), line_lost); // not sent
        at.db.open();
        QTest::qWait(1100);
        at.server.cut_lines(); // while nothing is under way: no doubt about what follows
        at.watch.tries_again = true;
        QCOMPARE(at.db.write("insert into branch_code (code_bran) values (10001)"), 1);
        QCOMPARE(at.watch.asked, 3);
        QCOMPARE(at.db.read(branches).size(), std::size_t{10'002});
    }

    void a_server_that_never_answers_is_left()
    {
        enum { held, busy, silent };
        for (const auto how : {held, busy, silent}) {
            const bool hears = how != silent;
            server_at_hand at;
            load_branches(at.db, 1);
            connection short_of_time = at.connect(1);
            how == held ? at.server.hold_answers() : hears ? at.server.keep_busy() : at.server.keep_silent();
            QCOMPARE(failure_of([&] { short_of_time.read(branches); }), hears ? timed_out : line_lost);
            // The client's own patience is no word of the server's: what it was sent may be done.
            for (const char* text : {insert, renaming}) {
                if (how == silent)
                    break;
                try {
                    at.connect(1).write(text);
                    QFAIL("nobody answered");
                } catch (const db_failure& failure) {
                    QCOMPARE(failure.kind(), outcome_unknown);
                    QCOMPARE(failure.statement(), QString{text});
                }
            }
            if (hears) { // a line that rested is asked whether it holds before it gets such a write
                at.server.take_batches();
                QCOMPARE(failure_of([&] { short_of_time.write(insert); }), timed_out);
                QCOMPARE(at.server.take_batches(), QStringList{"select 1"});
            }
            QCOMPARE(
                at.files.connect().number("select count(*) as n from branch_code where branch_name='부산'"),
                how == held ? 2 : 0);
            at.watch.patience = std::chrono::milliseconds{100};
            QCOMPARE(failure_of([&] { at.db.read(branches); }), cancelled);
            at.server.resume();
            at.watch.patience = std::chrono::minutes{1};
            at.watch.tries_again = true;
            QCOMPARE(at.db.read(branches).size(), std::size_t(how == held ? 2 : 1));
            QCOMPARE(at.watch.asked, hears ? 0 : 1);
        }
        server_at_hand at;
        load_branches(at.db, 20'000);
        class leaving_rows : public rows {
        public:
            explicit leaving_rows(tds_server& of) : server{of} {}
            bool take(std::span<const cell>) override { return server.keep_silent(), false; }
            tds_server& server;
        } leaving{at.server};
        QElapsedTimer clock;
        clock.start();
        at.db.read_each(branches, {}, leaving);
        QVERIFY2(clock.elapsed() < 4000, qPrintable(QString::number(clock.elapsed())));
        at.server.resume();
        at.watch.tries_again = true;
        QCOMPARE(at.db.read(branches).size(), std::size_t{20'000});
    }
};

QTEST_GUILESS_MAIN(odbc_test)
#include "odbc_test.moc"

#include "support/builders.h"
#include "support/failure_of.h"
#include "support/tds_server.h"
#include "support/test_register.h"

#include <QElapsedTimer>
#include <QTest>

using namespace orvo;

namespace {

class hasty_watch : public line_watch {
public:
    bool try_again(const db_failure&) override { return false; }
    bool keep_waiting(std::chrono::milliseconds waited, bool) override { return waited < patience; }
    std::chrono::milliseconds patience{60'000};
};

/// A server on files of its own, and a line to it.
struct server_at_hand {
    server_at_hand() : server{its_address()}, db{connect()} { db.set_watch(&watch); }

    server_address its_address() const
    {
        server_address address = files.address();
        address.user = QStringLiteral("사용자");
        address.password = QStringLiteral("p;w}d{ 'x=");
        return address;
    }
    connection connect(database which = database::server, int seconds = 20) const
    {
        server_address address = server.address();
        address.connect_timeout = address.statement_timeout = std::chrono::seconds{seconds};
        connection line = make_connection(address, which);
        line.open();
        return line;
    }

    test_register files{engine::embedded};
    tds_server server;
    hasty_watch watch;
    connection db;
};

constexpr const char* all_branches = "select * from branch_code";
constexpr const char* insert = "insert into branch_code (code_bran) values (0)";

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
        const QStringList expected{
            "insert into  branch_code(code_bran,branch_name)values('7','" + name + "')",
            "select * from branch_code where code_bran>=7and branch_name LIKE '%" + name + "%'",
            "update branch_code set code_bran=code_bran-(-5) where branch_name='" + name + "'",
            "delete branch_code where code_bran=''"};
        QCOMPARE(at.server.take_batches(), expected);
        QCOMPARE(at.db.read(all_branches).front().number("code_bran"), 12);
        QCOMPARE(at.server.refused_calls(), 0); // nothing is prepared, nothing scrolls
    }

    void long_texts_come_whole()
    {
        server_at_hand at;
        connection mail = at.connect(database::mail);
        mail.write("insert into tbl_tempmail (mailto,message) values ('a@b','')");
        // With one of the two heads the halves of a letter lie on both sides of where a piece ends.
        for (const char* head : {"", "a"}) {
            const values given{{"text", head + QStringLiteral("🍚").repeated(50'000) + u'끝'}};
            mail.write("update tbl_tempmail set message='{text}'", given);
            QVERIFY(mail.read("select * from tbl_tempmail").front().text("message").toStdString() ==
                    given.of("text"));
        }
    }

    void failures_bear_the_engines_number_and_text()
    {
        server_at_hand at;
        const std::pair<int, failure_kind> cases[] = {
            {2627, failure_kind::duplicate}, {2601, failure_kind::duplicate},
            {245, failure_kind::conversion}, {8115, failure_kind::overflow},
            {2628, failure_kind::overflow},  {220, failure_kind::overflow},
            {9002, failure_kind::disk_full}, {229, failure_kind::login_refused},
            {208, failure_kind::other},
        };
        for (const auto& [number, kind] : cases) {
            at.server.answer_with({number, QStringLiteral("거절 'x'")});
            at.server.refuse_logins({number, QStringLiteral("거절 'x'")});
            for (const bool at_login : {false, true})
                try {
                    at_login ? void(at.connect()) : void(at.db.read(all_branches));
                    QFAIL("nothing failed");
                } catch (const db_failure& failure) {
                    QCOMPARE(failure.text(), QStringLiteral("[%1] 거절 'x'").arg(number));
                    QVERIFY(at_login ? failure.kind() == kind || failure.kind() == failure_kind::line_lost
                                     : failure.kind() == kind);
                }
            QVERIFY(at.db.read(all_branches).empty()); // the line is as good as before
        }
        at.server.refuse_logins();
        QCOMPARE(failure_of([&] { at.connect(); }), failure_kind::login_refused);
    }

    void a_line_that_breaks_is_told()
    {
        server_at_hand at;
        load_branches(at.db, 10'000);
        at.server.cut_after_rows(5000);
        QCOMPARE(failure_of([&] { at.db.read(all_branches); }), failure_kind::line_lost);
        at.db.open();
        at.server.cut_in_place_of_answer();
        QCOMPARE(failure_of([&] { at.db.write(insert); }), failure_kind::outcome_unknown);
        QCOMPARE(failure_of([&] { at.db.write(insert); }), failure_kind::line_lost); // not sent
        at.db.open();
        QCOMPARE(at.db.read(all_branches).size(), std::size_t{10'001});
        at.server.refuse();
        QCOMPARE(failure_of([&] { at.connect(); }), failure_kind::line_lost);
    }

    void a_server_that_never_answers_is_left()
    {
        for (const bool hears : {true, false}) {
            server_at_hand at;
            connection short_of_time = at.connect(database::server, 1);
            hears ? at.server.keep_busy() : at.server.keep_silent();
            QCOMPARE(failure_of([&] { short_of_time.read(all_branches); }),
                     hears ? failure_kind::timed_out : failure_kind::line_lost);
            at.watch.patience = std::chrono::milliseconds{100};
            QElapsedTimer clock;
            clock.start();
            QCOMPARE(failure_of([&] { at.db.read(all_branches); }), failure_kind::cancelled);
            QVERIFY(clock.elapsed() < 4000);
            at.server.resume();
            at.watch.patience = std::chrono::milliseconds{60'000};
            if (!hears)
                at.db.open();
            QVERIFY(at.db.read(all_branches).empty());
        }
    }
};

QTEST_GUILESS_MAIN(odbc_test)
#include "odbc_test.moc"

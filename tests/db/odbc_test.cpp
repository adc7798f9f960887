#include "support/builders.h"
#include "support/engines.h"
#include "support/failure_of.h"
#include "support/tds_server.h"
#include "support/test_register.h"

#include <QElapsedTimer>
#include <QTest>

using namespace orvo;

namespace {

/// Waits so long and no longer, and does not want a lost line back.
class hasty_watch : public line_watch {
public:
    bool try_again(const db_failure&) override { return false; }
    bool keep_waiting(std::chrono::milliseconds waited, bool) override { return waited < patience; }
    std::chrono::milliseconds patience{60'000};
};

/// A server on files of its own, and a line to it.
struct server_at_hand {
    server_at_hand() : db{reconnect()} { db.set_watch(&watch); }

    connection reconnect(std::chrono::seconds timeout = std::chrono::seconds{20})
    {
        server_address address = server.address();
        address.connect_timeout = address.statement_timeout = timeout;
        connection line = make_connection(address, database::server);
        line.open();
        return line;
    }

    test_register files{engine::embedded};
    tds_server server{[this] {
        server_address address = files.address();
        address.user = QStringLiteral("사용자");
        address.password = QStringLiteral("p;w}d{ 'x=");
        return address;
    }()};
    hasty_watch watch;
    connection db;
};

constexpr const char* all_branches = "select * from branch_code";

/// What a failure says, beside its kind.
std::pair<failure_kind, QString> words_of(const std::function<void()>& act)
{
    try {
        act();
    } catch (const db_failure& failure) {
        return {failure.kind(), failure.text()};
    }
    return {failure_kind::other, QStringLiteral("nothing failed")};
}

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
        const QStringList expected{
            "insert into  branch_code(code_bran,branch_name)values('7','O''Neill {d ''1''} ? -- 🍚\\')",
            "select * from branch_code where code_bran>=7and branch_name LIKE '%O''Neill {d ''1''} ? -- "
            "🍚\\%'",
            "update branch_code set code_bran=code_bran-(-5) where branch_name='O''Neill {d ''1''} ? -- 🍚\\'",
            "delete branch_code where code_bran=''"};
        QCOMPARE(at.server.take_batches(), expected);
        QCOMPARE(at.db.read(all_branches).front().number("code_bran"), 12);
        QCOMPARE(at.server.refused_calls(), 0);
    }

    void long_texts_come_whole()
    {
        server_at_hand at;
        connection mail = make_connection(at.server.address(), database::mail);
        mail.open();
        // Pairs of halves lie across the borders of the pieces at one of the two, wherever those are.
        for (const QString& head : {QString{}, QStringLiteral("a")}) {
            const values given{{"text", head + QStringLiteral("🍚").repeated(50'000) + u'끝'}};
            mail.write("insert into tbl_tempmail (mailto,message) values ('{text}','')", {{"text", head}});
            mail.write("update tbl_tempmail set message='{text}'", given);
            QCOMPARE(mail.read("select * from tbl_tempmail").front().text("message").toStdString(),
                     given.of("text"));
        }
    }

    void failures_bear_the_engines_number_and_text_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<failure_kind>("kind");
        for (const auto& [number, kind] : {std::pair{2627, failure_kind::duplicate},
                                           {2601, failure_kind::duplicate},
                                           {245, failure_kind::conversion},
                                           {8115, failure_kind::overflow},
                                           {2628, failure_kind::overflow},
                                           {229, failure_kind::login_refused},
                                           {9002, failure_kind::disk_full},
                                           {208, failure_kind::other}})
            QTest::addRow("%d", number) << number << kind;
    }
    void failures_bear_the_engines_number_and_text()
    {
        QFETCH(int, number);
        QFETCH(failure_kind, kind);
        server_at_hand at;
        at.server.answer_with({number, QStringLiteral("거절 'x'")});
        const QString words = QStringLiteral("[%1] 거절 'x'").arg(number);
        QCOMPARE(words_of([&] { at.db.read(all_branches); }), std::pair(kind, words));
        QCOMPARE(at.db.read(all_branches).size(), std::size_t{0}); // the line is as good as before
        at.server.refuse_logins({number, QStringLiteral("거절 'x'")});
        const auto [refused, its_words] = words_of([&] { at.reconnect(); });
        QCOMPARE(refused == failure_kind::login_refused, kind == failure_kind::login_refused);
        QCOMPARE(its_words, words);
    }

    void a_line_that_breaks_is_told()
    {
        server_at_hand at;
        load_branches(at.db, 10'000);
        at.server.cut_after_rows(5000);
        QCOMPARE(failure_of([&] { at.db.read(all_branches); }), failure_kind::line_lost);
        at.db.open();
        at.server.cut_in_place_of_answer();
        QCOMPARE(failure_of([&] { at.db.write("insert into branch_code (code_bran) values (0)"); }),
                 failure_kind::outcome_unknown);
        at.db.open();
        QCOMPARE(at.db.read(all_branches).size(), std::size_t{10'001});
        at.server.refuse();
        QCOMPARE(failure_of([&] { at.reconnect(); }), failure_kind::line_lost);
        QCOMPARE(failure_of([&] { at.db.read(all_branches); }), failure_kind::line_lost);
    }

    void a_server_that_never_answers_is_left_data()
    {
        QTest::addColumn<bool>("hears");
        QTest::newRow("it hears that nobody waits") << true;
        QTest::newRow("it hears nothing") << false;
    }
    void a_server_that_never_answers_is_left()
    {
        QFETCH(bool, hears);
        server_at_hand at;
        connection short_of_time = at.reconnect(std::chrono::seconds{1});
        hears ? at.server.keep_busy() : at.server.keep_silent();
        QCOMPARE(failure_of([&] { short_of_time.read(all_branches); }),
                 hears ? failure_kind::timed_out : failure_kind::line_lost);
        at.watch.patience = std::chrono::milliseconds{100};
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(failure_of([&] { at.db.read(all_branches); }), failure_kind::cancelled);
        QVERIFY2(clock.elapsed() < 4000, qPrintable(QString::number(clock.elapsed())));
        at.server.resume();
        at.watch.patience = std::chrono::milliseconds{60'000};
        if (!hears)
            at.db.open();
        QCOMPARE(at.db.read(all_branches).size(), std::size_t{0});
    }
};

QTEST_GUILESS_MAIN(odbc_test)
#include "odbc_test.moc"

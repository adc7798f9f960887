#include "support/builders.h"
#include "support/engines.h"
#include "support/failure_of.h"
#include "support/test_register.h"

#include <QElapsedTimer>
#include <QTest>

#include <thread>

using namespace orvo;

namespace {

/// Two thousand rows by two thousand: enough work to be asked about on any machine.
const std::string slow_read = "select a.*,b.* from branch_code a,branch_code b";

/// Does something at every row.
class acting_sink : public row_sink {
public:
    explicit acting_sink(std::function<bool(int)> act) : act_{std::move(act)} {}
    void begin(const column_names&) override {}
    bool take(std::span<const cell>) override { return act_(++taken); }

    int taken = 0;

private:
    std::function<bool(int)> act_;
};

/// Wants to wait for nothing.
class hasty_watch : public line_watch {
public:
    bool try_again(const db_failure&) override { return was_asked = true, false; }
    bool keep_waiting(std::chrono::milliseconds, bool can_end) override
    {
        (can_end ? could_end : could_not_end) = true;
        return false;
    }

    bool was_asked = false;
    bool could_end = false;
    bool could_not_end = false;
};

} // namespace

class connection_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void texts_come_back_as_they_were_given_data() { engines_under_test(); }
    void texts_come_back_as_they_were_given()
    {
        FETCH_ENGINE(kind);
        const test_register empty{kind};
        connection mail = empty.connect(database::mail);
        const std::pair<QString, QString> texts[] = {
            {"O'Neill's ''", {}},
            {"C:\\new\\", {}},
            {"영양 🍚 관리", {}},
            {"? $1 :a @b %", {}},
            {"{message}", {}},
            {"첫째\n\r\n\t셋째", {}},
            {"'); drop --", {}},
            {"  가  ", {}},
            {QString{10'000, QChar{u'한'}}, {}},
            // in one of the two the halves of a letter lie in two pieces of the result
            {QStringLiteral("🍚").repeated(50'000), {}},
            {u'a' + QStringLiteral("🍚").repeated(50'000), {}},
            {"", {}},
            {QString::fromUtf8("가\0나", 7), "가나"},
        };
        for (const auto& [text, instead] : texts) {
            const values given{{"text", text}};
            mail.write("insert into tbl_tempmail (mailto,message) values ('a@b','{text}')", given);
            const rows found = mail.read("select * from tbl_tempmail where message='{text}'", given);
            QCOMPARE(found.size(), std::size_t{1});
            QCOMPARE(found.front().text("message"), instead.isEmpty() ? text : instead);
            QVERIFY(!found.front().is_null("message"));
        }
    }

    void a_null_is_told_from_an_empty_text_data() { engines_under_test(); }
    void a_null_is_told_from_an_empty_text()
    {
        FETCH_ENGINE(kind);
        const test_register empty{kind};
        const rows none = empty.connect().read("select max(code_bran) as m_code from branch_code");
        QCOMPARE(none.size(), std::size_t{1});
        QVERIFY(none.front().is_null("m_code"));
        QCOMPARE(none.front().number("m_code"), 0);
        QVERIFY_EXCEPTION_THROWN(none.front().text("no_such_column"), std::logic_error);
    }

    void failures_bear_their_numbers_data() { engines_under_test(); }
    void failures_bear_their_numbers()
    {
        FETCH_ENGINE(kind);
        const test_register empty{kind};
        connection db = empty.connect();
        load_branches(db, 10);
        const std::tuple<const char*, failure_kind, std::uint32_t> cases[] = {
            {"insert into branch_code (code_bran) values (10)", failure_kind::duplicate, 0x80040E2F},
            {"update branch_code set code_bran='{text}'", failure_kind::conversion, 0x80040E07},
            {"update branch_code set code_bran='서울'", failure_kind::conversion, 0x80040E07},
            {"insert into branch_code (code_bran) values (3000000000)", failure_kind::overflow, 0x80040E57},
            {"update branch_code set code_bran='{large}'", failure_kind::overflow, 0x80040E57},
            {"update branch_code set branch_name='{long}'", failure_kind::overflow, 0x80040E57},
            {"update branch_code branch_name=1", failure_kind::other, 0x80040E14},
        };
        for (const auto& [text, why, number] : cases)
            try {
                db.write(text,
                         {{"text", "서울"}, {"large", qint64{3'000'000'000}}, {"long", QString{61, u'가'}}});
                QFAIL(text);
            } catch (const db_failure& failure) {
                QCOMPARE(failure.kind(), why);
                QCOMPARE(static_cast<std::uint32_t>(failure.number()), number);
                QCOMPARE(failure.statement(), QString::fromUtf8(text));
                QVERIFY(!failure.text().isEmpty());
            }
        try {
            db.read_together({{"select * from branch_code"}, {"select * from no_such_table"}});
            QFAIL("there is no such table");
        } catch (const db_failure& failure) {
            QCOMPARE(failure.statement(), QStringLiteral("select * from no_such_table"));
        }
        QVERIFY(db.is_up());
        QCOMPARE(db.number("select count(*) as n from branch_code where branch_name='서울'"), 10);
        if (kind == engine::postgresql) { // a missing right is no failed login
            db.direct("set role pg_signal_backend");
            QCOMPARE(failure_of([&] { db.read("select * from branch_code"); }), failure_kind::other);
        }
    }

    void a_transaction_is_undone_data() { engines_under_test(); }
    void a_transaction_is_undone()
    {
        FETCH_ENGINE(kind);
        const test_register empty{kind};
        connection db = empty.connect();
        load_branches(db, 3);
        const auto save = [&](const std::function<void()>& last) {
            transaction all_or_nothing{db};
            db.write("delete from branch_code where code_bran<>2");
            last();
            all_or_nothing.commit();
        };
        QVERIFY_EXCEPTION_THROWN(save([] { throw std::runtime_error{"midway"}; }), std::runtime_error);
        QCOMPARE(
            failure_of([&] { save([&] { db.write("insert into branch_code (code_bran) values (2)"); }); }),
            failure_kind::duplicate);
        QCOMPARE(db.number("select count(*) as n from branch_code"), 3);
        save([] {});
        QCOMPARE(empty.connect().number("select count(*) as n from branch_code"), 1);
    }

    void what_fails_at_the_commit_has_failed()
    {
        if (!is_at_hand(engine::postgresql))
            QSKIP("a failure at the commit is known to PostgreSQL alone");
        const test_register empty{engine::postgresql};
        connection db = empty.connect();
        db.direct("create table strict (code_bran int references branch_code deferrable initially deferred)");
        db.direct("insert into branch_code (code_bran) values (-7)");
        // It speaks as if a prepared statement had to be prepared anew.
        db.direct("create function refuse() returns trigger language plpgsql as "
                  "$$begin raise exception 'no' using errcode='0A000'; end$$");
        db.direct("create constraint trigger at_commit after insert on strict deferrable initially deferred "
                  "for each row when (new.code_bran<0) execute function refuse()");
        const char* insert = "insert into strict (code_bran) values ('7')";
        const auto one_row = [sent = false](std::vector<cell>& fields) mutable {
            fields.assign(1, cell::of(std::int64_t{7}));
            return !std::exchange(sent, true);
        };
        const auto in_transaction = [&](const std::function<void()>& act) {
            transaction all_or_nothing{db};
            act();
            all_or_nothing.commit();
        };
        const std::pair<const char*, std::function<void()>> cases[] = {
            {"23503", [&] { db.write(insert); }},
            {"23503", [&] { db.write(insert); }}, // which is prepared now
            {"23503",
             [&] {
                 const std::array seven{cell::of(std::int64_t{7})};
                 db.repeat("insert into strict (code_bran) values ('{code}')")(seven);
             }},
            {"23503", [&] { db.direct(insert); }},
            {"23503", [&] { db.load("strict", {"code_bran"}, one_row); }},
            {"23503", [&] { in_transaction([&] { db.write(insert); }); }},
            {"0A000", [&] { db.write("insert into strict (code_bran) values ('-7')"); }},
            {"",
             [&] { // a failure that somebody passed over
                 in_transaction([&] {
                     db.write("insert into strict (code_bran) values (null)");
                     failure_of([&] { db.direct("select 1/0"); });
                 });
             }},
        };
        for (const auto& [code, act] : cases)
            try {
                act();
                QFAIL("it was told as stored");
            } catch (const db_failure& failure) {
                QCOMPARE(failure.kind(), failure_kind::other);
                QCOMPARE(failure.code(), QString::fromLatin1(code));
                QCOMPARE(db.number("select count(*) as n from strict"), 0);
            }
        QCOMPARE(db.write("insert into strict (code_bran) values (null)"), 1);

        // Each of two reads what the other writes: the second to be committed has to go.
        db.direct("set default_transaction_isolation='serializable'");
        connection other = empty.connect();
        other.direct("set default_transaction_isolation='serializable'");
        class other_workstation : public line_watch {
        public:
            explicit other_workstation(connection& of) : line{of} {}
            bool try_again(const db_failure&) override { return false; }
            bool keep_waiting(std::chrono::milliseconds, bool) override
            {
                if (!std::exchange(done, true))
                    line.write("insert into job_line (job_line_code) select count(*) from branch_code");
                return true;
            }
            connection& line;
            bool done = false;
        } watch{other};
        db.set_watch(&watch);
        try {
            db.write("insert into branch_code (code_bran) select count(*)+1 from job_line,"
                     "(select pg_sleep(0.5)) as pause");
            QFAIL("it was told as stored");
        } catch (const db_failure& failure) {
            QCOMPARE(failure.code(), QStringLiteral("40001"));
        }
        QCOMPARE(db.number("select count(*) as n from branch_code"), 1);
        QCOMPARE(db.number("select count(*) as n from job_line"), 1);
    }

    void many_rows_are_loaded_data() { engines_under_test(); }
    void many_rows_are_loaded()
    {
        FETCH_ENGINE(kind);
        const test_register empty{kind};
        connection db = empty.connect();
        const std::vector<std::string> names{"가\t나", "다\n라", "마\\바", "\\N", "it's", "\r", ""};
        int fails_at = 0;
        int refused_at = 0;
        const auto load = [&] {
            int next = 0;
            db.load("branch_code", {"branch_name", "code_bran"}, [&](std::vector<cell>& fields) {
                if (next == 3000)
                    return false;
                if (++next == fails_at)
                    throw std::runtime_error{"no more"};
                fields.push_back(cell::of(std::string_view{names[next % names.size()]}));
                fields.push_back(cell::of(std::int64_t{next == refused_at ? 1 : next}));
                return true;
            });
        };
        fails_at = 2000;
        QVERIFY_EXCEPTION_THROWN(load(), std::runtime_error);
        fails_at = 0;
        refused_at = 2000;
        QCOMPARE(failure_of(load), failure_kind::duplicate);
        QCOMPARE(db.number("select count(*) as n from branch_code"), 0);
        refused_at = 0;
        load(); // what failed before has left the line as it was
        const rows found = db.read("select * from branch_code");
        QCOMPARE(found.size(), std::size_t{3000});
        for (std::size_t i = 0; i < found.size(); ++i) {
            QCOMPARE(found[i].number("code_bran"), static_cast<qint64>(i + 1));
            QCOMPARE(found[i].text("branch_name").toStdString(), names[(i + 1) % names.size()]);
        }
    }

    void a_repeated_write_takes_fields_as_they_come_data() { engines_under_test(); }
    void a_repeated_write_takes_fields_as_they_come()
    {
        FETCH_ENGINE(kind);
        const test_register empty{kind};
        connection db = empty.connect();
        repeated_write insert =
            db.repeat("insert into branch_code (code_bran,branch_name) values ('{code}','{name}')");
        const cell name = cell::of(std::string_view{"서울's"});
        const std::array three{std::array{cell::of(std::int64_t{7}), name},
                               std::array{cell::of(std::string_view{" 8 "}), cell{}},
                               std::array{cell{}, name}};
        for (const auto& row : three)
            insert(row);
        QString found;
        for (const auto row : db.read("select * from branch_code"))
            found += row.text("code_bran") + row.text("branch_name") + u' ';
        QCOMPARE(found, QStringLiteral("0서울's 7서울's 8 "));
        try {
            insert(three[0]);
            QFAIL("7 is stored already");
        } catch (const db_failure& failure) {
            QCOMPARE(failure.kind(), failure_kind::duplicate);
            QVERIFY(failure.statement().startsWith("insert into branch_code"));
        }
        for (const char* word : {"abc", "12x"})
            QCOMPARE(failure_of([&] {
                         insert(std::array{cell::of(std::string_view{word}), name});
                     }),
                     failure_kind::conversion);
    }

    void a_read_can_be_left_data() { engines_under_test(); }
    void a_read_can_be_left()
    {
        FETCH_ENGINE(kind);
        const test_register empty{kind};
        connection db = empty.connect();
        hasty_watch watch;
        load_branches(db, 20'000);
        const auto read = [&](const std::function<bool(int)>& act) {
            acting_sink reader{act};
            db.read_each("select * from branch_code", {}, reader);
            return reader.taken;
        };
        QCOMPARE(read([](int taken) { return taken < 5; }), 5);
        const auto failing = [](int) -> bool { throw std::runtime_error{"the reader fails"}; };
        QVERIFY_EXCEPTION_THROWN(read(failing), std::runtime_error);
        // An open read would keep the embedded engine from writing and PostgreSQL from hearing.
        QCOMPARE(db.write("update branch_code set branch_name='부산' where code_bran='1'"), 1);

        // A write inside the read is a mistake; what fails on another line is not this line's trouble.
        const auto writing = [](connection& to) {
            return [&to](int) { return to.write("delete from branch_code") > 0; };
        };
        QVERIFY_EXCEPTION_THROWN(read(writing(db)), std::logic_error);
        connection closed = make_connection(empty.address(), database::server);
        db.set_watch(&watch);
        QVERIFY_EXCEPTION_THROWN(read(writing(closed)), db_failure);
        QVERIFY(!watch.was_asked);
        db.set_watch(nullptr);
        QCOMPARE(read([](int) { return true; }), 20'000);
    }

    void the_operator_ends_a_slow_read_but_no_write_data() { engines_under_test(); }
    void the_operator_ends_a_slow_read_but_no_write()
    {
        FETCH_ENGINE(kind);
        const test_register empty{kind};
        connection db = empty.connect();
        load_branches(db, 2000);
        class impatient : public progress {
            bool go_on(qint64) override { return false; }
        } follower;
        acting_sink reader{[](int) { return true; }};
        QCOMPARE(failure_of([&] { db.read_each(slow_read, {}, reader, &follower); }),
                 failure_kind::cancelled);
        QVERIFY(reader.taken < 4'000'000);
        hasty_watch watch;
        db.set_watch(&watch);
        QCOMPARE(failure_of([&] { db.read(slow_read + " where a.branch_name<>b.branch_name"); }),
                 failure_kind::cancelled);
        QVERIFY(watch.could_end && !watch.could_not_end);
        QCOMPARE(
            db.write("update branch_code set branch_name='부산' where code_bran='1' and (select count(*) "
                     "from branch_code a,branch_code b where a.branch_name<>b.branch_name)=0"),
            1);
        QVERIFY(watch.could_not_end);
    }

    void a_file_that_another_program_holds_is_waited_for()
    {
        const test_register empty{engine::embedded};
        connection other = empty.connect();
        server_address hasty = empty.address();
        hasty.file_timeout = std::chrono::seconds{1};
        connection db = make_connection(hasty, database::server);
        db.open();
        class holding_watch : public line_watch {
        public:
            bool try_again(const db_failure&) override { return false; }
            bool keep_waiting(std::chrono::milliseconds, bool can_end) override
            {
                could_end = can_end; // though it is a write: nothing of it is done
                return goes_on();
            }
            bool could_end = false;
            std::function<bool()> goes_on;
        } watch;
        db.set_watch(&watch);
        const auto write = [&] { db.write("insert into branch_code (code_bran) values (0)"); };
        watch.goes_on = [] { return false; };
        other.direct("begin immediate");
        QCOMPARE(failure_of(write), failure_kind::cancelled);
        QVERIFY(watch.could_end);
        watch.goes_on = [] { return true; };
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(failure_of(write), failure_kind::timed_out);
        QVERIFY2(clock.elapsed() >= 900 && clock.elapsed() < 2000,
                 qPrintable(QString::number(clock.elapsed())));
        watch.goes_on = [&] { return other.direct("commit"), true; };
        write();
        QCOMPARE(db.number("select count(*) as n from branch_code"), 1);
        db.close();
        other.direct("pragma locking_mode=exclusive");
        other.write("delete from branch_code");
        watch.goes_on = [] { return false; };
        QCOMPARE(failure_of([&] { db.open(); }), failure_kind::cancelled);
    }

    void the_server_ends_what_runs_too_long()
    {
        if (!is_at_hand(engine::postgresql))
            QSKIP("only a server has a time-out");
        const test_register empty{engine::postgresql};
        server_address server = empty.address();
        server.statement_timeout = std::chrono::seconds{1};
        connection db = make_connection(server, database::server);
        db.open();
        load_branches(db, 2000);
        // Rows that flow are not too long, however slowly they are read.
        acting_sink reader{[](int taken) {
            std::this_thread::sleep_for(std::chrono::milliseconds{taken == 1 ? 1500 : 0});
            return taken < 1'000'000;
        }};
        db.read_each(slow_read, {}, reader);
        QCOMPARE(reader.taken, 1'000'000);
        QCOMPARE(failure_of([&] { db.read("select pg_sleep(20) as nothing"); }), failure_kind::timed_out);
        QCOMPARE(db.number("select count(*) as n from branch_code"), 2000);
    }
};

QTEST_GUILESS_MAIN(connection_test)
#include "connection_test.moc"

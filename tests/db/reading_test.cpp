#include "support/builders.h"
#include "support/engines.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

namespace {

/// Counts rows and ends the reading, or fails, at a certain one.
class counting_sink : public row_sink {
public:
    explicit counting_sink(int last = std::numeric_limits<int>::max()) : last_{last} {}

    void begin(const column_names&) override { ++begun; }
    bool take(std::span<const cell>) override
    {
        if (++taken == last_ && fails)
            throw std::runtime_error{"the reader fails"};
        return taken < last_;
    }

    bool fails = false;
    int begun = 0;
    int taken = 0;

private:
    int last_;
};

/// Lets a read go on for some calls, then ends it.
class impatient : public progress {
public:
    bool go_on(qint64 so_far) override
    {
        heard = so_far;
        return false;
    }

    qint64 heard = -1;
};

/// Wants to wait for nothing.
class hasty_watch : public line_watch {
public:
    bool try_again(const db_failure&) override
    {
        was_asked = true;
        return false;
    }
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

class reading_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_read_can_be_left_data();
    void a_read_can_be_left();
    void a_read_can_be_cancelled_data() { engines_under_test(); }
    void a_read_can_be_cancelled();
    void the_operator_ends_a_slow_read_but_no_write_data() { engines_under_test(); }
    void the_operator_ends_a_slow_read_but_no_write();
    void the_server_ends_what_runs_too_long();
    void a_line_that_breaks_behind_the_reader_is_not_this_one_data() { engines_under_test(); }
    void a_line_that_breaks_behind_the_reader_is_not_this_one();
    void a_statement_inside_a_statement_is_the_callers_mistake_data() { engines_under_test(); }
    void a_statement_inside_a_statement_is_the_callers_mistake();
};

void reading_test::a_read_can_be_left_data()
{
    QTest::addColumn<engine>("kind");
    QTest::addColumn<bool>("fails");
    for (const engine kind : engines)
        for (const bool fails : {false, true})
            QTest::addRow("%s: %s", name_of(kind), fails ? "the reader fails" : "the reader has enough")
                << kind << fails;
}

void reading_test::a_read_can_be_left()
{
    FETCH_ENGINE(kind);
    QFETCH(bool, fails);
    const test_register empty{kind};
    connection db = empty.connect();
    load_branches(db, 20'000);
    counting_sink reader{5};
    reader.fails = fails;
    if (fails)
        QVERIFY_EXCEPTION_THROWN(db.read_each("select * from branch_code", {}, reader), std::runtime_error);
    else
        db.read_each("select * from branch_code", {}, reader);
    QCOMPARE(reader.taken, 5);
    // An open read would keep the embedded engine from writing and PostgreSQL from hearing.
    QCOMPARE(db.write("update branch_code set branch_name='부산' where code_bran='1'"), 1);
    counting_sink all;
    db.read_each("select * from branch_code", {}, all);
    QCOMPARE(all.taken, 20'000);
    QCOMPARE(all.begun, 1);
}

void reading_test::a_read_can_be_cancelled()
{
    FETCH_ENGINE(kind);
    const test_register empty{kind};
    connection db = empty.connect();
    load_branches(db, 2000);
    counting_sink reader;
    impatient follower;
    // Two thousand rows by two thousand are enough work for the follower to be asked on any machine.
    constexpr std::string_view text = "select a.*,b.* from branch_code a,branch_code b";
    try {
        db.read_each(text, {}, reader, &follower);
        QFAIL("nobody was asked");
    } catch (const db_failure& failure) {
        QCOMPARE(failure.kind(), failure_kind::cancelled);
    }
    QVERIFY(follower.heard >= 0);
    QVERIFY(reader.taken < 4'000'000);
    QCOMPARE(db.number("select count(*) as n from branch_code"), 2000);
    QCOMPARE(db.write("delete from branch_code"), 2000);
}

void reading_test::the_operator_ends_a_slow_read_but_no_write()
{
    FETCH_ENGINE(kind);
    const test_register empty{kind};
    connection db = empty.connect();
    load_branches(db, 2000);
    hasty_watch watch;
    db.set_watch(&watch);
    try {
        db.read("select a.*,b.* from branch_code a,branch_code b where a.branch_name<>b.branch_name");
        QFAIL("nobody was asked");
    } catch (const db_failure& failure) {
        QCOMPARE(failure.kind(), failure_kind::cancelled);
    }
    QVERIFY(watch.could_end);
    QVERIFY(!watch.could_not_end);
    const qint64 written = db.write("update branch_code set branch_name='부산' where code_bran='1' and "
                                    "(select count(*) from branch_code a,branch_code b "
                                    "where a.branch_name<>b.branch_name)=0");
    QCOMPARE(written, 1);
    QVERIFY(watch.could_not_end);
}

void reading_test::the_server_ends_what_runs_too_long()
{
    if (!is_at_hand(engine::postgresql))
        QSKIP("only a server has a time-out");
    const test_register empty{engine::postgresql};
    server_address server = empty.address();
    server.statement_timeout = std::chrono::seconds{1};
    connection db = make_connection(server, database::server);
    db.open();
    try {
        db.read("select pg_sleep(20) as nothing");
        QFAIL("the server was patient");
    } catch (const db_failure& failure) {
        QCOMPARE(failure.kind(), failure_kind::timed_out);
        QCOMPARE(static_cast<std::uint32_t>(failure.number()), 0x80040E31u);
    }
    QCOMPARE(db.number("select count(*) as n from branch_code"), 0);
}

void reading_test::a_line_that_breaks_behind_the_reader_is_not_this_one()
{
    FETCH_ENGINE(kind);
    const test_register from{kind};
    const test_register to{kind};
    connection db = from.connect();
    load_branches(db, 2000);
    class copying_sink : public row_sink {
    public:
        explicit copying_sink(connection& target) : target_{target} {}
        void begin(const column_names&) override { ++begun; }
        bool take(std::span<const cell>) override { return target_.write("delete from branch_code") >= 0; }
        int begun = 0;

    private:
        connection& target_;
    };
    connection closed = make_connection(to.address(), database::server);
    copying_sink copy{closed};
    hasty_watch watch;
    db.set_watch(&watch);
    QVERIFY_EXCEPTION_THROWN(db.read_each("select * from branch_code", {}, copy), db_failure);
    QCOMPARE(copy.begun, 1);
    QVERIFY(!watch.was_asked);
    QCOMPARE(db.write("delete from branch_code"), 2000);
}

void reading_test::a_statement_inside_a_statement_is_the_callers_mistake()
{
    FETCH_ENGINE(kind);
    const test_register empty{kind};
    connection db = empty.connect();
    load_branches(db, 3);
    class writing_sink : public row_sink {
    public:
        explicit writing_sink(connection& to) : to_{to} {}
        void begin(const column_names&) override {}
        bool take(std::span<const cell>) override { return to_.write("delete from branch_code") > 0; }

    private:
        connection& to_;
    } writer{db};
    QVERIFY_EXCEPTION_THROWN(db.read_each("select * from branch_code", {}, writer), std::logic_error);
    QCOMPARE(db.number("select count(*) as n from branch_code"), 3);
}

QTEST_GUILESS_MAIN(reading_test)
#include "reading_test.moc"

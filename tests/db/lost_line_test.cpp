#include "support/builders.h"
#include "support/engines.h"
#include "support/failure_of.h"
#include "support/pausable_proxy.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

namespace {

/// Answers the question of a lost line, and keeps what it was told.
class answering_watch : public line_watch {
public:
    explicit answering_watch(std::function<bool()> answer = [] { return true; }) : answer_{std::move(answer)}
    {
    }

    bool try_again(const db_failure& lost) override
    {
        asked.push_back(lost.statement());
        numbers.push_back(lost.number());
        return answer_();
    }
    bool keep_waiting(std::chrono::milliseconds waited, bool) override { return waited < patience; }

    std::vector<QString> asked;
    std::vector<std::int32_t> numbers;
    std::chrono::milliseconds patience{60'000};

private:
    std::function<bool()> answer_;
};

/// A register behind a line that can break, with one line open.
struct bad_line {
    explicit bad_line(std::function<bool()> answer = [] { return true; })
        : proxy{its_register.address()}, watch{std::move(answer)}, direct{its_register.connect()},
          db{make_connection(proxy.address(), database::server)}
    {
        db.set_watch(&watch);
        db.open();
    }

    test_register its_register{engine::postgresql};
    pausable_proxy proxy;
    answering_watch watch;
    connection direct; ///< the same register past the proxy
    connection db;
};

constexpr std::string_view count_of_branches = "select count(*) as n from branch_code";
constexpr std::string_view new_branch =
    "insert into branch_code (code_bran,branch_name) values ({code},'서울')";

} // namespace

class lost_line_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void a_server_that_is_gone_cannot_be_opened();
    void a_silent_server_is_given_up_in_time();
    void waiting_for_a_silent_server_can_be_ended();
    void a_read_behind_a_cut_asks_once_and_goes_on();
    void a_line_that_is_cut_where_nobody_looked_is_noticed_data();
    void a_line_that_is_cut_where_nobody_looked_is_noticed();
    void it_is_asked_until_the_server_is_back();
    void giving_up_is_a_lost_line();
    void without_a_watch_nothing_is_tried_again();
    void a_transaction_is_not_gone_on_with();
    void an_assignment_without_an_answer_is_sent_again();
    void what_cannot_be_repeated_is_not_sent_again_data();
    void what_cannot_be_repeated_is_not_sent_again();
    void a_save_goes_on_with_the_very_statement();
    void a_read_that_breaks_off_begins_anew();
    void a_read_of_many_columns_is_prepared_anew_behind_a_cut();
    void a_server_that_shuts_a_session_is_a_lost_line();
};

void lost_line_test::init()
{
    if (!is_at_hand(engine::postgresql))
        QSKIP("ORVO_TEST_POSTGRESQL names no server; scripts/with_postgresql.sh starts one");
}

void lost_line_test::a_server_that_is_gone_cannot_be_opened()
{
    const test_register its_register{engine::postgresql};
    pausable_proxy proxy{its_register.address()};
    proxy.refuse();
    answering_watch watch;
    connection db = make_connection(proxy.address(), database::server);
    db.set_watch(&watch);
    try {
        db.open();
        QFAIL("nobody is there");
    } catch (const db_failure& failure) {
        QCOMPARE(failure.kind(), failure_kind::line_lost);
        QCOMPARE(failure.number(), error_number::unreachable);
        QVERIFY(!failure.text().isEmpty());
    }
    QVERIFY(!db.is_up());
    QVERIFY(watch.asked.empty()); // whoever opens asks
    proxy.resume();
    db.open();
    QVERIFY(db.is_up());
    QCOMPARE(db.number(count_of_branches), 0);
}

void lost_line_test::a_silent_server_is_given_up_in_time()
{
    const test_register its_register{engine::postgresql};
    pausable_proxy proxy{its_register.address()};
    proxy.keep_silent();
    server_address server = proxy.address();
    server.connect_timeout = std::chrono::seconds{1};
    connection db = make_connection(server, database::server);
    QElapsedTimer watch;
    watch.start();
    QCOMPARE(failure_of([&] { db.open(); }), failure_kind::line_lost);
    QVERIFY(watch.elapsed() >= 900);
    QVERIFY(watch.elapsed() < 5000);
}

void lost_line_test::waiting_for_a_silent_server_can_be_ended()
{
    const test_register its_register{engine::postgresql};
    pausable_proxy proxy{its_register.address()};
    proxy.keep_silent();
    answering_watch watch;
    watch.patience = std::chrono::milliseconds{60};
    connection db = make_connection(proxy.address(), database::server);
    db.set_watch(&watch);
    QCOMPARE(failure_of([&] { db.open(); }), failure_kind::cancelled);
    QVERIFY(!db.is_up());
    proxy.resume();
    db.open();
    QVERIFY(db.is_up());
}

void lost_line_test::a_read_behind_a_cut_asks_once_and_goes_on()
{
    bad_line line;
    QCOMPARE(line.db.number(count_of_branches), 0);
    line.direct.write(new_branch, {{"code", 10}});
    line.proxy.cut_lines();
    QCOMPARE(line.db.number(count_of_branches), 1);
    QCOMPARE(line.watch.asked, std::vector<QString>{QString::fromUtf8(count_of_branches.data())});
    QCOMPARE(line.watch.numbers, std::vector<std::int32_t>{error_number::unreachable});
    QCOMPARE(line.proxy.lines(), 2);
    QVERIFY(line.db.is_up());
}

void lost_line_test::a_line_that_is_cut_where_nobody_looked_is_noticed_data()
{
    QTest::addColumn<QByteArray>("text");
    // Noticed before it is sent, so that even what cannot be repeated is sent once and not lost.
    QTest::newRow("insert") << QByteArray{"insert into branch_code (code_bran) values (20)"};
    QTest::newRow("reckoning") << QByteArray{"update branch_code set code_bran=code_bran+10"};
    QTest::newRow("delete") << QByteArray{"delete branch_code where code_bran='20'"};
}

void lost_line_test::a_line_that_is_cut_where_nobody_looked_is_noticed()
{
    QFETCH(QByteArray, text);
    bad_line line;
    line.direct.write(new_branch, {{"code", 10}});
    line.db.write(text.toStdString());
    line.direct.write("delete from branch_code");
    line.direct.write(new_branch, {{"code", 10}});
    line.proxy.cut_lines();
    const int before = line.proxy.statements();
    line.db.write(text.toStdString());
    QCOMPARE(line.watch.asked.size(), std::size_t{1});
    QCOMPARE(line.proxy.statements() - before, 1);
}

void lost_line_test::it_is_asked_until_the_server_is_back()
{
    int answers = 0;
    pausable_proxy* proxy = nullptr;
    bad_line line{[&] {
        if (++answers == 3)
            proxy->resume();
        return true;
    }};
    proxy = &line.proxy;
    proxy->refuse();
    QCOMPARE(line.db.number(count_of_branches), 0);
    QCOMPARE(answers, 3);
    // Each question knows the statement that waits.
    for (const QString& statement : line.watch.asked)
        QCOMPARE(statement, QString::fromUtf8(count_of_branches.data()));
}

void lost_line_test::giving_up_is_a_lost_line()
{
    bad_line line{[] { return false; }};
    line.proxy.refuse();
    try {
        line.db.number(count_of_branches);
        QFAIL("nobody is there");
    } catch (const db_failure& failure) {
        QCOMPARE(failure.kind(), failure_kind::line_lost);
        QCOMPARE(failure.number(), error_number::unreachable);
        QCOMPARE(failure.statement(), QString::fromUtf8(count_of_branches.data()));
    }
    QCOMPARE(line.watch.asked.size(), std::size_t{1});
    QVERIFY(!line.db.is_up());
    // The next statement asks anew.
    QCOMPARE(failure_of([&] { line.db.write("delete from branch_code"); }), failure_kind::line_lost);
    QCOMPARE(line.watch.asked.size(), std::size_t{2});
}

void lost_line_test::without_a_watch_nothing_is_tried_again()
{
    bad_line line;
    line.db.set_watch(nullptr);
    line.proxy.cut_lines();
    QCOMPARE(failure_of([&] { line.db.read("select * from branch_code"); }), failure_kind::line_lost);
    QCOMPARE(line.proxy.lines(), 1);
    line.db.reopen();
    QVERIFY(line.db.read("select * from branch_code").empty());
}

void lost_line_test::a_transaction_is_not_gone_on_with()
{
    bad_line line;
    const auto save = [&] {
        transaction all_or_nothing{line.db};
        line.db.write(new_branch, {{"code", 10}});
        line.proxy.cut_lines();
        line.db.write(new_branch, {{"code", 20}});
        all_or_nothing.commit();
    };
    QCOMPARE(failure_of(save), failure_kind::line_lost);
    QVERIFY(line.watch.asked.empty());
    QCOMPARE(line.db.number(count_of_branches), 0);
    QCOMPARE(line.watch.asked.size(), std::size_t{1});
}

void lost_line_test::an_assignment_without_an_answer_is_sent_again()
{
    bad_line line;
    line.direct.write(new_branch, {{"code", 10}});
    line.proxy.cut_in_place_of_answer(1);
    QCOMPARE(
        line.db.write("update branch_code set branch_name='부산' where code_bran='{code}'", {{"code", 10}}),
        1);
    QCOMPARE(line.watch.asked.size(), std::size_t{1});
    QCOMPARE(line.proxy.statements(), 2);
    QCOMPARE(line.direct.read("select branch_name from branch_code").front().text("branch_name"),
             QStringLiteral("부산"));
}

void lost_line_test::what_cannot_be_repeated_is_not_sent_again_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("codes");
    QTest::newRow("insert") << QByteArray{"insert into branch_code (code_bran) values (20)"} << "10 20";
    QTest::newRow("reckoning") << QByteArray{"update branch_code set code_bran=code_bran+5"} << "15";
}

void lost_line_test::what_cannot_be_repeated_is_not_sent_again()
{
    QFETCH(QByteArray, text);
    bad_line line;
    line.direct.write(new_branch, {{"code", 10}});
    line.proxy.cut_in_place_of_answer(1);
    try {
        line.db.write(text.toStdString());
        QFAIL("nobody answered");
    } catch (const db_failure& failure) {
        QCOMPARE(failure.kind(), failure_kind::outcome_unknown);
        QCOMPARE(failure.statement(), QString::fromUtf8(text));
    }
    QCOMPARE(line.proxy.statements(), 1);
    QVERIFY(line.watch.asked.empty());
    QVERIFY(!line.db.is_up());
    QStringList found;
    for (const auto row : line.direct.read("select * from branch_code"))
        found.append(row.text("code_bran"));
    QTEST(found.join(u' '), "codes");
    // The line itself can be had again by the next statement.
    QCOMPARE(line.db.number(count_of_branches), qint64{found.size()});
}

void lost_line_test::a_save_goes_on_with_the_very_statement()
{
    bad_line line;
    a_payment{"9001011234568", "2026"}.store_in(line.direct);
    line.db.write(
        "insert into dues_h_tbl (pers_no,val_year,mem_dues,yet_money) values ('1','2026','50000','50000')");
    line.proxy.cut_lines();
    const qint64 sum =
        line.db.number("select sum(pres_money) as tot_money from dues_b_tbl where val_year='2026'");
    line.proxy.cut_lines();
    line.db.write("update dues_h_tbl set yet_money=mem_dues-{sum} where val_year='2026'", {{"sum", sum}});
    line.proxy.cut_lines();
    line.db.write("update dues_h_tbl set incom_flag='1' where val_year='2026'");
    QCOMPARE(line.watch.asked.size(), std::size_t{3});
    QCOMPARE(line.proxy.statements(), 4);
    const rows found = line.direct.read("select * from dues_h_tbl");
    QCOMPARE(found.size(), std::size_t{1});
    QCOMPARE(found.front().number("yet_money"), 0);
    QCOMPARE(found.front().text("incom_flag"), QStringLiteral("1"));
}

void lost_line_test::a_read_that_breaks_off_begins_anew()
{
    bad_line line;
    int code = 0;
    line.direct.load("branch_code", {"code_bran", "branch_name"}, [&](std::vector<cell>& fields) {
        fields.push_back(cell::of(std::int64_t{++code}));
        fields.push_back(cell::of(std::string_view{"서울특별시 강남구"}));
        return code <= 20'000;
    });

    class collecting_sink : public rows {
    public:
        void begin(const column_names& names) override
        {
            ++begun;
            before = size();
            rows::begin(names);
        }
        int begun = 0;
        std::size_t before = 0;
    } found;
    line.proxy.cut_after(200'000);
    line.db.read_each("select * from branch_code", {}, found);
    QCOMPARE(found.begun, 2);
    QVERIFY(found.before > 0);
    QVERIFY(found.before < 20'000);
    QCOMPARE(found.size(), std::size_t{20'000});
    for (std::size_t i = 0; i < found.size(); ++i)
        QCOMPARE(found[i].number("code_bran"), static_cast<qint64>(i + 1));

    // read() keeps its rows to itself until they are complete.
    line.proxy.cut_after(200'000);
    QCOMPARE(line.db.read("select * from branch_code").size(), std::size_t{20'000});
    QCOMPARE(line.watch.asked.size(), std::size_t{2});
}

void lost_line_test::a_read_of_many_columns_is_prepared_anew_behind_a_cut()
{
    bad_line line;
    a_member{"9001011234568"}.store_in(line.direct);
    // Every other read comes over a fresh line, to which the statements known before mean nothing.
    for (int time = 0; time < 4; ++time) {
        for (const char* name : {"영희", "철수"}) {
            const rows found = line.db.read("select * from person_m_tbl where pers_name like '%{key}%'",
                                            {{"key", QString::fromUtf8(name)}});
            QCOMPARE(found.size(), std::size_t{name == std::string_view{"영희"}});
        }
        line.proxy.cut_lines();
    }
    QCOMPARE(line.watch.asked.size(), std::size_t{3});
}

void lost_line_test::a_server_that_shuts_a_session_is_a_lost_line()
{
    const test_register its_register{engine::postgresql};
    connection other = its_register.connect();
    answering_watch watch;
    connection db = its_register.connect(database::server, &watch);
    db.write(new_branch, {{"code", 10}});
    other.read("select pg_terminate_backend(pid,5000) as done from pg_stat_activity where "
               "datname=current_database() and pid<>pg_backend_pid()");
    // The server has said so, and nothing was sent to it: even an insert goes on.
    db.write(new_branch, {{"code", 20}});
    QCOMPARE(watch.asked.size(), std::size_t{1});
    QCOMPARE(other.number(count_of_branches), 2);
}

QTEST_GUILESS_MAIN(lost_line_test)
#include "lost_line_test.moc"

#include "db/schema/schema.h"
#include "members/rules/member_search.h"
#include "members/rules/member_update.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/failure_of.h"
#include "support/other_types.h"
#include "support/pausable_proxy.h"
#include "support/test_register.h"

#include <QTest>

#include <map>

using namespace orvo;

namespace {

const std::map<QString, QString> numbers{
    {"9001011234568", "a"}, {"8512122234567", "b"}, {"0001013334567", "c"}, {"7703031234560", "d"}};
const QString a = QStringLiteral("9001011234568");
const QString b = QStringLiteral("8512122234567");
const QString c = QStringLiteral("0001013334567");
const QString d = QStringLiteral("7703031234560");
const QString earlier = QStringLiteral("5501011234567");

void fill_register(connection& db)
{
    a_member{a}.licensed("L-1001").with("email", "Kim@Orvo.kr").store_in(db);
    a_member{b}.named("이영수").of_branch(7).licensed("2001").with("email", "lee_100%@x.kr").store_in(db);
    a_member{c}.named("O'Brien\\Lee 🍚").of_branch(0).store_in(db);
    a_member{d}.named("박철수").of_branch(20).store_in(db);
    a_workplace{a}.store_in(db);
    a_workplace{a}.named("한빛중학교").former().store_in(db);
    a_workplace{b}.named("Seoul Hospital").store_in(db);
    a_workplace{c}.named("새한빛병원").store_in(db);
}

void load_members(connection& db, int count)
{
    int next = 0;
    std::string pers_no;
    const std::string address(120, 'x');
    db.load("person_m_tbl", {"pers_no", "pers_name", "pers_add"}, [&](std::vector<cell>& fields) {
        pers_no = std::to_string(1000000000000 + next);
        fields = {cell::of(std::string_view{pers_no}), cell::of(std::string_view{"김"}),
                  cell::of(std::string_view{address})};
        return next++ < count;
    });
}

QString copied(connection& local)
{
    QStringList letters;
    for (const auto row : local.read("select pers_no from person_m_tbl")) {
        const auto known = numbers.find(row.text("pers_no"));
        letters.append(known == numbers.end() ? row.text("pers_no") : known->second);
    }
    letters.sort();
    return letters.join(u' ');
}

qint64 copy(
    client& on, search_item item, const QString& key, const QString& branch = "0", progress* follow = nullptr,
    const std::function<void()>& found_some = [] {})
{
    return copy_members(on.db_conn, on.local_conn, search_query(item, key, branch), follow, found_some);
}

class counting_watch : public line_watch {
public:
    explicit counting_watch(bool again) : again_{again} {}
    bool try_again(const db_failure&) override { return ++asked < 5 && again_; }
    bool keep_waiting(std::chrono::milliseconds, bool) override { return true; }
    int asked = 0;

private:
    bool again_;
};

/// Cancels as soon as rows come.
class impatient : public progress {
public:
    bool go_on(qint64 so_far) override { return so_far == 0; }
};

} // namespace

class member_copy_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_keyword_finds_data() { engines_under_test(); }
    void a_keyword_finds()
    {
        FETCH_ENGINE(kind);
        running_client on{kind};
        fill_register(on.c.db_conn);
        struct {
            const char* name;
            search_item item;
            QString key;
            const char* found;
            const char* branch = "0";
        } const searches[] = {
            {"name", search_item::name, "영", "a b"},
            {"number anywhere", search_item::resident_number, "345", "a b c d"},
            {"licence", search_item::licence, "001", "a b"},
            {"workplaces of like names", search_item::workplace, "한빛", "a a c"},
            {"workplace in capitals", search_item::workplace, "SEOUL", "b"},
            {"name in capitals", search_item::name, "O'BRIEN", "c"},
            {"apostrophe", search_item::name, "o'b", "c"},
            {"backslash", search_item::name, "N\\l", "c"},
            {"emoji", search_item::name, "🍚", "c"},
            {"NUL", search_item::name, QString{"영"} + QChar{u'\0'} + QString{"희"}, "a"},
            {"everybody", search_item::name, "%", "a b c d"},
            {"percent as it is in the field", search_item::email, "00%@x", "b"},
            {"any letter", search_item::name, "김_희", "a"},
            {"two statements", search_item::name, "'; delete from person_m_tbl; --", ""},
            {"branch", search_item::name, "%", "b c", "7"},
            {"branch with a nought", search_item::name, "%", "b c", "07"},
            {"head office by two noughts", search_item::name, "%", "a b c d", "00"},
            {"padded branch", search_item::name, "%", "b c", " 7 "},
            {"no branch", search_item::name, "%", "", "7 A"},
            {"no branch and workplace", search_item::workplace, "한빛", "", ""},
            {"branch below nought", search_item::name, "%", "", "-7"},
            {"branch and licence", search_item::licence, "001", "b", "7"},
            {"branch and workplace", search_item::workplace, "한빛", "c", "7"},
        };
        for (const auto& each : searches) {
            on.c.local_conn.direct("delete from person_m_tbl");
            const qint64 count = copy(on.c, each.item, each.key, each.branch);
            QCOMPARE(QString{each.name} + ": " + copied(on.c.local_conn),
                     QString{each.name} + ": " + each.found);
            QCOMPARE(count, on.c.local_conn.number("select count(*) as n from person_m_tbl"));
        }
        QCOMPARE(on.c.db_conn.number("select count(*) as n from person_m_tbl"), 4);
    }

    void the_copy_holds_the_members_own_values_data() { engines_under_test(); }
    void the_copy_holds_the_members_own_values()
    {
        FETCH_ENGINE(kind);
        running_client on{kind};
        a_row member{"person_m_tbl"};
        int value = 100;
        for (const column& each : find_table(database::server, "person_m_tbl")->columns)
            member.with(each.name, each.width > 0 && each.width < 5 ? value++ % 10 : value++);
        member.with("pers_no", a).with("pers_name", "한빛").store_in(on.c.db_conn);
        // A workplace has a postal code and a date of registration as well.
        a_workplace{a}.with("code_post", "999999").with("regi_date", "19990909").store_in(on.c.db_conn);
        const rows original = on.c.db_conn.read("select * from person_m_tbl");
        for (const search_item item : {search_item::name, search_item::workplace}) {
            QCOMPARE(copy(on.c, item, "한빛"), 1);
            const rows copy_of_it = on.c.local_conn.read("select * from person_m_tbl");
            for (const column& each : find_table(database::local, "person_m_tbl")->columns)
                QCOMPARE(copy_of_it.front().text(each.name), original.front().text(each.name));
        }
    }

    void an_unfinished_search_leaves_the_earlier_copy_data() { engines_under_test(); }
    void an_unfinished_search_leaves_the_earlier_copy()
    {
        FETCH_ENGINE(kind);
        running_client on{kind};
        load_members(on.c.db_conn, 2000);
        a_member{earlier}.store_in(on.c.local_conn);
        const auto slowly = [] { QTest::qSleep(40); }; // nobody is asked within the first 30 ms
        impatient cancels;
        QCOMPARE(copy(on.c, search_item::name, "없는 이름"), 0);
        QCOMPARE(copied(on.c.local_conn), earlier);
        QCOMPARE(failure_of([&] { copy(on.c, search_item::name, "김", "0", &cancels, slowly); }),
                 failure_kind::cancelled);
        QCOMPARE(copied(on.c.local_conn), earlier);
        on.c.local_conn.direct("pragma max_page_count=1"); // what it has is what it gets
        const db_failure full = caught([&] { copy(on.c, search_item::name, "김"); });
        QCOMPARE(full.kind(), failure_kind::disk_full);
        QCOMPARE(full.place(), file_of(on.c.server, database::local));
        QCOMPARE(copied(on.c.local_conn), earlier);
        on.c.local_conn.direct("pragma max_page_count=1000000");
        QCOMPARE(copy(on.c, search_item::name, "김"), 2000);
        QCOMPARE(on.c.local_conn.number("select count(*) as n from person_m_tbl"), 2000);
    }

    void a_line_that_breaks_amid_the_members()
    {
        if (!is_at_hand(engine::postgresql))
            QSKIP("ORVO_TEST_POSTGRESQL names no server; scripts/with_postgresql.sh starts one");
        const test_register its{engine::postgresql};
        connection straight = its.connect();
        load_members(straight, 3000);
        connection local = its.connect(database::local);
        a_member{earlier}.store_in(local);
        pausable_proxy proxy{its.address()};
        connection db = make_connection(proxy.address(), database::server);
        for (const bool again : {false, true}) {
            counting_watch watch{again};
            db.set_watch(&watch);
            db.reopen();
            proxy.cut_after(200'000); // of some 600,000
            const auto search = [&] {
                copy_members(db, local, search_query(search_item::name, "김", "0"), nullptr, [] {});
            };
            if (again)
                search();
            else
                QCOMPARE(failure_of(search), failure_kind::line_lost);
            QCOMPARE(watch.asked, 1);
            QCOMPARE(local.number("select count(*) as n from person_m_tbl"), again ? 3000 : 1);
            QCOMPARE(local.read("select distinct pers_no from person_m_tbl").size(),
                     std::size_t(again ? 3000 : 1));
            db.set_watch(nullptr);
        }
    }

    void a_register_of_other_types_is_copied_data() { engines_under_test(); }
    void a_register_of_other_types_is_copied()
    {
        FETCH_ENGINE(kind);
        running_client on{kind};
        a_member{a}
            .named("김")
            .with("pers_marry", "미혼")
            .with("get_mail_place", "자택")
            .store_in(on.c.db_conn);
        a_row{"person_m_tbl"}.with("pers_no", b).with("pers_name", "김").store_in(on.c.db_conn);
        give_other_types(on.its_register, "person_m_tbl");
        connection db = beneath(on.its_register);
        db.direct("update person_m_tbl set pers_year_pay=3500.75,lic_pay=5e4 where pers_no='" +
                  a.toStdString() + "'");
        std::string nothing;
        for (const column& each : find_table(database::server, "person_m_tbl")->columns)
            if (each.name != "pers_no" && each.name != "pers_name")
                nothing += (nothing.empty() ? "" : ",") + std::string{each.name} + "=null";
        db.direct("update person_m_tbl set " + nothing + " where pers_no='" + b.toStdString() + "'");

        QCOMPARE(copy(on.c, search_item::name, "김"), 2);
        const std::pair<const char*, QString> expected[] = {
            {"pers_marry", "미혼"}, {"get_mail_place", "자택"},
            {"code_bran", "10"},    {"pers_year_pay", "3500"},
            {"lic_pay", "50000"},   {"pers_name", "김"},
            {"code_member", "20"},  {"email", ""}};
        const rows copied = on.c.local_conn.read("select * from person_m_tbl");
        const auto on_server = ask(on.c.db_conn, row_on_server(a));
        for (const auto& [column, value] : expected)
            for (const auto& row : {copied[copied[0].text("pers_no") == a ? 0 : 1], on_server->front()})
                QCOMPARE(column + row.text(column), column + value);
        for (const auto member : copied) { // nobody has changed them
            std::vector<column_value> written;
            for (const column& each : find_table(database::local, "person_m_tbl")->columns)
                written.push_back({each.name, {}});
            const auto his = ask(on.c.db_conn, row_on_server(member.text("pers_no")));
            QVERIFY(newer_values(his->front(), member, written).empty());
            for (const column_value& each : written)
                QVERIFY2(!member.is_null(each.column), each.column.data());
        }
        const auto nobody = copied[copied[0].text("pers_no") == a ? 1 : 0];
        for (const column& each : find_table(database::local, "person_m_tbl")->columns)
            if (each.name != "pers_no" && each.name != "pers_name")
                QCOMPARE(nobody.text(each.name), each.type == column_type::text ? QString{} : QString{"0"});
    }
};

QTEST_GUILESS_MAIN(member_copy_test)
#include "member_copy_test.moc"

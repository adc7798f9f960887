#include "members/rules/member_pages.h"
#include "support/builders.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

namespace {

/// Members whose numbers go down as they are written.
QString number_of(int at)
{
    return QString::number(9999999999999 - at);
}

void write_members(connection& local, int count)
{
    for (int at = 1; at <= count; ++at)
        a_member{number_of(at)}.named(QString::number(at)).store_in(local);
}

QString names(const std::vector<listed_member>& page)
{
    QStringList all;
    for (const listed_member& each : page)
        all.append(each.pers_name);
    return all.join(u' ');
}

} // namespace

class member_pages_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_page_holds_fifteen_data();
    void a_page_holds_fifteen();
    void members_stand_in_the_order_of_writing();
    void gaps_close_up();
    void a_member_is_found_on_his_page();
};

void member_pages_test::a_page_holds_fifteen_data()
{
    QTest::addColumn<int>("members");
    QTest::addColumn<int>("pages");
    QTest::addColumn<int>("on_the_last");
    QTest::newRow("nobody") << 0 << 0 << 0;
    QTest::newRow("one") << 1 << 1 << 1;
    QTest::newRow("a full page") << 15 << 1 << 15;
    QTest::newRow("one more") << 16 << 2 << 1;
}

void member_pages_test::a_page_holds_fifteen()
{
    QFETCH(int, members);
    QFETCH(int, pages);
    const test_register its{engine::embedded};
    connection local = its.connect(database::local);
    write_members(local, members);
    const member_pages all{local};
    QCOMPARE(all.page_count(), pages);
    QTEST(static_cast<int>(all.page(pages).size()), "on_the_last");
    for (const int beyond : {-1, 0, pages + 1})
        QVERIFY(all.page(beyond).empty());
}

void member_pages_test::members_stand_in_the_order_of_writing()
{
    const test_register its{engine::embedded};
    connection local = its.connect(database::local);
    write_members(local, 17);
    const member_pages all{local};
    QCOMPARE(names(all.page(1)), QStringLiteral("1 2 3 4 5 6 7 8 9 10 11 12 13 14 15"));
    QCOMPARE(names(all.page(2)), QStringLiteral("16 17"));
    QCOMPARE(all.page(2)[1].pers_no, number_of(17));
}

void member_pages_test::gaps_close_up()
{
    const test_register its{engine::embedded};
    connection local = its.connect(database::local);
    write_members(local, 20);
    for (const int gone : {1, 7, 8, 20})
        local.write("delete from person_m_tbl where pers_name='{name}'", {{"name", QString::number(gone)}});
    const member_pages all{local};
    QCOMPARE(names(all.page(1)), QStringLiteral("2 3 4 5 6 9 10 11 12 13 14 15 16 17 18"));
    QCOMPARE(names(all.page(2)), QStringLiteral("19"));
    QCOMPARE(all.page_of(number_of(19)), 2);
    // A row that goes while the pages are open leaves its place empty, and moves nobody to another page.
    local.write("delete from person_m_tbl where pers_name='9'");
    QCOMPARE(names(all.page(1)), QStringLiteral("2 3 4 5 6 10 11 12 13 14 15 16 17 18"));
    QCOMPARE(names(all.page(2)), QStringLiteral("19"));
}

void member_pages_test::a_member_is_found_on_his_page()
{
    const test_register its{engine::embedded};
    connection local = its.connect(database::local);
    write_members(local, 31);
    a_member{number_of(3)}.store_in(local); // by another workplace
    const member_pages all{local};
    for (const auto& [member, page] : {std::pair{1, 1}, {15, 1}, {16, 2}, {30, 2}, {31, 3}, {3, 1}, {32, 0}})
        QCOMPARE(all.page_of(number_of(member)), page);
    a_member{number_of(40)}.store_in(local);
    QCOMPARE(all.page_of(number_of(40)), 0); // who came later is on no page
    QCOMPARE(all.page_of({}), 0);
}

QTEST_GUILESS_MAIN(member_pages_test)
#include "member_pages_test.moc"

#include "members/rules/member_pages.h"
#include "support/builders.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

namespace {

/// Members' numbers, which go down as their names go up.
QString number_of(int at)
{
    return QString::number(9999999999999 - at);
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
    void a_page_holds_fifteen()
    {
        const test_register its{engine::embedded};
        connection local = its.connect(database::local);
        int written = 0;
        for (const auto& [members, pages, on_the_last] :
             {std::tuple{0, 0, 0}, {1, 1, 1}, {15, 1, 15}, {16, 2, 1}, {31, 3, 1}}) {
            while (written < members)
                a_member{number_of(++written)}.store_in(local);
            const member_pages all{local};
            QCOMPARE(all.page_count(), pages);
            QCOMPARE(static_cast<int>(all.page(pages).size()), on_the_last);
        }
        a_member{number_of(3)}.store_in(local); // by another workplace
        const member_pages all{local};
        a_member{number_of(40)}.store_in(local); // who came later is on no page
        for (const auto& [member, page] : {std::pair{15, 1}, {16, 2}, {31, 3}, {3, 1}, {32, 0}, {40, 0}})
            QCOMPARE(all.page_of(number_of(member)), page);
    }

    void gaps_close_up_and_the_order_of_writing_stays()
    {
        const test_register its{engine::embedded};
        connection local = its.connect(database::local);
        for (int at = 1; at <= 20; ++at)
            a_member{number_of(at)}.named(QString::number(at)).store_in(local);
        local.write("delete from person_m_tbl where pers_name in ('1','7','8','20')");
        const member_pages all{local};
        QCOMPARE(names(all.page(1)), QStringLiteral("2 3 4 5 6 9 10 11 12 13 14 15 16 17 18"));
        QCOMPARE(names(all.page(2)), QStringLiteral("19"));
        // A row that goes while the pages are open leaves its place empty, and moves nobody to another page.
        local.write("delete from person_m_tbl where pers_name='9'");
        QCOMPARE(names(all.page(1)), QStringLiteral("2 3 4 5 6 10 11 12 13 14 15 16 17 18"));
        QCOMPARE(names(all.page(2)), QStringLiteral("19"));
    }
};

QTEST_GUILESS_MAIN(member_pages_test)
#include "member_pages_test.moc"

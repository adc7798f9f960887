#include "members/rules/recent.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

class recent_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void words_are_kept_by_operator_and_item();
    void members_are_kept_by_operator();
};

void recent_test::words_are_kept_by_operator_and_item()
{
    const test_register its{engine::embedded};
    connection local = its.connect(database::local);
    QDateTime now = test_clock();
    const auto remember = [&](const QString& who, int item, const QString& word) {
        now = now.addMSecs(1);
        remember_word(local, who, item, word, now);
    };
    for (int at = 1; at <= 10; ++at)
        remember("o'neil", 0, QString::number(at));
    remember("o'neil", 3, "한빛'초");
    remember("kim", 0, "그");
    remember("o'neil", 0, "5"); // again: it moves up
    QCOMPARE(recent_words(local, "o'neil", 0), (QStringList{"5", "10", "9", "8", "7", "6", "4", "3"}));
    QCOMPARE(recent_words(local, "o'neil", 3), QStringList{"한빛'초"});
    QCOMPARE(recent_words(local, "kim", 0), QStringList{"그"});
    QCOMPARE(recent_words(local, "kim", 3), QStringList{});
    QCOMPARE(local.number("select count(*) as n from recent_words"), 10);
}

void recent_test::members_are_kept_by_operator()
{
    const test_register its{engine::embedded};
    connection local = its.connect(database::local);
    QDateTime now = test_clock();
    const auto open = [&](const QString& who, int member, const QString& name) {
        now = now.addMSecs(1);
        remember_member(local, who, {QString::number(9001010000000 + member), name}, now);
    };
    for (int member = 1; member <= 9; ++member)
        open("kim", member, QString::number(member));
    open("lee", 1, "1");
    open("kim", 3, "개명"); // by the name of today
    QString names;
    for (const recent_member& each : recent_members(local, "kim"))
        names += each.pers_name + u' ';
    QCOMPARE(names, QStringLiteral("개명 9 8 7 6 5 4 2 "));
    QCOMPARE(recent_members(local, "kim").front().pers_no, QStringLiteral("9001010000003"));
    QCOMPARE(recent_members(local, "lee").size(), std::size_t{1});
}

QTEST_GUILESS_MAIN(recent_test)
#include "recent_test.moc"

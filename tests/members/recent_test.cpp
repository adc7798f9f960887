#include "members/rules/recent.h"
#include "support/test_register.h"

#include <QTest>

using namespace orvo;

class recent_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void the_last_eight_are_kept_by_operator_and_item()
    {
        const test_register its{engine::embedded};
        connection local = its.connect(database::local);
        QDateTime now = test_clock();
        const auto word = [&](const QString& who, int item, const QString& text) {
            now = now.addMSecs(1);
            remember_word(local, who, item, text, now);
        };
        const auto member = [&](const QString& who, int number, const QString& name) {
            now = now.addMSecs(1);
            remember_member(local, who, {QString::number(9001010000000 + number), name}, now);
        };
        for (int at = 1; at <= 9; ++at) {
            word("o'neil", 0, QString::number(at));
            member("o'neil", at, QString::number(at));
        }
        word("o'neil", 3, "한빛'초");
        word("kim", 0, "그");
        member("kim", 1, "1");
        word("o'neil", 0, "5");      // again: it moves up
        member("o'neil", 5, "개명"); // by the name of today
        QCOMPARE(recent_words(local, "o'neil", 0), (QStringList{"5", "9", "8", "7", "6", "4", "3", "2"}));
        QCOMPARE(recent_words(local, "o'neil", 3), QStringList{"한빛'초"});
        QCOMPARE(recent_words(local, "kim", 0), QStringList{"그"});
        QString names;
        for (const recent_member& each : recent_members(local, "o'neil"))
            names += each.pers_name + u' ';
        QCOMPARE(names, QStringLiteral("개명 9 8 7 6 4 3 2 "));
        QCOMPARE(recent_members(local, "o'neil").front().pers_no, QStringLiteral("9001010000005"));
        QCOMPARE(recent_members(local, "kim").size(), std::size_t{1});
    }
};

QTEST_GUILESS_MAIN(recent_test)
#include "recent_test.moc"

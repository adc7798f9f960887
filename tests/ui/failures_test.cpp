#include "db/failure.h"
#include "support/screens.h"
#include "support/scripted_prompts.h"
#include "ui/failures.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

using namespace orvo;
using failures::policy;

namespace {

const QString unknown_outcome =
    QStringLiteral("저장하라는 요청을 보냈으나 서버의 응답을 받지 못했습니다. 저장되었을 "
                   "수도 있으니 다시 저장하기 전에 내용을 조회하여 확인하십시오.");
const QString reported = QStringLiteral("작업을 마치지 못했습니다.\n\n");

} // namespace

class failures_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_policy_decides_what_is_shown_data();
    void a_policy_decides_what_is_shown();
    void other_exceptions_are_kept_in();
    void a_damaged_local_file_can_be_mended();
    void the_report_can_end_the_program();
};

void failures_test::a_policy_decides_what_is_shown_data()
{
    QTest::addColumn<policy>("how");
    QTest::addColumn<failure_kind>("kind");
    QTest::addColumn<QString>("asked");
    QTest::addColumn<QString>("told");
    QTest::addColumn<QString>("noted");
    const QString none;
    const QString cancelled = "취소했습니다.";
    const QString lost = "서버에 연결되지 않아 작업을 마치지 못했습니다.";
    const QString not_saved = "오류가 발생하여 저장하지 않았습니다.";
    using kind = failure_kind;
    for (const auto& [name, how] : {std::pair{"report", policy::report},
                                    {"show_error", policy::show_error},
                                    {"plain_box", policy::plain_box},
                                    {"silent", policy::silent}}) {
        QTest::addRow("%s: cancelled", name) << how << kind::cancelled << none << none << cancelled;
        QTest::addRow("%s: unknown outcome", name)
            << how << kind::outcome_unknown << reported + unknown_outcome << none << none;
        if (how != policy::show_error)
            QTest::addRow("%s: line lost", name) << how << kind::line_lost << none << none << lost;
    }
    const std::pair<kind, QString> words[] = {
        {kind::overflow, "words"},
        {kind::duplicate, "words"},
        {kind::conversion, "words"},
        {kind::login_refused, "words"},
        {kind::other, "words"},
        {kind::timed_out, "정해진 시간 안에 작업이 끝나지 않았습니다. 잠시 후에 다시 시도하십시오."},
        {kind::disk_full, "디스크에 빈 자리가 없어 저장하지 못했습니다."},
        {kind::damaged, "데이터베이스 파일이 손상되었습니다. 관리자에게 문의하시기 바랍니다."}};
    for (const auto& [each, text] : words) {
        const int number = static_cast<int>(each);
        QTest::addRow("report: %d", number) << policy::report << each << reported + text << none << none;
        QTest::addRow("plain_box: %d", number) << policy::plain_box << each << none << "words" << none;
        QTest::addRow("silent: %d", number) << policy::silent << each << none << none << not_saved;
    }
    QTest::newRow("show_error: line lost")
        << policy::show_error << kind::line_lost << none
        << "서버에 연결할 수 없습니다!\n인터넷에 연결되어 있는지 확인하고, 잠시 후에 다시 시도하십시오!"
        << none;
    QTest::newRow("show_error: any other")
        << policy::show_error << kind::disk_full << none << "words" << none;
}

void failures_test::a_policy_decides_what_is_shown()
{
    QFETCH(policy, how);
    QFETCH(failure_kind, kind);
    QFETCH(QString, asked);
    scripted_prompts say;
    if (!asked.isEmpty())
        say.will_answer(asked, answer::second);
    QVERIFY(!failures::guard(say, how, [kind = kind] {
        throw db_failure{kind, "words", "select {pers_no}"};
    }));
    QTEST(say.take_texts().join(u'|'), "told");
    QTEST(say.take_notes().join(u'|'), "noted");
}

void failures_test::other_exceptions_are_kept_in()
{
    for (const policy how : {policy::report, policy::show_error, policy::plain_box, policy::silent}) {
        scripted_prompts say;
        if (how == policy::report)
            say.will_answer(reported + "칸이 없음", answer::second);
        QVERIFY(!failures::guard(say, how, [] { throw std::logic_error{"칸이 없음"}; }));
        const bool is_told = how == policy::show_error || how == policy::plain_box;
        QCOMPARE(say.take_texts().join(u'|'), is_told ? QStringLiteral("칸이 없음") : QString{});
        QVERIFY(failures::guard(say, how, [] {}));
    }
}

void failures_test::a_damaged_local_file_can_be_mended()
{
    struct : scripted_prompts {
        bool mend_local_file() override { return ++asked > 0; }
        int asked = 0;
    } say;
    for (const policy how : {policy::report, policy::show_error, policy::plain_box, policy::silent}) {
        QVERIFY(!failures::guard(say, how, [] { throw db_failure{failure_kind::damaged, "words"}; }));
        QCOMPARE(say.take_notes(), QStringList{"로컬 파일을 새로 만들었습니다. 하던 작업을 다시 하십시오."});
    }
    QCOMPARE(say.asked, 4);
    QVERIFY(say.take_texts().isEmpty());
}

void failures_test::the_report_can_end_the_program()
{
    scripted_prompts say;
    say.will_answer(reported + "words", answer::first);
    QTimer::singleShot(0, [&] {
        failures::guard(say, policy::report, [] { throw db_failure{failure_kind::other, "words"}; });
    });
    QTimer::singleShot(5000, [] { QApplication::exit(99); });
    QCOMPARE(QApplication::exec(), 1);
}

ORVO_SCREEN_TESTS(failures_test)
#include "failures_test.moc"

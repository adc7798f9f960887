#include "db/failure.h"
#include "support/screens.h"
#include "support/scripted_prompts.h"
#include "ui/failures.h"
#include "ui/show_error.h"

#include <QApplication>
#include <QTest>

using namespace orvo;
using failures::policy;

namespace {

const QString unknown_outcome =
    QStringLiteral("저장하라는 요청을 보냈으나 서버의 응답을 받지 못했습니다. 저장되었을 "
                   "수도 있으니 다시 저장하기 전에 내용을 조회하여 확인하십시오.");
const QString no_server = QStringLiteral(
    "서버에 연결할 수 없습니다!\n인터넷에 연결되어 있는지 확인하고, 잠시 후에 다시 시도하십시오!");
const QString reported = QStringLiteral("작업을 마치지 못했습니다.\n\n");

} // namespace

class failures_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_policy_decides_what_is_shown()
    {
        using kind = failure_kind;
        const QString none;
        const QString lost = "서버에 연결되지 않아 작업을 마치지 못했습니다.";
        const QString not_saved = "오류가 발생하여 저장하지 않았습니다.";
        const QString disk_full = reported + "디스크에 빈 자리가 없어 저장하지 못했습니다.";
        const struct {
            kind what;
            policy how;
            QString asked, told, noted;
        } cases[] = {
            {kind::line_lost, policy::report, none, none, lost},
            {kind::line_lost, policy::show_error, none, no_server, none},
            {kind::line_lost, policy::plain_box, none, none, lost},
            {kind::line_lost, policy::silent, none, none, lost},
            {kind::disk_full, policy::report, disk_full, none, none},
            {kind::disk_full, policy::show_error, none, "words", none},
            {kind::disk_full, policy::plain_box, none, "words", none},
            {kind::disk_full, policy::silent, none, none, not_saved},
            {kind::duplicate, policy::report, reported + "words", none, none},
        };
        const auto check = [](kind what, policy how, const QString& asked, const QString& told,
                              const QString& noted) {
            scripted_prompts say;
            if (!asked.isEmpty())
                say.will_answer(asked, answer::second);
            QVERIFY(!failures::guard(say, how, [&] { throw db_failure{what, "words", "select"}; }));
            QCOMPARE(say.take_texts().join(u'|'), told);
            QCOMPARE(say.take_notes().join(u'|'), noted);
        };
        for (const auto& each : cases)
            check(each.what, each.how, each.asked, each.told, each.noted);
        for (const auto& [what, words] :
             {std::pair{kind::disk_full, "디스크에 빈 자리가 없어 저장하지 못했습니다."},
              {kind::line_lost, "데이터베이스 파일을 열 수 없습니다."}})
            QCOMPARE(failures::in_words(db_failure{what, "words"}.at("/d/orvo.mdb")),
                     QString{words} + "\n/d/orvo.mdb");
        for (const policy how : {policy::report, policy::show_error, policy::plain_box, policy::silent}) {
            check(kind::cancelled, how, none, none, "취소했습니다.");
            check(kind::outcome_unknown, how, reported + unknown_outcome, none, none);
        }
    }

    void other_exceptions_are_kept_in()
    {
        scripted_prompts say;
        say.will_answer(reported + "칸이 없음", answer::second);
        for (const policy how : {policy::report, policy::show_error, policy::plain_box, policy::silent})
            QVERIFY(!failures::guard(say, how, [] { throw std::logic_error{"칸이 없음"}; }));
        QCOMPARE(say.take_texts(), (QStringList{"칸이 없음", "칸이 없음"})); // by the box, twice
    }

    void a_damaged_local_file_can_be_mended()
    {
        struct : scripted_prompts {
            bool mend_local_file() override { return ++asked > 0; }
            int asked = 0;
        } say;
        for (const policy how : {policy::report, policy::show_error, policy::plain_box, policy::silent}) {
            QVERIFY(!failures::guard(say, how, [] { throw db_failure{failure_kind::damaged, "words"}; }));
            QCOMPARE(say.take_notes(),
                     QStringList{"로컬 파일을 새로 만들었습니다. 하던 작업을 다시 하십시오."});
        }
        QCOMPARE(say.asked, 4);
        QVERIFY(say.take_texts().isEmpty());
    }

    void a_file_dialog_that_was_cancelled_is_no_error()
    {
        scripted_prompts say;
        QApplication::setOverrideCursor(Qt::WaitCursor);
        show_error(say, 0x7FF3, "words");
        QVERIFY(say.take_told().isEmpty());
        show_error(say, static_cast<std::int32_t>(0x80040E14u), "구문 오류 'x' <b>");
        QCOMPARE(say.take_texts(), QStringList{"구문 오류 'x' <b>"});
        QVERIFY(!QApplication::overrideCursor());
    }
};

ORVO_SCREEN_TESTS(failures_test)
#include "failures_test.moc"

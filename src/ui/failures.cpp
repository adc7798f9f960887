#include "ui/failures.h"

#include "db/failure.h"
#include "ui/show_error.h"

#include <QAbstractButton>
#include <QApplication>

namespace orvo::failures {

QString in_words(const db_failure& failure)
{
    const QString place = failure.place().isEmpty() ? QString{} : u'\n' + failure.place();
    switch (failure.kind()) {
    case failure_kind::outcome_unknown:
        return QStringLiteral(
            "저장하라는 요청을 보냈으나 서버의 응답을 받지 못했습니다. 저장되었을 수도 있으니 다시 "
            "저장하기 전에 내용을 조회하여 확인하십시오.");
    case failure_kind::disk_full:
        return QStringLiteral("디스크에 빈 자리가 없어 저장하지 못했습니다.") + place;
    case failure_kind::damaged:
        return QStringLiteral("데이터베이스 파일이 손상되었습니다. 관리자에게 문의하시기 바랍니다.");
    case failure_kind::timed_out:
        return QStringLiteral("정해진 시간 안에 작업이 끝나지 않았습니다. 잠시 후에 다시 시도하십시오.");
    case failure_kind::line_lost:
        if (!place.isEmpty())
            return QStringLiteral("데이터베이스 파일을 열 수 없습니다.") + place;
        return QStringLiteral("서버에 연결되지 않았습니다.");
    default:
        return failure.text();
    }
}

namespace {

const QString unanswered_save = QStringLiteral(
    "저장하라는 요청을 보냈으나 서버의 응답을 받지 못했습니다. 다시 저장하면 저장되었는지 먼저 확인하고 "
    "이어서 저장합니다.");

/// What of a broken save is in force, so that the operator knows what is left to do.
QString state_of_save(const db_failure& failure)
{
    if (!failure.how_far().isEmpty())
        return QStringLiteral("\n\n%1").arg(failure.how_far());
    if (failure.missing().isEmpty())
        return {};
    const bool unknown = failure.kind() == failure_kind::outcome_unknown;
    return QStringLiteral("\n\n저장된 것: %1\n%2: %3")
        .arg(failure.stored().isEmpty() ? QStringLiteral("없음")
                                        : failure.stored().join(QStringLiteral(", ")),
             unknown ? QStringLiteral("저장되었는지 알 수 없는 것") : QStringLiteral("저장하지 못한 것"),
             failure.missing());
}

void report(prompts& say, const db_failure& failure)
{
    const bool is_unanswered_save =
        failure.kind() == failure_kind::outcome_unknown && !failure.missing().isEmpty();
    message what{QStringLiteral("작업을 마치지 못했습니다.\n\n%1%2")
                     .arg(is_unanswered_save ? unanswered_save : in_words(failure), state_of_save(failure)),
                 QStringLiteral("오류 보고"), sign::critical};
    what.details = failure.details();
    if (say.ask(what, QStringLiteral("프로그램 끝내기"), QStringLiteral("계속하기"), answer::second))
        QApplication::exit(1);
}

void handle(prompts& say, policy how, const db_failure& failure)
{
    if (!failure.stored().isEmpty()) // a save that stopped half way is never passed over
        return report(say, failure);
    if (!failure.how_far().isEmpty())
        return failure.kind() == failure_kind::cancelled
                   ? say.tell(
                         {QStringLiteral("취소했습니다.") + state_of_save(failure), {}, sign::information})
                   : report(say, failure);
    switch (failure.kind()) {
    case failure_kind::cancelled:
        return say.note(QStringLiteral("취소했습니다."));
    case failure_kind::line_lost:
        if (how != policy::show_error) // the operator has been asked already, and gave up
            return say.note(QStringLiteral("서버에 연결되지 않아 작업을 마치지 못했습니다."));
        break;
    case failure_kind::outcome_unknown: // never passed over: the operator must look before he saves again
        return report(say, failure);
    case failure_kind::damaged:
        if (say.mend_local_file())
            return say.note(QStringLiteral("로컬 파일을 새로 만들었습니다. 하던 작업을 다시 하십시오."));
        break;
    default:
        break;
    }
    switch (how) {
    case policy::report:
        return report(say, failure);
    case policy::show_error:
        return orvo::show_error(say, failure.number(), failure.text());
    case policy::plain_box:
        return say.tell({failure.text()});
    case policy::silent:
        return say.note(QStringLiteral("오류가 발생하여 저장하지 않았습니다."));
    }
}

} // namespace

bool guard(prompts& say, policy how, const std::function<void()>& handler)
{
    try {
        handler();
        return true;
    } catch (const db_failure& failure) {
        handle(say, how, failure);
    } catch (const std::exception& failure) {
        handle(say, how, db_failure{failure_kind::other, QString::fromUtf8(failure.what())});
    }
    return false;
}

void on_click(QAbstractButton* button, prompts& say, policy how, std::function<void()> handler)
{
    QObject::connect(button, &QAbstractButton::clicked, button,
                     [&say, how, handler = std::move(handler)] { guard(say, how, handler); });
}

} // namespace orvo::failures

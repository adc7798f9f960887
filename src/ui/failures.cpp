#include "ui/failures.h"

#include "db/failure.h"
#include "ui/show_error.h"

#include <QAbstractButton>
#include <QApplication>

namespace orvo::failures {

namespace {

void report(prompts& say, const QString& text, const QString& statement)
{
    message what{QStringLiteral("작업을 마치지 못했습니다.\n\n%1").arg(text), QStringLiteral("오류 보고"),
                 sign::critical};
    what.details = statement;
    if (say.ask(what, QStringLiteral("프로그램 끝내기"), QStringLiteral("계속하기"), answer::second))
        QApplication::exit(1);
}

void handle(prompts& say, policy how, const db_failure& failure)
{
    switch (failure.kind()) {
    case failure_kind::cancelled:
        return say.note(QStringLiteral("취소했습니다."));
    case failure_kind::line_lost:
        if (how != policy::show_error) // the operator has been asked already, and gave up
            return say.note(QStringLiteral("서버에 연결되지 않아 작업을 마치지 못했습니다."));
        break;
    case failure_kind::outcome_unknown:
        return report(say,
                      QStringLiteral("저장하라는 요청을 보냈으나 서버의 응답을 받지 못했습니다. 저장되었을 수도 "
                                     "있으니 다시 저장하기 전에 내용을 조회하여 확인하십시오."),
                      failure.statement());
    default:
        break;
    }
    switch (how) {
    case policy::report:
        return report(say, failure.text(), failure.statement());
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

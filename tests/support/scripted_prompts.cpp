#include "support/scripted_prompts.h"

#include <QTest>

namespace orvo {

namespace {

void fail_test(const QString& why)
{
    QTest::qFail(qUtf8Printable(why), __FILE__, __LINE__);
}

} // namespace

scripted_prompts::~scripted_prompts()
{
    for (const expectation& each : expected_)
        fail_test(QStringLiteral("nobody asked: ") + each.question);
}

bool scripted_prompts::ask(const message& what, const QString&, const QString&, answer)
{
    if (expected_.isEmpty() || expected_.first().question != what.text) {
        fail_test(QStringLiteral("unexpected question: ") + what.text);
        return false;
    }
    return expected_.takeFirst().what == answer::first;
}

QStringList scripted_prompts::take_texts()
{
    QStringList texts;
    for (const message& each : take_told())
        texts.append(each.text);
    return texts;
}

} // namespace orvo

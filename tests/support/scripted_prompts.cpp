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
    for (const file_expectation& each : files_)
        fail_test(QStringLiteral("nobody asked for a file: ") + each.filters.join(u' '));
}

bool scripted_prompts::ask(const message& what, const QString&, const QString&, answer)
{
    asked_about_ = what.about;
    if (expected_.isEmpty() || expected_.first().question != what.text) {
        fail_test(QStringLiteral("unexpected question: ") + what.text);
        return false;
    }
    return expected_.takeFirst().what == answer::first;
}

file_to_be scripted_prompts::file_to_write(const QStringList& filters, int selected)
{
    if (files_.isEmpty() || files_.first().filters != filters || files_.first().selected != selected) {
        fail_test(
            QStringLiteral("unexpected question for a file: %1, %2").arg(filters.join(u' ')).arg(selected));
        return {};
    }
    return files_.takeFirst().named;
}

QStringList scripted_prompts::take_texts()
{
    QStringList texts;
    for (const message& each : take_told())
        texts.append(each.text);
    return texts;
}

} // namespace orvo

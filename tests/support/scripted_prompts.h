#pragma once

#include "client/prompts.h"

#include <QList>

#include <optional>
#include <utility>

namespace orvo {

/// Prompts that a test answers. It keeps what was told, answers questions from a queue, and fails the running
/// test at a question that nobody expected and at an answer that nobody asked for.
class scripted_prompts : public prompts {
public:
    ~scripted_prompts() override;

    void tell(const message& what) override { told_.append(what); }
    bool ask(const message& what, const QString& first, const QString& second,
             answer usual = answer::first) override;
    file_to_be file_to_write(const QStringList& filters, int selected = 0) override;
    void note(const QString& text) override { notes_.append(text); }

    /// The next question must bear this text; it gets this answer.
    void will_answer(const QString& question, answer what) { expected_.append({question, what}); }
    /// The next question for a file must offer these filters, of which that one is selected; it gets this
    /// name, under the selected filter or another one.
    void will_name_file(const QStringList& filters, int selected, const QString& name,
                        std::optional<int> filter = {})
    {
        files_.append({filters, selected, {name, filter.value_or(selected)}});
    }
    /// What the last question said below its text.
    const QString& asked_about() const { return asked_about_; }
    /// What was told since the last call.
    QList<message> take_told() { return std::exchange(told_, {}); }
    /// The texts alone.
    QStringList take_texts();
    /// What was said in passing since the last call.
    QStringList take_notes() { return std::exchange(notes_, {}); }

private:
    struct expectation {
        QString question;
        answer what;
    };

    struct file_expectation {
        QStringList filters;
        int selected;
        file_to_be named;
    };

    QString asked_about_;
    QList<message> told_;
    QStringList notes_;
    QList<expectation> expected_;
    QList<file_expectation> files_;
};

} // namespace orvo

#pragma once

#include "client/prompts.h"

#include <functional>

namespace orvo {

inline const QString association_name = QStringLiteral("오르보협회");
inline const QString program_title = association_name + QStringLiteral(" 회원관리 프로그램");

/// The boxes of the running program.
class window_prompts : public prompts {
public:
    void tell(const message& what) override;
    bool ask(const message& what, const QString& first, const QString& second, answer usual) override;
    file_to_be file_to_write(const QStringList& filters, int selected) override;
    void note(const QString& text) override;
    bool mend_local_file() override { return mend && mend(); }

    /// Where notes are shown; the main window sets it while it stands.
    std::function<void(const QString&)> show_note;
    /// Looks at the local file and offers to make it anew; the program sets it while it runs.
    std::function<bool()> mend;
};

} // namespace orvo

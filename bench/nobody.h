#pragma once

#include "client/prompts.h"

namespace orvo::bench {

/// No operator sits there.
class nobody : public prompts {
public:
    void tell(const message&) override {}
    bool ask(const message&, const QString&, const QString&, answer) override { return false; }
    file_to_be file_to_write(const QStringList&, int) override { return {}; }
    void note(const QString&) override {}
};

} // namespace orvo::bench

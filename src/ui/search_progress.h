#pragma once

#include "ui/input_gate.h"
#include "ui/search_dialog.h"

#include <QElapsedTimer>

namespace orvo {

class search_dialog::search_progress : public progress {
public:
    explicit search_progress(search_dialog& over);
    ~search_progress() override;

    bool go_on(qint64 so_far) override;
    /// Says at once that rows are on their way.
    void found_some();

private:
    search_dialog& over_;
    QElapsedTimer running_;
    bool ended_ = false;
    input_gate gate_;
    QMetaObject::Connection clicked_;
};

} // namespace orvo

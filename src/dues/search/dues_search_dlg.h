#pragma once

#include "ui/date_group.h"
#include "ui/desk.h"
#include "ui/search_dialog.h"

namespace orvo {

/// Finds the members who have or have not paid their dues, copies them to this workstation and opens the
/// console on the copy.
class dues_search_dlg : public search_dialog {
public:
    dues_search_dlg(client& c, desk& at, QWidget* over);

private:
    desk& desk_;
    date_group from_, to_;
    code_list* yet_cbb;

    bool takes(const date_group& date);
    void run_search();
};

} // namespace orvo

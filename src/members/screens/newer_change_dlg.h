#pragma once

#include "ui/dialog.h"

#include <vector>

namespace orvo {

/// A field that another workstation has changed since this one showed it.
struct changed_field {
    QString caption;
    QString on_server;
    QString typed;
};

/// Shows what both have and lets the operator choose.
class newer_change_dlg : public dialog {
public:
    enum class choice { neither, mine, servers };

    newer_change_dlg(client& c, const std::vector<changed_field>& fields, QWidget* over);

    choice chosen = choice::neither;
};

} // namespace orvo

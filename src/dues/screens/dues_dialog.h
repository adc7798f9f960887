#pragma once

#include "dues/rules/settlement.h"
#include "ui/save_dialog.h"

namespace orvo {

class amount_field;

/// A dialog on the open member's dues of a year.
class dues_dialog : public save_dialog {
public:
    dues_dialog(const QString& name, client& c, desk& at, QWidget* over, dues_year year,
                failures::policy how = failures::policy::report, deed what = deed::saving);

protected:
    const dues_year year_;

    /// Whether the amount can be saved; refuses it otherwise.
    bool takes(amount_field* amount);
    QString whose() const override;
};

} // namespace orvo

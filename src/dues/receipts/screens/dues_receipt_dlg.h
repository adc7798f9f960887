#pragma once

#include "dues/receipts/screens/receipt_dlg.h"
#include "ui/date_group.h"

namespace orvo {

/// Receipts of what was paid in a period, at the head office or at the branches.
class dues_receipt_dlg : public receipt_dlg {
public:
    dues_receipt_dlg(client& c, desk& at, QWidget* over);

private:
    QLabel* Text1;
    date_group from_; ///< y1_cbb, m1_cbb, d1_cbb
    date_group to_;   ///< y2_cbb, m2_cbb, d2_cbb
    code_list* receipt_cbb;

    void find();
    /// Whether both days are there; leads to the one that is not.
    bool has_period();
};

} // namespace orvo

#pragma once

#include "dues/receipts/screens/receipt_dlg.h"

namespace orvo {

class code_list;

/// Receipts of members: all that they ever paid.
class pers_receipt_dlg : public receipt_dlg {
public:
    pers_receipt_dlg(client& c, desk& at, QWidget* over);

private:
    code_list* cbb_memkind;
    code_list* item_cbb;
    QLineEdit* str_txt;

    void find();
};

} // namespace orvo

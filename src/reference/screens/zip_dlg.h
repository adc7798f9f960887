#pragma once

#include "ui/desk.h"
#include "ui/dialog.h"

class QLabel;

namespace orvo {

class grid;

/// Finds an address by the name of its neighbourhood, and hands it to the fields of the screen that it was
/// opened for. Which of a screen's addresses is meant, the screen knows.
class zip_dlg : public dialog {
public:
    zip_dlg(client& c, desk& at, QWidget* over);

private:
    desk& desk_;
    QLineEdit* str_txt;
    QPushButton* Image1;
    QPushButton* close_img;
    grid* addr_grd;
    QLabel* no_codes_; ///< says where this workstation has none

    bool has_codes();
    void search();
    void pick(int row);
};

} // namespace orvo

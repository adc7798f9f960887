#pragma once

#include "ui/dialog.h"

namespace orvo {

/// Asks who works here. Ends with `session_ok` set, or with head office's branch and no session.
class login_dlg : public dialog {
public:
    login_dlg(client& c, QWidget* over);

protected:
    void reject() override;

private:
    QLineEdit *id_txt, *passwd_txt;
    QPushButton *Image1, *Image2;

    void check();
};

} // namespace orvo

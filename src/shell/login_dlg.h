#pragma once

#include "shell/login_attempts.h"
#include "ui/dialog.h"

#include <QTimer>

class QLabel;

namespace orvo {

/// Asks who works here. Behind wrong passwords the id has to wait, which is shown and counted down. Ends with
/// `session_ok` set, or with head office's branch and no session.
class login_dlg : public dialog {
public:
    login_dlg(client& c, QWidget* over);

protected:
    void reject() override;

private:
    QLineEdit *id_txt, *passwd_txt;
    QLabel* wait_txt;
    QPushButton *Image1, *Image2;
    login_attempts attempts_;
    QTimer each_second_;

    void check();
    void show_wait();
};

} // namespace orvo

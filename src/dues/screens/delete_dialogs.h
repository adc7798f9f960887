#pragma once

#include "dues/screens/dues_dialog.h"

namespace orvo {

/// Deletes the year that was last chosen in the console, with its payments.
class mem_del_dlg : public dues_dialog {
public:
    mem_del_dlg(client& c, desk& at, QWidget* over);

protected:
    planned_save plan() override;
    void refresh(member_panels& panels) override;

private:
    QString what_goes();
};

/// Deletes the payment that is chosen in the console.
class dues_del_dlg : public dues_dialog {
public:
    dues_del_dlg(client& c, desk& at, QWidget* over);

protected:
    planned_save plan() override;
    void refresh(member_panels& panels) override;

private:
    const QString cur_dues_id_;

    QString what_goes();
};

} // namespace orvo

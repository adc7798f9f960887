#pragma once

#include "dues/screens/dues_dialog.h"

namespace orvo {

/// Names what goes, and lets it go by a press that is meant: the focus stands on the way out.
class delete_dialog : public dues_dialog {
protected:
    delete_dialog(const QString& name, client& c, desk& at, QWidget* over);

    void open_with(const QString& title, const std::function<QString()>& what_goes);
};

/// Deletes the year that was last chosen in the console, with its payments.
class mem_del_dlg : public delete_dialog {
public:
    mem_del_dlg(client& c, desk& at, QWidget* over);

protected:
    void store(save_steps& save) override;
    void refresh(member_panels& panels) override;

private:
    QString what_goes();
};

/// Deletes the payment that is chosen in the console.
class dues_del_dlg : public delete_dialog {
public:
    dues_del_dlg(client& c, desk& at, QWidget* over);

protected:
    void store(save_steps& save) override;
    void refresh(member_panels& panels) override;

private:
    const QString cur_dues_id_;

    QString what_goes();
};

} // namespace orvo

#pragma once

#include "dues/pledges/pledge_fields.h"
#include "ui/save_dialog.h"

namespace orvo {

/// A dialog on the pledge of the open member.
class pledge_dialog : public save_dialog {
protected:
    pledge_dialog(const QString& name, client& c, desk& at, QWidget* over, deed what = deed::saving);

    const QString selected_pers_no_;

    QString whose() const override;
    bool takes(const pledge_fields& fields);
    void refresh(member_panels& panels) override;
};

/// Enters an amount: the first is the pledge itself, each one behind it an instalment.
class con_in_dlg : public pledge_dialog {
public:
    con_in_dlg(client& c, desk& at, QWidget* over);

protected:
    bool passes_checks() override;
    planned_save plan() override;

private:
    const QString cur_con_day_;
    pledge_fields fields_;
    std::optional<member_pledge> pledge_; ///< as the dialog shows it
    QString known_ids_;                   ///< of the instalments that there are already

    void show_pledge();
};

/// Changes the instalment that is chosen in the console, and gives the pledge up or takes it up again.
class con_ud_dlg : public pledge_dialog {
public:
    con_ud_dlg(client& c, desk& at, QWidget* over);

protected:
    bool passes_checks() override { return takes(fields_); }
    planned_save plan() override;

private:
    const chosen_instalment chosen_;
    pledge_fields fields_;
    code_list* give_up_cbb;
    QLabel* state_;
    QString con_money_before_;

    void show_instalment();
};

/// Deletes the instalment that is chosen in the console.
class con_del_dlg : public pledge_dialog {
public:
    con_del_dlg(client& c, desk& at, QWidget* over);

protected:
    planned_save plan() override;

private:
    const chosen_instalment chosen_;

    QString what_goes();
};

} // namespace orvo

#pragma once

#include "dues/rules/yearly_dues.h"
#include "dues/screens/dues_dialog.h"
#include "dues/screens/payment_fields.h"

namespace orvo {

/// The form of a payment, over the year that is chosen in the console.
class payment_dialog : public dues_dialog {
protected:
    payment_dialog(const QString& name, client& c, desk& at, QWidget* over, failures::policy how);

    payment_fields fields;

    void open_with(const QString& title, bool place_is_required, const std::function<void()>& load);
    /// The operator has picked a place: the date of the other side is dropped.
    virtual void pick_place();
    bool passes_checks() override;
    void refresh(member_panels& panels) override;
};

/// Adds a payment; proposes to pay what is left.
class dues_in_dlg : public payment_dialog {
public:
    dues_in_dlg(client& c, desk& at, QWidget* over);

protected:
    void pick_place() override;
    bool passes_checks() override;
    planned_save plan() override;

private:
    QString code_member_; ///< the kind under which the payment goes
    QString known_ids_;   ///< of the payments that the year has already

    void propose_the_rest(const std::optional<dues_header>& header);
};

/// Changes the payment that is chosen in the console.
class dues_ud_dlg : public payment_dialog {
public:
    dues_ud_dlg(client& c, desk& at, QWidget* over);

protected:
    planned_save plan() override;

private:
    const QString cur_dues_id_;
    payment before_;

    void show_payment(const std::optional<payment>& line);
};

} // namespace orvo

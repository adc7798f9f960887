#pragma once

#include "dues/rules/settlement.h"
#include "ui/desk.h"
#include "ui/dialog.h"

class QLabel;
class QPushButton;

namespace orvo {

class amount_field;

/// A dialog on the open member's dues: a heading, whose dues of which year these are, what is asked, and two
/// buttons. A save that broke half way goes on behind what is stored, by the same button.
class dues_dialog : public dialog {
public:
    dues_dialog(const QString& name, client& c, desk& at, QWidget* over, dues_year year,
                failures::policy how = failures::policy::report);

protected:
    const dues_year year_;
    QPushButton *Image1, *Image2;

    /// Places the fields under the heading and lets `load` fill them; what could not be loaded is not saved.
    void open(const QString& title, QLayout* fields, const std::function<void()>& load);
    /// Said quietly under the fields.
    void hint(const QString& sentence);
    /// Whether the amount can be saved; refuses it otherwise.
    bool takes(amount_field* amount);
    /// Said instead of a save where the record is gone.
    void close_to_saving(const QString& why);

    /// Asks for what is missing before anything is stored.
    virtual bool passes_checks() { return true; }
    /// All steps of the save, from the first: those that are stored already are skipped.
    virtual void store(save_steps& save) = 0;
    /// Shows in the console what the save has changed.
    virtual void refresh(member_panels& panels) = 0;
    void reject() override;

private:
    desk& desk_;
    const failures::policy how_;
    QWidget* fields_;
    QLabel* hint_;
    save_steps save_;

    QString whose() const;
    bool is_begun() const { return !save_.stored().isEmpty(); }
    void press_ok();
    void refresh_panels();
    void hold_what_is_stored();
};

} // namespace orvo

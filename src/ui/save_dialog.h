#pragma once

#include "ui/desk.h"
#include "ui/dialog.h"
#include "ui/held_save.h"

class QLabel;

namespace orvo {

/// A dialog that saves something of the open member: a heading, whose it is, what is asked, a quiet line, and
/// two buttons. A save that broke half way goes on behind what is stored, by the same button.
class save_dialog : public dialog {
public:
    /// Where it deletes, the button that does so stands apart, and Enter is the way out.
    enum class deed { saving, deleting };

    /// `how`: what becomes of a save that fails before anything of it is stored.
    save_dialog(const QString& name, client& c, desk& at, QWidget* over,
                failures::policy how = failures::policy::report, deed what = deed::saving);

protected:
    QPushButton *Image1, *Image2;

    /// Places the fields under the heading and lets `load` fill them; what could not be loaded is not saved.
    void open(const QString& title, QLayout* fields, const std::function<void()>& load);
    /// Shows what goes, and the question whether it shall where there is one.
    void open_to_delete(const QString& title, const std::function<QString()>& what_goes,
                        const QString& question = {});
    /// Said under the heading; read as the dialog opens.
    virtual QString whose() const = 0;
    /// Said quietly under the fields.
    void hint(const QString& sentence);
    /// Said instead of a save where the record is gone.
    void close_to_saving(const QString& why);

    /// Asks for what is missing before anything is stored.
    virtual bool passes_checks() { return true; }
    /// What the press stores.
    virtual planned_save plan() = 0;
    /// Shows in the console what the save has changed.
    virtual void refresh(member_panels& panels) = 0;
    void reject() override;

private:
    desk& desk_;
    const failures::policy how_;
    const deed what_;
    QLabel* whose_;
    QWidget* fields_;
    QLabel* hint_;
    held_save save_;

    void press_ok();
    void refresh_panels();
    void hold_what_is_stored();
};

} // namespace orvo

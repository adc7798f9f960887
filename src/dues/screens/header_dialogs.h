#pragma once

#include "dues/rules/yearly_dues.h"
#include "dues/screens/dues_dialog.h"

namespace orvo {

class code_list;

/// A member kind and the dues of a year, which a pick of the kind proposes.
class header_dialog : public dues_dialog {
protected:
    header_dialog(const QString& name, client& c, desk& at, QWidget* over, dues_year year);

    code_list* mem_kind_cbb;
    amount_field* str_txt;

    void open_with(const QString& title, const std::function<void()>& load);
    void fill_kinds(const rows& kinds);
    void pick_member_kind();
    bool passes_checks() override;
    void refresh(member_panels& panels) override;
};

/// Opens the current year for a member, whatever year is chosen in the console.
class mem_in_dlg : public header_dialog {
public:
    mem_in_dlg(client& c, desk& at, QWidget* over);

protected:
    planned_save plan() override;
};

/// Changes the year that is chosen in the console.
class mem_ud_dlg : public header_dialog {
public:
    mem_ud_dlg(client& c, desk& at, QWidget* over);

protected:
    planned_save plan() override;

private:
    dues_header before_;

    void show_header(const std::optional<dues_header>& header);
};

} // namespace orvo

#pragma once

#include "members/rules/workplaces.h"
#include "members/screens/workplace_fields.h"
#include "ui/dialog.h"
#include "ui/pick_target.h"
#include "ui/save_dialog.h"

namespace orvo {

class grid;

/// What the dialogs that add and change a workplace share: the fields, with a leaving date, and the press
/// that saves them.
class workplace_dlg : public dialog, public pick_target {
public:
    code_list* list_for(std::string_view table) override { return fields_.list_for(table); }
    std::optional<address_fields> fields_for_address() override { return fields_.address(); }

protected:
    workplace_dlg(const QString& name, qint16 code, client& c, desk& at, QWidget* over);

    desk& desk_;
    workplace_fields fields_;
    code_list *out_y_cbb, *out_m_cbb;
    QPushButton *submit_img, *Image2;

    /// `below_fax`: what is said there; null for nothing.
    QLayout* arrange(QLabel* below_fax = nullptr);
    /// Enter walks the fields that are there by now.
    void begin_to_walk();
    void show_leaving_date(const QString& pers_out_date);
    workplace_data read() const;

    /// What the press stores of a workplace whose name is not empty.
    virtual planned_save plan() = 0;
    virtual QString done_text() const = 0;

private:
    QLabel* no_name_;
    QWidget* held_ = nullptr; ///< the fields, which a save that broke half way holds as they are
    held_save save_;

    void submit();
    bool is_readable();
    void finish();
};

/// Adds a workplace to the open member; a new row can be copied from one of any member.
class comp_in_dlg : public workplace_dlg {
public:
    comp_in_dlg(client& c, desk& at, QWidget* over);
    ~comp_in_dlg() override;

protected:
    planned_save plan() override;
    QString done_text() const override { return QStringLiteral("입력이 완료됬습니다."); }

private:
    QLineEdit* str_txt;
    QPushButton* search_img;
    grid* com_lst;
    QLabel* one_fax_;
    QString known_ids_; ///< of the workplaces that the member has already

    void look_at_fax();
    void search();
    void copy_row(int row);
};

/// Changes one workplace of the open member.
class comp_ud_dlg : public workplace_dlg {
public:
    comp_ud_dlg(client& c, desk& at, QWidget* over);
    ~comp_ud_dlg() override;

protected:
    planned_save plan() override;
    QString done_text() const override { return QStringLiteral("수정 완료됬습니다."); }

private:
    const qint16 opened_from_; ///< the code of the screen in use before
    std::optional<rows> stored_;
    std::vector<column_value> untouched_;

    std::vector<column_value> columns() const;
    void load();
};

/// Removes one, having named it.
class comp_del_dlg : public save_dialog {
public:
    comp_del_dlg(client& c, desk& at, QWidget* over);

protected:
    QString whose() const override;
    planned_save plan() override;
    void refresh(member_panels& panels) override;

private:
    QString what_goes();
};

} // namespace orvo

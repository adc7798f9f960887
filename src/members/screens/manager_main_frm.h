#pragma once

#include "client/save.h"
#include "members/rules/member_data.h"
#include "members/rules/member_pages.h"
#include "members/rules/member_record.h"
#include "members/screens/panel_buttons.h"
#include "ui/member_panels.h"
#include "ui/pick_target.h"
#include "ui/work_screen.h"

class QLabel;

namespace orvo {

class grid;
class member_details;
class member_list;
struct changed_field;

/// The member console: on the left the members whom the last search brought, on the right the chosen one,
/// below him the panels of his dues, workplaces and pledge. The list and the member come from this
/// workstation's copy, the panels and the web login from the server.
class manager_main_frm : public work_screen, public pick_target, public member_panels {
public:
    manager_main_frm(client& c, desk& at, QWidget* over);

    code_list* list_for(std::string_view table) override;
    std::optional<address_fields> fields_for_address() override;

    void show_dues() override;
    void show_dues_lines() override;
    void show_contract() override;
    void show_company() override;

private:
    member_pages pages_;
    int page_ = 1;
    std::optional<rows> shown_;           ///< the open member's row of the copy
    std::vector<column_value> untouched_; ///< what the fields would write of it as they came
    web_identity login_;                  ///< the open member's, as it came

    member_list* custom_lst;
    QLabel* page_txt;
    QLabel* con_txt;
    QPushButton *search_im, *insert_img, *pre_img, *next_img, *cmd_edit, *cmd_del;
    panel_buttons year_buttons, dues_buttons, comp_buttons, con_buttons;
    member_details* details;
    grid *dues_h_grd, *dues_b_grd, *com_grd, *contract_grd;

    void arrange();
    void attach();
    void attach_keys();
    void attach_record_buttons();
    void show_member_page(int page);
    void turn_page(int by);
    void click_member(int row);
    void show_nobody();
    void show_member(const QString& pers_no);
    void open_member(const QString& pers_no);
    void show_years(const std::vector<panel_row>& years);
    void show_pledge(const pledge& found);
    void show_workplaces(const std::vector<panel_row>& places);
    void click_dues_year(int row);
    void go_to_next_panel();
    void refresh();

    void refuse(const refusal& why);
    bool is_member_open();
    bool is_record_chosen(const grid& panel, const QString& otherwise);
    void edit_member();
    void carry_out_edit(save edit);
    std::vector<changed_field> changed_elsewhere(const rows::row& on_server, const web_identity& login,
                                                 const std::vector<column_value>& columns);
    bool may_overwrite(const std::vector<column_value>& columns);
    void take_servers_row(const rows::row& on_server);
    void delete_this_member();
    void carry_out_deletion(save deletion);
    void add_year();
    void add_payment();
    void choose_year_to_pay();
    void open_on_payment(const char* dialog_name, const QString& otherwise);
    void open_on_workplace(const char* dialog_name, qint16 code);
    void open_on_instalment(const char* dialog_name, const QString& otherwise);
};

} // namespace orvo

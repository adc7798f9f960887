#pragma once

#include "members/rules/registration.h"
#include "members/screens/member_fields.h"
#include "members/screens/workplace_fields.h"
#include "ui/draft_keeper.h"
#include "ui/pick_target.h"
#include "ui/work_screen.h"

#include <optional>

class QLabel;

namespace orvo {

class enter_walk;

/// The registration of a new member: one form from top to bottom, saved in one press with the dues of the
/// year, a payment, a pledge and a workplace.
class insert_frm : public work_screen, public pick_target {
public:
    insert_frm(client& c, desk& at, QWidget* over);

    code_list* list_for(std::string_view table) override;
    std::optional<address_fields> fields_for_address() override;

private:
    /// The block "약정 및 회비납입".
    struct payment_fields {
        amount_field *mem_dues_txt, *agree_pay_txt, *dues_in_txt;
        code_list *receipt_cbb, *incom_cbb;
        QToolButton* receipt_img;
        date_group big_in, bran_in;
        QLabel* line; ///< says where what is typed will not be stored
    };

    member_fields member_;
    workplace_fields workplace_;
    code_list* mem_kind_cbb;
    payment_fields payment_;
    QPushButton *mem_in_img, *insert_img, *search_im;
    draft_keeper draft_;

    void arrange();
    QLayout* required_rows();
    QLayout* personal_rows();
    QLayout* payment_rows();
    QLayout* workplace_rows();
    void chain_fields(enter_walk& walk);
    void attach();
    void load_member_combos();
    void pick_member_kind();
    void look_at_payment();
    void check_id();
    void offer_draft();
    void restore(const draft& kept);

    new_member read() const;
    void refuse(const refusal& why);
    bool passes_checks(const new_member& typed);
    void register_member();
    void carry_out(save registration);
    void open_in_console(const QString& pers_no);
    void begin_anew();
};

} // namespace orvo

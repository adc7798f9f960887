#include "members/screens/manager_main_frm.h"
#include "members/screens/member_details.h"
#include "members/screens/member_list.h"
#include "ui/form.h"
#include "ui/grid.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace orvo {

namespace {

/// A heading with what can be done below it at the right.
QLayout* headed_by(const QString& title, std::initializer_list<QPushButton*> buttons)
{
    auto* head = new QHBoxLayout;
    head->setSpacing(0);
    head->addWidget(heading(title), 1);
    for (QPushButton* each : buttons) {
        if (each == *std::prev(buttons.end())) // which deletes
            head->addSpacing(rhythm);
        head->addWidget(each);
    }
    return head;
}

QLayout* panel(const QString& title, const panel_buttons& of, std::initializer_list<part> content)
{
    auto* box = new QVBoxLayout;
    box->setSpacing(2);
    box->addLayout(headed_by(title, {of.in_img, of.ud_img, of.del_img}));
    box->addLayout(below(content, static_cast<int>(content.size()) - 1), 1);
    return box;
}

} // namespace

void manager_main_frm::arrange()
{
    auto* list = group(QStringLiteral("member_list_group"), QStringLiteral("회원리스트"),
                       below({custom_lst, page_txt, line({pre_img, next_img}), search_im, insert_img}, 0));
    list->setFixedWidth(200);

    auto* member = new QVBoxLayout;
    member->setSpacing(rhythm / 2);
    auto* head = new QHBoxLayout;
    head->addWidget(heading(QStringLiteral("세부사항 · 회원정보")));
    head->addSpacing(rhythm * 2);
    head->addWidget(details->number_line, 1);
    head->addWidget(cmd_del);
    head->addSpacing(rhythm * 2);
    head->addWidget(cmd_edit);
    member->addLayout(head);
    member->addWidget(details);

    auto* dues = new QVBoxLayout;
    dues->setSpacing(rhythm / 2);
    dues->addLayout(panel(QStringLiteral("회비현황"), year_buttons, {dues_h_grd}), 1);
    dues->addLayout(panel(QStringLiteral("회비 입금"), dues_buttons, {dues_b_grd}), 1);
    auto* panels = new QHBoxLayout;
    panels->setSpacing(rhythm * 2);
    panels->addLayout(dues, 5);
    panels->addLayout(panel(QStringLiteral("근무처현황"), comp_buttons, {com_grd}), 5);
    panels->addLayout(panel(QStringLiteral("약정현황"), con_buttons, {con_txt, contract_grd}), 4);

    auto* right = new QVBoxLayout;
    right->setSpacing(rhythm);
    right->addLayout(member);
    right->addLayout(panels, 1);
    auto* all = new QHBoxLayout{this};
    all->setContentsMargins(rhythm * 2, rhythm, rhythm * 2, rhythm);
    all->setSpacing(rhythm * 3);
    all->addLayout(below({heading(QStringLiteral("회원관리")), list}, 1));
    all->addLayout(right, 1);
}

} // namespace orvo

#include "reference/screens/zip_dlg.h"

#include "db/schema/schema.h"
#include "reference/rules/address_search.h"
#include "ui/controls.h"
#include "ui/grid.h"
#include "ui/pick_target.h"

#include <QLabel>

namespace orvo {

zip_dlg::zip_dlg(client& c, desk& at, QWidget* over)
    : dialog{QStringLiteral("zip_dlg"), c, over}, desk_{at}, str_txt{text_field(QStringLiteral("str_txt"), 30,
                                                                                width_of("zip", "dong"))},
      Image1{primary_button(QStringLiteral("Image1"), QStringLiteral("검색(&S)"), "search")},
      close_img{button(QStringLiteral("close_img"), QStringLiteral("닫기(&C)"), "x")},
      addr_grd{new grid{QStringLiteral("addr_grd"),
                        {{QStringLiteral("우편번호"), 100}, {QStringLiteral("주소"), 380, false, true}},
                        c}},
      no_codes_{quiet_line(QStringLiteral("no_codes"))}
{
    auto* hint = new QLabel{QStringLiteral("읍/면/동을 입력하여 주세요")};
    hint->setForegroundRole(QPalette::PlaceholderText);
    addr_grd->setAccessibleName(QStringLiteral("주소"));
    addr_grd->set_empty_text(QStringLiteral("찾은 주소를 클릭하면 입력란에 들어갑니다."));
    addr_grd->setMinimumSize(580, 320);
    lay_out(below({heading(QStringLiteral("우편번호 찾기")), hint,
                   form({entry{QStringLiteral("동 이름(&N)"), {str_txt, Image1}}}), no_codes_, addr_grd,
                   line({static_cast<QWidget*>(nullptr), close_img})},
                  4));
    on_enter(str_txt, [this] { search(); });
    on_click(Image1, [this] { search(); });
    connect(close_img, &QPushButton::clicked, this, &zip_dlg::reject);
    addr_grd->on_pick(
        [this](int row) { failures::guard(c_.say, failures::policy::report, [&] { pick(row); }); });
    keep_enter(addr_grd);
    addr_grd->follow(str_txt);
    failures::guard(c_.say, failures::policy::report, [this] { has_codes(); });
    str_txt->setFocus();
}

/// Without them no search brings anything, and none of the words would tell why.
bool zip_dlg::has_codes()
{
    const bool are_there = has_postal_codes(c_.local_conn);
    no_codes_->setText(are_there
                           ? QString{}
                           : QStringLiteral("이 컴퓨터에는 우편번호가 없습니다. 관리자에게 우편번호 넣기"
                                            "(orvo_db import-zip)를 요청하십시오."));
    return are_there;
}

void zip_dlg::search()
{
    addr_grd->clear_rows();
    if (str_txt->text().isEmpty())
        return refuse({QStringLiteral("찾을 동 이름을 입력하여 주세요"), {}, sign::exclamation}, str_txt);
    std::vector<grid_row> shown;
    for (found_address& each : find_addresses(c_.local_conn, str_txt->text()))
        shown.push_back({{std::move(each.post), std::move(each.address)}});
    if (shown.empty() && !has_codes())
        return str_txt->setFocus(Qt::OtherFocusReason);
    if (shown.empty())
        return refuse({QStringLiteral("검색한 내용이 없습니다."), {}, sign::information}, str_txt);
    addr_grd->fill(std::move(shown));
}

void zip_dlg::pick(int row)
{
    // The empty row brings nothing: who misses a row by a hair must not lose the address that is there.
    if (!addr_grd->is_filled(row))
        return;
    pick_target* caller = desk_.target(c_.current_screen);
    const auto fields = caller ? caller->fields_for_address() : std::nullopt;
    if (!fields)
        return;
    const QString post = addr_grd->cell(row, 0);
    fields->post1->setText(post.left(3));
    fields->post2->setText(post.right(3));
    fields->address->setText(addr_grd->cell(row, 1));
    accept();
}

} // namespace orvo

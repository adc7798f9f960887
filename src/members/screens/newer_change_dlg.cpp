#include "members/screens/newer_change_dlg.h"

#include "ui/controls.h"
#include "ui/grid.h"

#include <QLabel>

namespace orvo {

newer_change_dlg::newer_change_dlg(client& c, const std::vector<changed_field>& fields, QWidget* over)
    : dialog{QStringLiteral("newer_change_dlg"), c, over}
{
    auto* changes = new grid{QStringLiteral("change_grd"),
                             {{QStringLiteral("항목"), 130},
                              {QStringLiteral("서버의 내용"), 200},
                              {QStringLiteral("이 화면의 내용"), 200, false, true}},
                             c};
    std::vector<grid_row> shown;
    for (const changed_field& each : fields)
        shown.push_back({{each.caption, each.on_server, each.typed}});
    changes->fill(std::move(shown));
    changes->setAccessibleName(QStringLiteral("다른 내용"));
    changes->setMinimumSize(560, 160);

    QPushButton* mine =
        button(QStringLiteral("mine_img"), QStringLiteral("이 화면의 내용으로 저장(&S)"), "save");
    QPushButton* servers =
        button(QStringLiteral("servers_img"), QStringLiteral("서버의 내용 보기(&V)"), "history");
    QPushButton* neither = button(QStringLiteral("Image2"), QStringLiteral("취소(&C)"), "x");
    neither->setDefault(true); // Enter pressed in haste overwrites nobody's work
    const auto choose = [this](QPushButton* by, choice what) {
        on_click(by, [this, what] {
            chosen = what;
            accept();
        });
    };
    choose(mine, choice::mine);
    choose(servers, choice::servers);
    connect(neither, &QPushButton::clicked, this, &QDialog::reject);
    QWidget* const to_the_right = nullptr;
    lay_out(below({heading(QStringLiteral("다른 곳에서 이 회원을 먼저 고쳤습니다.")),
                   new QLabel{QStringLiteral("이 화면을 연 뒤에 바뀐 항목입니다. 어느 내용을 남길까요?")},
                   changes, line({mine, servers, to_the_right, neither})},
                  2));
}

} // namespace orvo

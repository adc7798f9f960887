#include "members/screens/panel_buttons.h"

#include "ui/controls.h"

namespace orvo {

namespace {

QPushButton* panel_button(const QString& name, const QString& caption, const char* icon_name,
                          const QString& of)
{
    QPushButton* made = button(name, caption, icon_name);
    made->setFlat(true);
    made->setAccessibleName(of + u' ' + caption);
    made->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    return made;
}

} // namespace

panel_buttons::panel_buttons(const QString& stem, const QString& of)
    : in_img{panel_button(stem + QStringLiteral("_in_img"), QStringLiteral("추가"), "plus", of)},
      ud_img{panel_button(stem + QStringLiteral("_ud_img"), QStringLiteral("수정"), "pencil", of)},
      del_img{panel_button(stem + QStringLiteral("_del_img"), QStringLiteral("삭제"), "trash-2", of)}
{
}

} // namespace orvo

#include "members/screens/member_list.h"

#include "ui/context_menu.h"
#include "ui/export_list.h"
#include "ui/theme.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>
#include <QStyledItemDelegate>

namespace orvo {

namespace {

constexpr int pers_no_role = Qt::UserRole;
constexpr int line_gap = 8;

class member_delegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& at) const override
    {
        QStyledItemDelegate::paint(painter, option, at);
        painter->save();
        painter->setPen(option.state.testFlag(QStyle::State_Selected)
                            ? option.palette.color(QPalette::HighlightedText)
                            : colours().quiet_text);
        painter->drawText(option.rect.adjusted(0, 0, -line_gap, 0), Qt::AlignRight | Qt::AlignVCenter,
                          at.data(pers_no_role).toString().left(6));
        painter->restore();
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override
    {
        return {120, option.fontMetrics.height() + line_gap};
    }
};

} // namespace

member_list::member_list(const QString& name, client& c) : c_{c}
{
    setObjectName(name);
    setItemDelegate(new member_delegate{this});
    setUniformItemSizes(true);
    setAlternatingRowColors(true);
    setMinimumWidth(180);
}

void member_list::fill(const std::vector<listed_member>& members)
{
    clear();
    calls_.forget();
    for (const listed_member& each : members) {
        auto* line = new QListWidgetItem{each.pers_name, this};
        line->setData(pers_no_role, each.pers_no);
        line->setData(Qt::AccessibleDescriptionRole, each.pers_no.left(6));
    }
}

QString member_list::pers_no_of(int at) const
{
    return item(at)->data(pers_no_role).toString();
}

int member_list::row_of(const QString& pers_no) const
{
    for (int at = 0; at < count(); ++at)
        if (pers_no_of(at) == pers_no)
            return at;
    return -1;
}

void member_list::on_row(std::function<void(int)> chosen)
{
    calls_.set(std::move(chosen));
    connect(this, &QListWidget::itemClicked, this, [this] { calls_.call_for(currentRow()); });
}

void member_list::mousePressEvent(QMouseEvent* event)
{
    QListWidget::mousePressEvent(event);
    if (event->button() != Qt::LeftButton)
        calls_.call_for_a_move(chosen_row());
}

void member_list::mouseReleaseEvent(QMouseEvent* event)
{
    QListWidget::mouseReleaseEvent(event);
    calls_.call_for_a_move(chosen_row());
}

void member_list::keyPressEvent(QKeyEvent* event)
{
    if (calls_menu(*this, *event))
        return;
    const int before = chosen_row();
    // A list that got the focus by key stands on its first row without having chosen it.
    if (event->key() == Qt::Key_Down && before < 0 && count() > 0)
        setCurrentRow(0);
    else
        QListWidget::keyPressEvent(event);
    const bool is_enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const int now = chosen_row();
    if (now >= 0 && (now != before || is_enter))
        calls_.call_for(now);
}

text_table member_list::as_table() const
{
    text_table list;
    list.columns = {{QStringLiteral("회원명")}, {QStringLiteral("생년월일")}};
    list.row_count = count();
    list.row = [this](qint64 at) {
        const int row = static_cast<int>(at);
        return QStringList{item(row)->text(), pers_no_of(row).left(6)}; // what is shown, and no more
    };
    return list;
}

void member_list::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu menu;
    add_export_actions(menu, c_, [this] { return as_table(); });
    menu.exec(menu_place(*this, *event));
}

void member_list::paintEvent(QPaintEvent* event)
{
    QListWidget::paintEvent(event);
    if (count() > 0)
        return;
    QPainter painter{viewport()};
    painter.setPen(colours().quiet_text);
    painter.drawText(viewport()->rect().adjusted(line_gap, line_gap * 2, -line_gap, 0),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap,
                     QStringLiteral("검색된 회원이 없습니다.\n[검색]을 눌러 회원을 찾으십시오."));
}

} // namespace orvo

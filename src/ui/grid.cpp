#include "ui/grid.h"

#include "client/client.h"
#include "ui/context_menu.h"
#include "ui/export_list.h"
#include "ui/theme.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QShortcut>

namespace orvo {

grid::grid(const QString& name, std::vector<grid_column> columns, client& c)
    : model_{new grid_model{columns}}, c_{c}
{
    setObjectName(name);
    model_->setParent(this);
    setModel(model_);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    horizontalHeader()->setHighlightSections(false);
    setSortingEnabled(true);
    horizontalHeader()->setSortIndicatorClearable(false);
    restore_widths(columns);
    if (has_ticks())
        connect(this, &QTableView::clicked, this, [this](const QModelIndex& at) {
            if (is_filled(at.row()))
                model_->set_ticks({at.row()}, !is_ticked(at.row()));
        });
    fill({});
}

void grid::restore_widths(const std::vector<grid_column>& columns)
{
    // Grids of one name in a family of dialogs differ in their columns.
    const QString key = QStringLiteral("widths/%1-%2").arg(objectName()).arg(columns.size());
    const QVariantList kept = c_.settings.value(key).toList();
    const bool is_kept = kept.size() == static_cast<int>(columns.size());
    for (int i = 0; i < static_cast<int>(columns.size()); ++i) {
        const grid_column& each = columns[static_cast<std::size_t>(i)];
        setColumnWidth(i, is_kept ? kept[i].toInt() : each.width);
        if (each.fills)
            horizontalHeader()->setSectionResizeMode(i, QHeaderView::Stretch);
    }
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this, key](int section) {
        const bool by_hand = QApplication::mouseButtons() != Qt::NoButton;
        if (!by_hand || horizontalHeader()->sectionResizeMode(section) == QHeaderView::Stretch)
            return;
        QVariantList widths;
        for (int i = 0; i < model_->columnCount({}); ++i)
            widths.append(columnWidth(i));
        c_.settings.setValue(key, widths);
    });
}

void grid::fill(std::vector<grid_row> filled)
{
    // An order that outlived its rows would mislead: the newest row is looked for where it always was.
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    model_->fill(std::move(filled));
    calls_.forget();
}

int grid::filled_rows() const
{
    return static_cast<int>(model_->filled().size());
}

bool grid::is_filled(int at) const
{
    return at >= 0 && at < filled_rows() && !cell(at, 0).isEmpty();
}

int grid::chosen_row() const
{
    const int at = selectionModel()->hasSelection() ? currentIndex().row() : -1;
    return at < filled_rows() ? at : -1;
}

QString grid::cell(int at, int column) const
{
    return model_->filled()[static_cast<std::size_t>(at)].cells.value(column);
}

QVariant grid::key(int at) const
{
    return model_->filled()[static_cast<std::size_t>(at)].key;
}

void grid::on_row(std::function<void(int)> chosen)
{
    calls_.set(std::move(chosen));
    setSelectionMode(QAbstractItemView::SingleSelection);
    connect(this, &QTableView::clicked, this, [this](const QModelIndex& at) { calls_.call_for(at.row()); });
}

void grid::mousePressEvent(QMouseEvent* event)
{
    QTableView::mousePressEvent(event);
    if (event->button() != Qt::LeftButton)
        calls_.call_for_a_move(chosen_row());
}

void grid::mouseReleaseEvent(QMouseEvent* event)
{
    QTableView::mouseReleaseEvent(event);
    calls_.call_for_a_move(chosen_row());
}

void grid::on_pick(std::function<void(int)> picked)
{
    picked_ = std::move(picked);
    connect(this, &QTableView::clicked, this, [this](const QModelIndex& at) { picked_(at.row()); });
}

void grid::follow(QLineEdit* field)
{
    auto* down = new QShortcut{Qt::Key_Down, field, nullptr, nullptr, Qt::WidgetShortcut};
    connect(down, &QShortcut::activated, this, [this] {
        if (filled_rows() == 0)
            return;
        setFocus();
        selectRow(0);
    });
}

void grid::on_tick(std::function<void()> ticked)
{
    connect(model_, &QAbstractItemModel::dataChanged, this, std::move(ticked));
}

bool grid::has_ticks() const
{
    return model_->columns().front().ticks;
}

void grid::flip_chosen()
{
    const int in_use = chosen_row();
    if (in_use < 0)
        return;
    std::vector<int> chosen{in_use};
    for (const QModelIndex& each : selectionModel()->selectedRows())
        if (each.row() < filled_rows())
            chosen.push_back(each.row());
    model_->set_ticks(chosen, !is_ticked(in_use));
}

void grid::copy_chosen() const
{
    QModelIndexList chosen = selectionModel()->selectedRows();
    std::sort(chosen.begin(), chosen.end());
    QStringList lines;
    for (const QModelIndex& each : chosen)
        if (each.row() < filled_rows())
            lines.append(model_->filled()[static_cast<std::size_t>(each.row())].cells.join(u'\t'));
    if (!lines.isEmpty())
        QApplication::clipboard()->setText(lines.join(u'\n'));
}

text_table grid::as_table() const
{
    text_table list;
    for (const grid_column& each : model_->columns())
        list.columns.push_back({each.caption, each.is_number});
    list.row_count = filled_rows();
    list.row = [this](qint64 at) { return model_->filled()[static_cast<std::size_t>(at)].cells; };
    return list;
}

void grid::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        return copy_chosen();
    if (calls_menu(*this, *event))
        return;
    if (event->key() == Qt::Key_Space && has_ticks())
        return flip_chosen();
    const bool is_enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const int before = chosen_row();
    // A table that got the focus by key stands on its first row without having chosen it.
    if (event->key() == Qt::Key_Down && before < 0 && filled_rows() > 0)
        selectRow(0);
    else
        QTableView::keyPressEvent(event);
    const int now = chosen_row();
    if (calls_ && now >= 0 && (now != before || is_enter))
        calls_.call_for(now);
    if (picked_ && now >= 0 && is_enter)
        picked_(now);
}

void grid::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu menu;
    menu.addAction(QStringLiteral("복사(&C)"), QKeySequence::Copy, this, [this] { copy_chosen(); });
    menu.addSeparator();
    add_export_actions(menu, c_, [this] { return as_table(); });
    menu.exec(menu_place(*this, *event));
}

void grid::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    if (filled_rows() > 0 || empty_text_.isEmpty())
        return;
    QPainter painter{viewport()};
    painter.setPen(colours().quiet_text);
    const int first = rowHeight(0);
    painter.drawText(viewport()->rect().adjusted(8, first, -8, 0),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, empty_text_);
}

} // namespace orvo

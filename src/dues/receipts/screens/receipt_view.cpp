#include "dues/receipts/screens/receipt_view.h"

#include "dues/receipts/rules/receipt_queue.h"
#include "dues/receipts/screens/receipt_page.h"
#include "ui/theme.h"

#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace orvo {

namespace {

constexpr int gap = 12; // pixels around a page
constexpr double smallest = 0.25;
constexpr double largest = 4;

} // namespace

receipt_view::receipt_view(const QString& name, const std::vector<receipt>& all) : all_{all}
{
    setObjectName(name);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(QStringLiteral("영수증 미리보기"));
    viewport()->setBackgroundRole(QPalette::Mid);
    viewport()->setAutoFillBackground(true);
}

int receipt_view::page_count() const
{
    return static_cast<int>(all_.size());
}

double receipt_view::pixels_per_mm() const
{
    return logicalDpiX() / 25.4 * zoom_;
}

QSize receipt_view::page_pixels() const
{
    return (receipt_page_size * pixels_per_mm()).toSize();
}

int receipt_view::step() const
{
    return page_pixels().height() + gap;
}

int receipt_view::page() const
{
    const int middle = verticalScrollBar()->value() + std::min(viewport()->height(), step()) / 2;
    return std::min(page_count(), middle / step() + 1);
}

void receipt_view::go_to(int page)
{
    verticalScrollBar()->setValue((std::clamp(page, 1, std::max(1, page_count())) - 1) * step());
}

void receipt_view::measure()
{
    const QSize page = page_pixels();
    horizontalScrollBar()->setRange(0, std::max(0, page.width() + 2 * gap - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    // Room enough below the last page for it to come to the top: each page can be gone to.
    verticalScrollBar()->setRange(
        0, std::max({0, (page_count() - 1) * step(), page_count() * step() + gap - viewport()->height()}));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(std::max(1, viewport()->height() / 10));
}

void receipt_view::set_zoom(double zoom)
{
    const int kept = page();
    zoom_ = std::clamp(zoom, smallest, largest);
    measure();
    go_to(kept);
    viewport()->update();
    changed();
}

void receipt_view::zoom_by(int steps)
{
    fit_ = fit::none;
    set_zoom(zoom_ * std::pow(1.2, steps));
}

void receipt_view::fit_to(fit what)
{
    fit_ = what;
    refit();
}

void receipt_view::refit()
{
    const QSizeF paper = receipt_page_size * (logicalDpiX() / 25.4);
    const double across = (viewport()->width() - 2 * gap) / paper.width();
    const double down = (viewport()->height() - 2 * gap) / paper.height();
    if (fit_ == fit::none)
        measure();
    else
        set_zoom(fit_ == fit::width ? across : std::min(across, down));
}

void receipt_view::paintEvent(QPaintEvent* event)
{
    QPainter painter{viewport()};
    if (all_.empty()) {
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(
            viewport()->rect(), Qt::AlignCenter,
            QStringLiteral("출력할 영수증이 없습니다.\n영수증 출력 메뉴에서 먼저 검색하십시오."));
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    const QSize size = page_pixels();
    const int x = std::max(gap, (viewport()->width() - size.width()) / 2) - horizontalScrollBar()->value();
    const int top = verticalScrollBar()->value();
    const int first = std::max(0, (top + event->rect().top()) / step());
    const int last = std::min(page_count() - 1, (top + event->rect().bottom()) / step());
    for (int at = first; at <= last; ++at) {
        const QRect sheet{QPoint{x, gap + at * step() - top}, size};
        painter.fillRect(sheet, Qt::white);
        painter.save();
        painter.translate(sheet.topLeft());
        painter.scale(pixels_per_mm(), pixels_per_mm());
        draw_receipt(painter, all_[static_cast<std::size_t>(at)]);
        painter.restore();
    }
}

void receipt_view::resizeEvent(QResizeEvent*)
{
    refit();
}

void receipt_view::scrollContentsBy(int, int)
{
    viewport()->update();
    changed();
}

void receipt_view::wheelEvent(QWheelEvent* event)
{
    if (!(event->modifiers() & Qt::ControlModifier))
        return QAbstractScrollArea::wheelEvent(event);
    if (event->angleDelta().y() != 0)
        zoom_by(event->angleDelta().y() > 0 ? 1 : -1);
    event->accept();
}

} // namespace orvo

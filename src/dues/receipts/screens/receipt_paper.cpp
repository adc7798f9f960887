#include "dues/receipts/screens/receipt_paper.h"

#include "dues/receipts/screens/receipt_page.h"
#include "files/new_file.h"

#include <QElapsedTimer>
#include <QFile>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QScopeGuard>

namespace orvo {

namespace {

void set_up(QPagedPaintDevice& paper)
{
    paper.setPageLayout({QPageSize{QPageSize::A4}, QPageLayout::Portrait, {}});
}

/// `abandon` is called before the painter ends, which would send what is there.
void paint_pages(QPagedPaintDevice& paper, const std::vector<receipt>& all, page_range which,
                 progress* follow, const std::function<void()>& abandon)
{
    QPainter painter;
    if (!painter.begin(&paper))
        throw db_failure{failure_kind::other,
                         QStringLiteral("인쇄를 시작하지 못했습니다. 프린터를 확인하여 주십시오.")};
    const auto give_up = [&](failure_kind kind, const QString& why) {
        abandon();
        throw db_failure{kind, why};
    };
    painter.scale(paper.logicalDpiX() / 25.4, paper.logicalDpiY() / 25.4);
    QElapsedTimer since;
    since.start();
    for (int page = which.first; page <= which.last; ++page) {
        if (page > which.first && !paper.newPage())
            give_up(failure_kind::other, QStringLiteral("%1쪽에서 인쇄가 중단되었습니다.").arg(page));
        draw_receipt(painter, all[static_cast<std::size_t>(page - 1)]);
        if (!follow || since.elapsed() < 33)
            continue;
        since.restart();
        if (!follow->go_on(page - which.first + 1))
            give_up(failure_kind::cancelled, QStringLiteral("취소했습니다."));
    }
}

} // namespace

void print_receipts(QPrinter& to, const std::vector<receipt>& all, page_range which, progress* follow)
{
    set_up(to);
    to.setFullPage(true);
    to.setDocName(QStringLiteral("영수증"));
    // A part of the run, printed into a file, would pass for the whole.
    auto leftover = qScopeGuard([name = to.outputFileName()] {
        if (!name.isEmpty())
            QFile::remove(name);
    });
    paint_pages(to, all, which, follow, [&to] { to.abort(); });
    leftover.dismiss();
}

void write_receipts(const QString& path, const std::vector<receipt>& all, progress* follow)
{
    new_file file{path};
    {
        QPdfWriter pdf{&file.device()};
        set_up(pdf);
        pdf.setTitle(QStringLiteral("영수증"));
        paint_pages(pdf, all, {1, static_cast<int>(all.size())}, follow, [] {});
    }
    file.finish();
}

} // namespace orvo

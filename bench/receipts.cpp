#include "ui/widgets_pch.h"

#include "milliseconds_of.h"
#include "receipt_period.h"

#include "client/configuration.h"
#include "dues/receipts/screens/dues_receipt_dlg.h"
#include "dues/receipts/screens/receipt_dsg.h"
#include "dues/receipts/screens/receipt_page.h"
#include "ui/theme.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QPdfWriter>

#include <chrono>
#include <cstdio>
#include <cstdlib>

/// Receipts on the register that ORVO_HOME names: 20,000 payments from the search to the first page painted,
/// and 2,000 pages into a file, the client's way and straight through the writer, by turns.
/// Usage: bench_receipts ENGINE MEMBERS FOLDER QUEUES FILES

using namespace orvo;
using orvo::bench::milliseconds_of;

namespace {

constexpr int pages = 2'000;

[[noreturn]] void give_up(const QString& why)
{
    std::fprintf(stderr, "bench_receipts: %s\n", qPrintable(why));
    std::exit(1);
}

/// Nobody sits here: names one file, and ends the process at any box that is not expected.
class no_operator : public prompts {
public:
    explicit no_operator(QString file) : file_{std::move(file)} {}

    void tell(const message& what) override
    {
        if (what.icon != sign::information)
            give_up(what.text);
    }
    bool ask(const message& what, const QString&, const QString&, answer) override { give_up(what.text); }
    file_to_be file_to_write(const QStringList&, int) override { return {file_}; }
    void note(const QString& text) override { give_up(text); }

private:
    QString file_;
};

/// Until nothing is left to paint or lay out.
void settle()
{
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) {
    }
}

class paint_watch : public QObject {
public:
    bool has_painted = false;

    bool eventFilter(QObject*, QEvent* event) override
    {
        has_painted = has_painted || event->type() == QEvent::Paint;
        return false;
    }
};

/// Opens the report and returns when its first page has been painted.
class report_desk : public desk {
public:
    explicit report_desk(client& c) : c_{c} {}

    void show(qint16) override {}
    void ask(const QString&) override {}
    void open_above(const QString&, QWidget*) override
    {
        receipt_dsg report{c_, nullptr};
        auto* view = dynamic_cast<receipt_view*>(report.findChild<QWidget*>(QStringLiteral("view")));
        paint_watch watch;
        view->viewport()->installEventFilter(&watch);
        report.show();
        while (!watch.has_painted)
            QCoreApplication::processEvents();
        settle();
        if (view->page_count() < bench::queued_payments * 9 / 10) // some members have stopped their mail
            give_up(QStringLiteral("%1 pages only").arg(view->page_count()));
    }

private:
    client& c_;
};

void press(QWidget& in, const char* name)
{
    in.findChild<QPushButton*>(QString::fromLatin1(name))->click();
}

void choose(QWidget& in, const char* letter, QDate day)
{
    const auto list = [&](const char* part) {
        return in.findChild<code_list*>(QString::fromLatin1(part) + QString::fromLatin1(letter) +
                                        QStringLiteral("_cbb"));
    };
    list("y")->choose_text(day.toString(QStringLiteral("yyyy")));
    list("m")->choose_text(day.toString(QStringLiteral("MM")));
    list("d")->choose_text(day.toString(QStringLiteral("dd")));
}

void write_straight(const QString& path, const std::vector<receipt>& all)
{
    QPdfWriter pdf{path};
    pdf.setPageLayout({QPageSize{QPageSize::A4}, QPageLayout::Portrait, {}});
    QPainter painter{&pdf};
    painter.scale(pdf.logicalDpiX() / 25.4, pdf.logicalDpiY() / 25.4);
    for (const receipt& each : all) {
        if (&each != &all.front())
            pdf.newPage();
        draw_receipt(painter, each);
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 6)
        give_up(QStringLiteral("bench_receipts ENGINE MEMBERS FOLDER QUEUES FILES"));
    QApplication app{argc, argv};
    apply_theme(app, preferred_shade());
    const QString ours = QString::fromLocal8Bit(argv[3]) + QStringLiteral("/ours.pdf");
    const QString floor = QString::fromLocal8Bit(argv[3]) + QStringLiteral("/floor.pdf");
    no_operator say{ours};
    const program_folder folder = find_program_folder();
    client c{folder, read_server_address(folder), say};
    c.session_branch = QStringLiteral("0");
    c.db_conn.open();
    c.local_conn.open();
    const auto tell = [&](const char* what, const char* who, qint64 found, double value) {
        std::printf("%s %s %s %s %lld %.3f\n", argv[1], argv[2], what, who, found, value);
        std::fflush(stdout);
    };

    report_desk at{c};
    const QDate from{2025, 1, 2};
    const std::optional<QDate> to = bench::last_day_of_queue(c.db_conn, from);
    if (!to)
        give_up(QStringLiteral("the register has too few payments"));
    for (int round = 0; round < std::atoi(argv[4]); ++round) {
        dues_receipt_dlg dlg{c, at, nullptr};
        dlg.show();
        choose(dlg, "1", from);
        choose(dlg, "2", *to);
        dlg.findChild<code_list*>(QStringLiteral("receipt_cbb"))->choose_code(1);
        settle();
        const double taken = milliseconds_of([&] {
            press(dlg, "search_img");
            press(dlg, "print_img");
        });
        tell("receipt_queue", "client", bench::queued_payments, taken);
    }

    c.local_conn.direct("delete from print_tbl where rowid not in (select rowid from print_tbl limit " +
                        std::to_string(pages) + ")");
    const std::vector<receipt> all = queued_receipts(c.local_conn, 2026);
    receipt_dsg report{c, nullptr};
    report.show();
    settle();
    for (int round = 0; round < std::atoi(argv[5]); ++round)
        for (const bool is_client : {round % 2 == 0, round % 2 != 0}) {
            QFile::remove(is_client ? ours : floor);
            const double taken =
                milliseconds_of([&] { is_client ? press(report, "pdf_cmd") : write_straight(floor, all); });
            tell("receipt_pdf", is_client ? "client" : "floor", pages, taken);
        }
    if (QFile{ours}.size() < QFile{floor}.size() || all.size() != pages)
        give_up(QStringLiteral("the client wrote less than the floor"));
    QFile::remove(ours);
    QFile::remove(floor);
    return 0;
}

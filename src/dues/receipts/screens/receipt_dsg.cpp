#include "dues/receipts/screens/receipt_dsg.h"

#include "base/amount.h"
#include "dues/receipts/screens/receipt_paper.h"
#include "dues/receipts/screens/receipt_progress.h"
#include "ui/controls.h"
#include "ui/form.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QScreen>
#include <QShortcut>

namespace orvo {

namespace {

/// A button that shows its icon alone; what it does is said by the tip and to screen readers.
QPushButton* icon_button(const char* name, const char* what, const char* icon_name)
{
    QPushButton* made = button(QString::fromLatin1(name), {}, icon_name);
    made->setToolTip(QString::fromUtf8(what));
    made->setAccessibleName(QString::fromUtf8(what).section(QStringLiteral(" ("), 0, 0));
    return made;
}

} // namespace

printer_answer ask_for_printer(QPrinter& to, int pages, QWidget* over)
{
    if (QPrinterInfo::availablePrinterNames().isEmpty())
        return printer_answer::no_printer;
    QPrintDialog asking{&to, over};
    asking.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintPageRange);
    asking.setMinMax(1, pages);
    asking.setFromTo(1, pages);
    asking.setPrintRange(QAbstractPrintDialog::AllPages);
    return asking.exec() == QDialog::Accepted ? printer_answer::chosen : printer_answer::cancelled;
}

receipt_dsg::receipt_dsg(client& c, QWidget* over, printer_question ask)
    : dialog{QStringLiteral("receipt_dsg"), c, over}, ask_{std::move(ask)},
      view{new receipt_view{QStringLiteral("view"), all_}}, print_cmd{button(QStringLiteral("print_cmd"),
                                                                             QStringLiteral("인쇄(&P)..."),
                                                                             "printer")},
      pdf_cmd{button(QStringLiteral("pdf_cmd"), QStringLiteral("PDF로 저장(&S)..."), "file-down")},
      first_cmd{icon_button("first_cmd", "첫 쪽 (Home)", "chevron-first")},
      previous_cmd{icon_button("previous_cmd", "이전 쪽 (PageUp)", "chevron-left")},
      page_txt{digits_field(QStringLiteral("page_txt"), 6, 6)}, pages_txt{new QLabel},
      next_cmd{icon_button("next_cmd", "다음 쪽 (PageDown)", "chevron-right")}, last_cmd{icon_button(
                                                                                    "last_cmd", "끝 쪽 (End)",
                                                                                    "chevron-last")},
      zoom_out_cmd{icon_button("zoom_out_cmd", "축소 (Ctrl+-)", "zoom-out")}, zoom_txt{new QLabel},
      zoom_in_cmd{icon_button("zoom_in_cmd", "확대 (Ctrl++)", "zoom-in")},
      width_cmd{icon_button("width_cmd", "너비에 맞춤 (Ctrl+1)", "move-horizontal")},
      page_cmd{icon_button("page_cmd", "쪽에 맞춤 (Ctrl+0)", "maximize")},
      close_cmd{button(QStringLiteral("close_cmd"), QStringLiteral("닫기(&C)"), "x")}
{
    setWindowTitle(QStringLiteral("영수증 출력 화면"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    pages_txt->setObjectName(QStringLiteral("pages_txt"));
    zoom_txt->setObjectName(QStringLiteral("zoom_txt"));
    zoom_txt->setAlignment(Qt::AlignCenter);
    zoom_txt->setFixedWidth(room_for(zoom_txt, 6));
    page_txt->setAlignment(Qt::AlignRight);
    page_txt->setFixedWidth(page_txt->minimumWidth());
    page_txt->setAccessibleName(QStringLiteral("쪽"));
    QWidget* const apart = nullptr;
    lay_out(below(
        {line({print_cmd, pdf_cmd, apart, first_cmd, previous_cmd, page_txt, pages_txt, next_cmd, last_cmd,
               apart, zoom_out_cmd, zoom_txt, zoom_in_cmd, width_cmd, page_cmd, apart, close_cmd}),
         view},
        1));
    attach_handlers();
    keep_enter(view); // no button is pressed from the pages
    failures::guard(c_.say, failures::policy::report, [this] { read_queue(); });
    for (QWidget* each :
         {static_cast<QWidget*>(print_cmd), static_cast<QWidget*>(pdf_cmd), static_cast<QWidget*>(page_txt)})
        each->setEnabled(!all_.empty());
    const QSize room = QGuiApplication::primaryScreen()->availableSize();
    resize(std::min(900, room.width() - 40), std::min(980, room.height() - 60));
    view->setFocus();
    show_place();
}

void receipt_dsg::read_queue()
{
    connection own = make_connection(c_.server, database::local);
    own.open();
    all_ = queued_receipts(own, c_.now().date().year());
    pages_txt->setText(QStringLiteral("/ %1쪽").arg(with_separators(view->page_count())));
}

void receipt_dsg::attach_handlers()
{
    const auto does = [this](QPushButton* button, std::initializer_list<QKeySequence> keys,
                             std::function<void()> act) {
        connect(button, &QPushButton::clicked, this, act);
        for (const QKeySequence& each : keys)
            connect(new QShortcut{each, this}, &QShortcut::activated, button, &QPushButton::click);
    };
    on_click(print_cmd, [this] { print(); });
    on_click(
        pdf_cmd, [this] { write_pdf(); }, failures::policy::plain_box);
    connect(new QShortcut{QKeySequence::Print, this}, &QShortcut::activated, print_cmd, &QPushButton::click);
    does(first_cmd, {Qt::Key_Home}, [this] { view->go_to(1); });
    does(previous_cmd, {Qt::Key_PageUp}, [this] { view->go_to(view->page() - 1); });
    does(next_cmd, {Qt::Key_PageDown}, [this] { view->go_to(view->page() + 1); });
    does(last_cmd, {Qt::Key_End}, [this] { view->go_to(view->page_count()); });
    does(zoom_out_cmd, {Qt::CTRL | Qt::Key_Minus}, [this] { view->zoom_by(-1); });
    does(zoom_in_cmd, {Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal}, [this] { view->zoom_by(1); });
    does(width_cmd, {Qt::CTRL | Qt::Key_1}, [this] { view->fit_to(receipt_view::fit::width); });
    does(page_cmd, {Qt::CTRL | Qt::Key_0}, [this] { view->fit_to(receipt_view::fit::page); });
    connect(close_cmd, &QPushButton::clicked, this, &receipt_dsg::reject);
    on_enter(page_txt, [this] {
        view->go_to(page_txt->text().toInt());
        show_place(); // where the number was beyond the last page
        page_txt->selectAll();
    });
    view->changed = [this] { show_place(); };
}

void receipt_dsg::show_place()
{
    const int page = view->page();
    page_txt->setText(QString::number(page));
    zoom_txt->setText(QStringLiteral("%1%").arg(qRound(view->zoom() * 100)));
    // A button that went dead under the finger would lose the focus to its neighbour.
    for (QPushButton* each : {first_cmd, previous_cmd, next_cmd, last_cmd})
        each->setEnabled(!all_.empty());
}

void receipt_dsg::print()
{
    QPrinter printer{QPrinter::HighResolution};
    switch (ask_(printer, view->page_count(), this)) {
    case printer_answer::cancelled:
        return;
    case printer_answer::no_printer:
        return c_.say.tell(
            {QStringLiteral("설치된 프린터가 없습니다. 프린터를 연결하거나 PDF로 저장하십시오."),
             {},
             sign::exclamation});
    case printer_answer::chosen:
        break;
    }
    const bool is_part = printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0;
    const page_range which =
        is_part ? page_range{printer.fromPage(), std::min(printer.toPage(), view->page_count())}
                : page_range{1, view->page_count()};
    const int count = which.last - which.first + 1;
    {
        receipt_progress follow{this, QStringLiteral("인쇄하고 있습니다..."), count};
        print_receipts(printer, all_, which, &follow);
    }
    c_.say.note(QStringLiteral("영수증 %1장을 프린터로 보냈습니다.").arg(with_separators(count)));
}

void receipt_dsg::write_pdf()
{
    const QString path = c_.say.file_to_write({QStringLiteral("PDF 문서(*.pdf)|*.pdf")}).path;
    if (path.isEmpty())
        return;
    {
        receipt_progress follow{this, QStringLiteral("파일을 작성하고 있습니다..."), view->page_count()};
        write_receipts(path, all_, &follow);
    }
    c_.say.tell({QStringLiteral("%1 파일이 작성 되었습니다.").arg(QFileInfo{path}.fileName()),
                 QStringLiteral("확인"), sign::information});
}

} // namespace orvo

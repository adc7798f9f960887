#pragma once

#include "dues/receipts/rules/receipt_queue.h"
#include "dues/receipts/screens/receipt_view.h"
#include "ui/dialog.h"

class QLabel;
class QPrinter;

namespace orvo {

enum class printer_answer { chosen, cancelled, no_printer };

/// Asks the operator for a printer and for the pages, by the platform's dialog.
printer_answer ask_for_printer(QPrinter& to, int pages, QWidget* over);

/// The report: one page for each row of the queue, which it reads when it opens, by a link of its own.
class receipt_dsg : public dialog {
public:
    using printer_question = std::function<printer_answer(QPrinter& to, int pages, QWidget* over)>;

    receipt_dsg(client& c, QWidget* over, printer_question ask = ask_for_printer);

private:
    const printer_question ask_;
    std::vector<receipt> all_;
    receipt_view* view;
    QPushButton* print_cmd;
    QPushButton* pdf_cmd;
    QPushButton* first_cmd;
    QPushButton* previous_cmd;
    QLineEdit* page_txt;
    QLabel* pages_txt;
    QPushButton* next_cmd;
    QPushButton* last_cmd;
    QPushButton* zoom_out_cmd;
    QLabel* zoom_txt;
    QPushButton* zoom_in_cmd;
    QPushButton* width_cmd;
    QPushButton* page_cmd;
    QPushButton* close_cmd;

    void read_queue();
    void attach_handlers();
    void show_place();
    void print();
    void write_pdf();
};

} // namespace orvo

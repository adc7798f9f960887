#pragma once

#include "dues/receipts/rules/receipt_search.h"
#include "ui/desk.h"
#include "ui/dialog.h"

class QLabel;

namespace orvo {

class grid;

/// What both dialogs of receipts are made of: the list of what was found, every line of it ticked, and the
/// way to the report. What is printed is what stands in the list: found here, or left by an earlier search of
/// this operator and taken up.
class receipt_dlg : public dialog {
protected:
    receipt_dlg(const QString& name, const QString& day_caption, client& c, desk& at, QWidget* over);

    /// Runs a search that the operator can end, and lists what it queued. A search that is ended or that
    /// finds no member leaves list and queue as they are.
    using search = std::function<std::optional<listed_receipts>(progress* follow)>;
    void run(const search& wanted);
    searcher who() const { return {c_.session_id, c_.now()}; }
    /// Says something in passing below the list.
    void say_quietly(const QString& text);

    /// The list with what is said below it, to be laid out below the question.
    QLayout* list_part();
    /// Printing and closing.
    QLayout* button_part();

    QPushButton* search_img;

private:
    desk& desk_;
    grid* print_lst;
    QLabel* note_txt;
    QPushButton* print_img;
    QPushButton* close_img;
    QPushButton* left_img;
    bool is_listed_ = false; ///< whether the list shows the queue

    void offer_what_is_left();
    void take_what_is_left();
    void show_found(const listed_receipts& found);
    void show_count();
    void print();
};

} // namespace orvo

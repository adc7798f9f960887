#pragma once

#include "ui/desk.h"
#include "ui/search_dialog.h"

class QListWidget;

namespace orvo {

class code_list;

/// Finds members by a keyword, copies them to this workstation and opens the console on the copy. Below the
/// question stand the last words that were searched for and the last members that were opened.
class search_dlg : public search_dialog {
public:
    search_dlg(client& c, desk& at, QWidget* over);

private:
    desk& desk_;
    code_list* item_cbb;
    QLineEdit* str_txt;
    QListWidget* word_lst;
    QListWidget* member_lst;
    QWidget* recents;

    int item() const;
    void show_recent_words();
    void show_recent_members();
    void run_search();
    void search_again_for(const QString& pers_no);
    bool find(int by_item, const QString& key);
};

} // namespace orvo

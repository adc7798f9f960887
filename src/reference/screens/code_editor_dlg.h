#pragma once

#include "reference/rules/code_editor.h"
#include "ui/desk.h"
#include "ui/dialog.h"
#include "ui/grid.h"

namespace orvo {

class code_list;

/// What a member of the family has beside the name.
struct code_extras {
    struct parent_list {
        std::string_view column;
        code_list* list;
    };
    struct text {
        std::string_view column;
        std::string_view slot;
        std::vector<QLineEdit*> fields; ///< joined without separators
        grid_column shown;
    };

    std::vector<parent_list> parents; ///< under which a new code stands: each must be chosen
    std::vector<text> texts;
    std::vector<entry> above; ///< the name in the form
    std::vector<entry> below;
    grid_column name{QStringLiteral("이름"), 220, false, true};
    int grid_width = 340;
};

/// Looks a code table through by name, adds to it, and hands what was found to the list of the screen that it
/// was opened for. No row is ever changed or deleted here.
class code_editor_dlg : public dialog {
public:
    code_editor_dlg(client& c, desk& at, const code_editor& of, QWidget* over, const code_extras& more = {});

private:
    desk& desk_;
    const code_editor& of_;
    std::vector<code_extras::parent_list> parents_;
    std::vector<code_extras::text> texts_; ///< the name first

    QLineEdit* str_txt;
    QPushButton* search_img;
    QPushButton* insert_img;
    QPushButton* close_img;
    grid* bran_grd;

    grid* make_grid();
    void arrange(const code_extras& more);
    void lead_by_enter();
    void show_rows(const rows& found);
    void search();
    void add();
    void show_row_of(qint64 code, const QString& name);
    void tell_half_stored(const addition& made);
    void bring_mirror_up_to_date();
    values parents() const;
    void pick(int row);
    void close_with_hits();
    /// The rows from `first` on become all that the caller's list offers.
    void hand_back_rows(int first, int count);
};

} // namespace orvo

#pragma once

#include <QString>

class QPushButton;

namespace orvo {

/// The three buttons of a panel of records: to add one, to change and to delete the chosen one.
struct panel_buttons {
    /// "dues" makes dues_in_img, dues_ud_img, dues_del_img; `of` is said to screen readers.
    panel_buttons(const QString& stem, const QString& of);

    QPushButton* in_img;
    QPushButton* ud_img;
    QPushButton* del_img;
};

} // namespace orvo

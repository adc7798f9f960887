#pragma once

#include <QFileDialog>

namespace orvo {

/// Asks for a file to write, as `prompts::file_to_write` describes. It is the toolkit's own dialog on every
/// desktop: those of the desktops word the filters in their own way, and ask about an existing file before
/// the name has its ending.
class save_file_dialog : public QFileDialog {
public:
    save_file_dialog(const QStringList& filters, int selected, QWidget* over);

    /// The place of the filter that is selected now.
    int chosen_filter() const;

protected:
    void accept() override;

private:
    QStringList endings_; ///< with their dots, by filter
    QStringList shown_;   ///< the filters as the toolkit writes them
};

} // namespace orvo

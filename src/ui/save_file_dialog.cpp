#include "ui/save_file_dialog.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QStandardPaths>
#include <QTreeView>

#include <algorithm>

namespace orvo {

save_file_dialog::save_file_dialog(const QStringList& filters, int selected, QWidget* over)
    : QFileDialog{over, QStringLiteral("다른 이름으로 저장")}
{
    setObjectName(QStringLiteral("save_file_dialog"));
    setOption(QFileDialog::DontUseNativeDialog);
    // The toolkit takes the last brackets of a filter for its pattern, and leaves them out where told so.
    // What is left is the text as it was given, brackets of its own included.
    setOption(QFileDialog::HideNameFilterDetails);
    setAcceptMode(QFileDialog::AcceptSave);
    setFileMode(QFileDialog::AnyFile);
    for (const QString& each : filters) {
        const QString pattern = each.section(u'|', 1);
        endings_.append(pattern.mid(1));
        shown_.append(QStringLiteral("%1(%2)").arg(each.section(u'|', 0, 0), pattern));
    }
    setNameFilters(shown_);
    selectNameFilter(shown_.value(selected));
    // Later questions begin where the last one ended.
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (directory() == QDir::current() && QFileInfo{documents}.isDir())
        setDirectory(documents);
    resize(760, 460);
    if (const auto* files = findChild<QTreeView*>(QStringLiteral("treeView"))) {
        files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    }
}

int save_file_dialog::chosen_filter() const
{
    // Some versions of the toolkit tell the whole filter here, others what is seen of it: a filter that
    // another one begins with is seen to end where that one's words go on.
    const QString selected = selectedNameFilter();
    for (int at = 0; at < shown_.size(); ++at)
        if (shown_[at] == selected || shown_[at].section(u'(', 0, -2).trimmed() == selected)
            return at;
    return 0;
}

void save_file_dialog::accept()
{
    auto* name = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    const auto ends_name = [&](const QString& ending) {
        return name->text().endsWith(ending, Qt::CaseInsensitive);
    };
    const bool is_name = name && !name->text().isEmpty() && !name->text().endsWith(u'/') &&
                         !QFileInfo{directory(), name->text()}.isDir();
    if (is_name && std::none_of(endings_.cbegin(), endings_.cend(), ends_name))
        name->setText(name->text() + endings_[chosen_filter()]);
    QFileDialog::accept(); // looks for a file of that name, and asks
}

} // namespace orvo

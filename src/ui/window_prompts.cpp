#include "ui/window_prompts.h"

#include "ui/save_file_dialog.h"

#include <QApplication>
#include <QGridLayout>
#include <QMessageBox>
#include <QPushButton>

namespace orvo {

namespace {

constexpr int least_width = 320; // pixels

QMessageBox::Icon icon_of(sign which)
{
    switch (which) {
    case sign::information:
        return QMessageBox::Information;
    case sign::exclamation:
        return QMessageBox::Warning;
    case sign::critical:
        return QMessageBox::Critical;
    case sign::none:
        break;
    }
    return QMessageBox::NoIcon;
}

void dress(QMessageBox& box, const message& what)
{
    box.setObjectName(QStringLiteral("message_box"));
    box.setTextFormat(Qt::PlainText);
    box.setIcon(icon_of(what.icon));
    box.setWindowTitle(what.title.isEmpty() ? program_title : what.title);
    box.setText(what.text);
    box.setInformativeText(what.about);
    if (!what.details.isEmpty())
        box.setDetailedText(what.details);
    // Room for the title, which a short sentence would cut.
    if (auto* rows = qobject_cast<QGridLayout*>(box.layout()))
        rows->addItem(new QSpacerItem{least_width, 0}, rows->rowCount(), 0, 1, rows->columnCount());
}

} // namespace

void window_prompts::tell(const message& what)
{
    QMessageBox box{QApplication::activeWindow()};
    dress(box, what);
    box.addButton(QMessageBox::Ok)->setIcon({});
    box.exec();
}

bool window_prompts::ask(const message& what, const QString& first, const QString& second, answer usual)
{
    QMessageBox box{QApplication::activeWindow()};
    dress(box, what);
    QPushButton* yes = box.addButton(first, QMessageBox::AcceptRole);
    QPushButton* no = box.addButton(second, QMessageBox::RejectRole);
    box.setDefaultButton(usual == answer::first ? yes : no);
    box.setEscapeButton(no);
    box.exec();
    return box.clickedButton() == yes;
}

file_to_be window_prompts::file_to_write(const QStringList& filters, int selected)
{
    save_file_dialog asking{filters, selected, QApplication::activeWindow()};
    if (asking.exec() != QDialog::Accepted)
        return {};
    return {asking.selectedFiles().value(0), asking.chosen_filter()};
}

void window_prompts::note(const QString& text)
{
    if (show_note)
        show_note(text);
}

} // namespace orvo

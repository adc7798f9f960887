#pragma once

#include <QPointer>
#include <QWidget>

namespace orvo {

class msg_frm;
class work_screen;

/// The inside of the main window: the one open screen fills it; without one it tells how to begin.
class workspace : public QWidget {
public:
    explicit workspace(QWidget* over);

    void set_hint(const QString& hint);
    void show_wait_box();
    /// Takes a screen that has just been made, in place of nothing: the earlier one has been closed.
    void open(work_screen* made);
    /// Closes the open screen when the event under way is done; it is out of sight at once.
    void close_screen();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    msg_frm* wait_box_;
    QPointer<QWidget> screen_;
    QString hint_;
};

} // namespace orvo

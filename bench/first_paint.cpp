#include "peak_memory.h"

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <ctime>
#include <unistd.h>

/// Waits for the first painting of the window AWAITED_WINDOW, prints the clock and the peak of memory, and
/// ends the process. The program that it is linked to is as it always is.

namespace {

class painting_watch : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && !seen_ &&
            watched->objectName() == QLatin1String(AWAITED_WINDOW)) {
            seen_ = true;
            // Told when the window's update is over, with all that stands in the window.
            QMetaObject::invokeMethod(
                this, [] { tell(); }, Qt::QueuedConnection);
        }
        return false;
    }

private:
    bool seen_ = false;

    [[noreturn]] static void tell()
    {
        timespec now;
        clock_gettime(CLOCK_MONOTONIC, &now);
        std::printf("%.3f %.3f\n",
                    static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6,
                    peak_memory());
        std::fflush(stdout);
        _exit(0);
    }
};

void watch_for_painting()
{
    qApp->installEventFilter(new painting_watch{qApp});
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(watch_for_painting)

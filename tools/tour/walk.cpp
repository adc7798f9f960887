#include "tour/walk.h"

#include <QApplication>
#include <QDir>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <cstdio>

namespace orvo {

namespace {

constexpr int beat = 50;            // milliseconds between two looks
constexpr int longest_wait = 30000; // milliseconds in one place
constexpr int settled = 4;          // looks until a window that came is drawn on a real screen

} // namespace

walk::walk(const QString& folder) : folder_{folder}
{
    QDir{}.mkpath(folder_);
    connect(&clock_, &QTimer::timeout, this, [this] { look(); });
}

void walk::start()
{
    clock_.start(beat);
}

void walk::look()
{
    if (is_done())
        return;
    const step& now = steps_[at_];
    QWidget* place = now.place();
    if (!place || !place->window()->windowHandle()->isExposed()) {
        seen_ = 0;
        waited_ += beat;
        if (waited_ > longest_wait) {
            std::fprintf(stderr, "orvo_tour: step %zu (%s) never came\n", at_ + 1, qPrintable(now.picture));
            QApplication::exit(1);
        }
        return;
    }
    if (++seen_ < settled)
        return;
    seen_ = 0;
    waited_ = 0;
    ++at_;
    QApplication::processEvents();
    if (!now.picture.isEmpty())
        take_picture(now.picture, place);
    // Posted: an act may open a box that runs its own loop, in which the clock must go on.
    QTimer::singleShot(0, place, [act = now.act, place] { act(place); });
}

void walk::take_picture(const QString& name, QWidget* place)
{
    const QString file =
        QStringLiteral("%1/%2-%3.png").arg(folder_).arg(++pictures_, 2, 10, QLatin1Char{'0'}).arg(name);
    const bool real_screen = QGuiApplication::platformName() == QLatin1String("xcb");
    const QPixmap picture =
        real_screen ? QGuiApplication::primaryScreen()->grabWindow(0) : place->window()->grab();
    if (!picture.save(file))
        std::fprintf(stderr, "orvo_tour: cannot write %s\n", qPrintable(file));
    else
        std::fprintf(stderr, "%s\n", qPrintable(file));
}

} // namespace orvo

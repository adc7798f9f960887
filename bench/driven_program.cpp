#include "driven_program.h"

#include "shell/main_frm.h"

#include <QAbstractEventDispatcher>
#include <QAction>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>

namespace orvo::bench {

using std::chrono::steady_clock;

namespace {

constexpr auto longest_wait = std::chrono::minutes{5};

[[noreturn]] void give_up(const QString& why)
{
    std::fprintf(stderr, "bench_work: %s\n", qPrintable(why));
    std::fflush(stderr);
    std::_Exit(1);
}

double milliseconds_between(steady_clock::time_point from, steady_clock::time_point to)
{
    return std::chrono::duration<double, std::milli>(to - from).count();
}

double processor_milliseconds()
{
    timespec time;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// Until nothing is left to paint, lay out or delete.
void settle()
{
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) {
    }
}

QWidget* seen(const QString& name)
{
    const QWidget* modal = QApplication::activeModalWidget();
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || (modal && window != modal))
            continue;
        for (QWidget* each : window->findChildren<QWidget*>(name))
            if (each->isVisible())
                return each;
    }
    return nullptr;
}

/// A box would wait for an answer for ever.
void give_up_at_a_box()
{
    if (const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
        give_up(QStringLiteral("a box came up: %1").arg(box->text()));
}

/// Acts once, as soon as a widget of that name is there to be used, from within whatever loop runs then.
void when_seen(const char* name, std::function<void(QWidget*)> act)
{
    auto* look = new QTimer{qApp};
    const auto since = steady_clock::now();
    QObject::connect(look, &QTimer::timeout, look, [=, act = std::move(act)] {
        QWidget* there = seen(QString::fromLatin1(name));
        if (!there && steady_clock::now() - since > longest_wait)
            give_up(QStringLiteral("%1 never came").arg(QLatin1String(name)));
        if (!there)
            return;
        look->stop();
        look->deleteLater();
        settle();
        act(there);
    });
    look->start(1);
}

void type(QWidget* into, const QString& text)
{
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(into, &event);
}

void post_enter(QWidget* to)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
        QCoreApplication::postEvent(
            to, new QKeyEvent{type, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r")});
}

/// Through the window, as the platform hands a click on.
void click(QWidget* on, QPoint at)
{
    QWidget* window = on->window();
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, on->mapTo(window, at));
}

} // namespace

bool watched_application::notify(QObject* to, QEvent* event)
{
    const QEvent::Type type = event->type();
    const QPointer<QObject> still_there{type == QEvent::Paint ? to : nullptr};
    const bool done = QApplication::notify(to, event);
    if (type == QEvent::Paint && still_there) {
        // A list or table paints on its viewport.
        QObject* named = to->objectName() == QLatin1String("qt_scrollarea_viewport") ? to->parent() : to;
        ++paints_[named->objectName()];
        const auto* list = qobject_cast<QListWidget*>(named);
        if (list && list->count() > 0 && list->objectName() == QLatin1String("custom_lst") &&
            list_painted_ == moment{})
            list_painted_ = steady_clock::now();
    } else if (type != QEvent::Paint && list_painted_ != moment{} && window_painted_ == moment{}) {
        window_painted_ = steady_clock::now();
    }
    return done;
}

int watched_application::take_paints(const QString& name)
{
    return paints_.take(name);
}

void driven_program::start()
{
    auto* boxes = new QTimer{&app_};
    QObject::connect(boxes, &QTimer::timeout, &give_up_at_a_box);
    boxes->start(500);
    when_seen("id_txt", [](QWidget* id) {
        type(id, QStringLiteral("head"));
        auto* password = id->window()->findChild<QLineEdit*>(QStringLiteral("passwd_txt"));
        type(password, QStringLiteral("head1234"));
        post_enter(password);
    });
    if (!running_.start({QStringLiteral("re_execute")}))
        give_up(QStringLiteral("the program did not start"));
    settle();
}

driven_program::search_times driven_program::search(const QString& name)
{
    steady_clock::time_point started;
    when_seen("str_txt", [&](QWidget* word) {
        type(word, name);
        settle();
        app_.expect_list();
        started = steady_clock::now();
        post_enter(word);
    });
    app_.expect_list();
    running_.window().findChild<QAction*>(QStringLiteral("m_m_search"))->trigger();
    const auto since = steady_clock::now();
    while (started == steady_clock::time_point{} || !app_.is_list_on_screen()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (steady_clock::now() - since > longest_wait)
            give_up(QStringLiteral("the search for %1 never ended").arg(name));
    }
    const search_times times{milliseconds_between(started, app_.list_painted()),
                             milliseconds_between(started, app_.window_painted())};
    settle();
    if (page() != 1 || members_on_page() == 0)
        give_up(QStringLiteral("the search for %1 did not lead to page 1").arg(name));
    return times;
}

QWidget* driven_program::widget(const char* name) const
{
    QWidget* found = seen(QString::fromLatin1(name));
    if (!found)
        give_up(QStringLiteral("there is no %1").arg(QLatin1String(name)));
    return found;
}

QListWidget* driven_program::list() const
{
    return qobject_cast<QListWidget*>(widget("custom_lst"));
}

QString driven_program::text_of(const char* name) const
{
    return qobject_cast<QLineEdit*>(widget(name))->text();
}

int driven_program::members_on_page() const
{
    return list()->count();
}

int driven_program::page_count() const
{
    static const QRegularExpression digits{QStringLiteral("\\d+")};
    return digits.match(qobject_cast<QLabel*>(widget("page_txt"))->text()).captured().toInt();
}

int driven_program::page() const
{
    static const QRegularExpression digits{QStringLiteral("\\d+(?=\\D*$)")};
    return digits.match(qobject_cast<QLabel*>(widget("page_txt"))->text()).captured().toInt();
}

void driven_program::go_to_page(int number)
{
    auto* button = qobject_cast<QPushButton*>(widget(number > page() ? "next_img" : "pre_img"));
    for (int left = std::abs(number - page()); left > 0; --left)
        button->click();
    settle();
    if (page() != number)
        give_up(QStringLiteral("page %1 was not reached").arg(number));
}

driven_program::click_times driven_program::click_and_settle(QWidget* on, QPoint at)
{
    const double worked = processor_milliseconds();
    const auto started = steady_clock::now();
    click(on, at);
    settle();
    return {milliseconds_between(started, steady_clock::now()), processor_milliseconds() - worked};
}

driven_program::click_times driven_program::turn_page(bool forward)
{
    QWidget* button = widget(forward ? "next_img" : "pre_img");
    const int before = page();
    app_.take_paints(QStringLiteral("custom_lst"));
    const click_times taken = click_and_settle(button, button->rect().center());
    if (page() != before + (forward ? 1 : -1) || app_.take_paints(QStringLiteral("custom_lst")) == 0)
        give_up(QStringLiteral("page %1 was not turned").arg(before));
    return taken;
}

driven_program::click_times driven_program::click_member(int row)
{
    QListWidget* members = list();
    QListWidgetItem* member = members->item(row);
    members->scrollToItem(member);
    settle();
    const QPoint at = members->viewport()->mapTo(members, members->visualItemRect(member).center());
    app_.take_paints(QStringLiteral("pers_no2_txt"));
    const click_times taken = click_and_settle(members, at);
    const QString shown = text_of("pers_no1_txt") + text_of("pers_no2_txt");
    if (shown != member->data(Qt::UserRole).toString() ||
        app_.take_paints(QStringLiteral("pers_no2_txt")) == 0)
        give_up(QStringLiteral("row %1 was clicked, and %2 is shown").arg(row).arg(shown));
    return taken;
}

} // namespace orvo::bench

#include "form_openings.h"

#include "shell/main_frm.h"

#include <QAbstractEventDispatcher>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace orvo::bench {

namespace {

using std::chrono::steady_clock;

const QString form_name = QStringLiteral("insert_frm");
const QString bare_name = QStringLiteral("bare_window");

[[noreturn]] void give_up(const char* what)
{
    std::fprintf(stderr, "bench_saves: %s\n", what);
    std::_Exit(1);
}

/// Milliseconds until nothing is left to do.
double time_of(const std::function<void()>& request)
{
    const auto started = steady_clock::now();
    // From within an event, as that of a click: so what the request deletes goes right behind it.
    QMetaObject::invokeMethod(qApp, request, Qt::QueuedConnection);
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) {
    }
    return std::chrono::duration<double, std::milli>(steady_clock::now() - started).count();
}

struct control {
    std::function<QWidget*(QWidget* over)> make;
    QRect place;
};

template <typename kind, typename... Given>
std::function<QWidget*(QWidget*)> maker(Given... given)
{
    return [=](QWidget* over) { return new kind{given..., over}; };
}

/// The toolkit's own kind of that control: captions stay, what the operator chooses or types is missing.
std::function<QWidget*(QWidget*)> bare_kind_of(const QWidget* like)
{
    if (qobject_cast<QComboBox*>(like->parentWidget()))
        return {}; // the line of a list comes with it
    if (const auto* list = qobject_cast<const QComboBox*>(like))
        return [can_be_typed_into = list->isEditable()](QWidget* over) {
            auto* bare = new QComboBox{over};
            bare->setEditable(can_be_typed_into);
            return bare;
        };
    if (qobject_cast<const QLineEdit*>(like))
        return maker<QLineEdit>();
    if (const auto* caption = qobject_cast<const QLabel*>(like))
        return maker<QLabel>(caption->text());
    if (const auto* box = qobject_cast<const QCheckBox*>(like))
        return maker<QCheckBox>(box->text());
    if (const auto* option = qobject_cast<const QRadioButton*>(like))
        return maker<QRadioButton>(option->text());
    if (const auto* button = qobject_cast<const QPushButton*>(like))
        return maker<QPushButton>(button->text());
    if (qobject_cast<const QToolButton*>(like))
        return maker<QToolButton>();
    return {};
}

std::vector<control> controls_of(const QWidget* form)
{
    std::vector<control> found;
    for (const QWidget* each : form->findChildren<QWidget*>())
        if (auto make = each->isVisible() ? bare_kind_of(each) : nullptr)
            found.push_back({std::move(make), QRect{each->mapTo(form, QPoint{}), each->size()}});
    return found;
}

/// Opens a window with these controls where the workspace has its screens, and takes it away again.
double time_of_bare_window(watched_application& app, QWidget* over, const std::vector<control>& controls)
{
    std::unique_ptr<QWidget> window;
    app.take_paints(bare_name);
    const double took = time_of([&] {
        window = std::make_unique<QWidget>(over);
        for (const control& each : controls)
            each.make(window.get())->setGeometry(each.place);
        window->setObjectName(bare_name);
        window->setAutoFillBackground(true);
        window->setGeometry(over->rect());
        window->show();
        window->raise();
    });
    if (app.take_paints(bare_name) == 0)
        give_up("the bare window was not painted");
    window.reset();
    time_of([] {});
    return took;
}

} // namespace

void open_forms(driven_program& client, watched_application& app, int times,
                const std::function<void(const char* who, double took)>& add)
{
    const QWidget& window = client.running().window();
    auto* command = window.findChild<QAction*>(QStringLiteral("Toolbar1(1)"));
    auto* place = window.findChild<QWidget*>(QStringLiteral("workspace"));
    for (int i = 0; i <= times; ++i) {
        for (const QString& each : {form_name, QStringLiteral("msg_frm"), QStringLiteral("primary_cbb")})
            app.take_paints(each);
        const double took = time_of([command] { command->trigger(); });
        for (const QString& each : {form_name, QStringLiteral("msg_frm"), QStringLiteral("primary_cbb")})
            if (app.take_paints(each) == 0)
                give_up("the form was not painted, or not the wait box before it");
        const QList<QWidget*> forms = place->findChildren<QWidget*>(form_name);
        if (forms.size() != 1 || forms[0]->findChild<QComboBox*>(QStringLiteral("school_cbb"))->count() == 0)
            give_up("the form before this one is still there, or its lists are empty");
        const double floor = time_of_bare_window(app, place, controls_of(forms[0]));
        const double empty = time_of_bare_window(app, place, {});
        if (i == 0)
            continue; // fonts and pictures come into memory
        add("client", took);
        add("floor", floor);
        add("empty", empty);
    }
}

} // namespace orvo::bench

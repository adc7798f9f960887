#include "hands/hands.h"
#include "shell/start.h"
#include "tour/walk.h"
#include "ui/accessible.h"
#include "ui/theme.h"

#include <QAction>
#include <QApplication>
#include <QCommandLineParser>

using namespace orvo;

namespace {

/// From the login to a member's payments, and on to the branch's view of the same register.
void plan(walk& road)
{
    const auto at = [](const char* name) { return [name] { return seen(name); }; };

    road.add({QStringLiteral("login"), at("id_txt"), [](QWidget* id) {
                  type(id, QStringLiteral("head"));
                  press(id, Qt::Key_Return);
              }});
    road.add({{}, at("passwd_txt"), [](QWidget* password) {
                  type(password, QStringLiteral("wrong"));
                  press(password, Qt::Key_Return);
              }});
    road.add({QStringLiteral("login-refused"), at("message_box"),
              [](QWidget* box) { press(box, Qt::Key_Return); }});
    road.add({{}, at("passwd_txt"), [](QWidget* password) {
                  type(password, QStringLiteral("head1234"));
                  press(password, Qt::Key_Return);
              }});
    road.add({QStringLiteral("main-window"), at("workspace"), [](QWidget* window) {
                  window->window()->findChild<QAction*>(QStringLiteral("Toolbar1(1)"))->trigger();
              }});
    road.add({QStringLiteral("registration"), at("mem_in_img"), [](QWidget* window) {
                  window->window()->findChild<QAction*>(QStringLiteral("m_m_search"))->trigger();
              }});
    road.add({QStringLiteral("search"), at("str_txt"), [](QWidget* word) {
                  type(word, QStringLiteral("김"));
                  press(word, Qt::Key_Return);
              }});
    road.add({QStringLiteral("console-page-1"), at("next_img"), [](QWidget* next) { click(next); }});
    road.add({QStringLiteral("console-page-2"), at("custom_lst"), [](QWidget* list) { click_row(list, 3); }});
    road.add({QStringLiteral("member"), at("dues_h_grd"), [](QWidget* years) { click_row(years, 1); }});
    road.add({QStringLiteral("member-payments"), at("search_im"), [](QWidget* search) { click(search); }});
    road.add({QStringLiteral("search-again"), at("str_txt"), [](QWidget* word) {
                  type(word, QStringLiteral("없는 이름"));
                  press(word, Qt::Key_Return);
              }});
    road.add({QStringLiteral("nobody-found"), at("message_box"),
              [](QWidget* box) { press(box, Qt::Key_Return); }});
    road.add({{}, at("str_txt"), [](QWidget* word) {
                  type(word, QStringLiteral("%"));
                  press(word, Qt::Key_Return);
              }});
    road.add(
        {QStringLiteral("everybody"), at("custom_lst"), [](QWidget* list) { press(list, Qt::Key_Down); }});
    road.add({QStringLiteral("first-member"), at("custom_lst"), [](QWidget*) { QApplication::exit(0); }});
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app{argc, argv};
    QApplication::setApplicationName(QStringLiteral("orvo"));
    QCommandLineParser options;
    options.setApplicationDescription(
        QStringLiteral("Walks through the program by itself and takes pictures of what an operator sees."));
    options.addHelpOption();
    options.addOption({QStringLiteral("out"), QStringLiteral("Folder of the pictures."),
                       QStringLiteral("folder"), QStringLiteral("build/tour")});
    options.process(app);

    apply_theme(app, preferred_shade());
    name_controls_for_tools(app);
    walk road{options.value(QStringLiteral("out"))};
    plan(road);
    road.start();
    program running;
    if (!running.start({QStringLiteral("re_execute")}))
        return 1;
    const int result = QApplication::exec();
    return road.is_done() ? result : 1;
}

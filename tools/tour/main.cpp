#include "hands/hands.h"
#include "shell/start.h"
#include "tour/walk.h"
#include "ui/accessible.h"
#include "ui/theme.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QCommandLineParser>
#include <QLineEdit>

using namespace orvo;

namespace {

std::function<QWidget*()> at(const char* name)
{
    return [name] { return seen(name); };
}

void press_enter(QWidget* on)
{
    press(on, Qt::Key_Return);
}

/// A number that nobody of the demo register has.
constexpr const char* birth_date = "880229";
constexpr const char* behind_it = "2345673";

void fill_registration()
{
    for (const auto& [field, text] :
         {std::pair{"name_txt", "나새봄"}, {"pers_no1_txt", birth_date}, {"pers_no2_txt", behind_it}})
        type(seen(field), QString::fromUtf8(text));
    for (int i = 0; i < 3; ++i) // past the kinds that pay nothing
        press(seen("mem_kind_cbb"), Qt::Key_Down);
    for (const char* list : {"bran_cbb", "big_cbb", "sect_cbb"})
        press(seen(list), Qt::Key_Down);
    for (const auto& [field, text] : {std::pair{"tel1_txt", "02"},
                                      {"tel2_txt", "555"},
                                      {"tel3_txt", "0123"},
                                      {"com_name_txt", "새봄초등학교"}})
        type(seen(field), QString::fromUtf8(text));
    for (const char* list : {"part_cbb", "great_div_cbb", "small_div_cbb", "receipt_cbb"})
        press(seen(list), Qt::Key_Down);
    for (const char* list : {"big_in_y_cbb", "bran_in_y_cbb"})
        type(static_cast<QComboBox*>(seen(list))->lineEdit(), QStringLiteral("+"));
}

/// A new member, from the empty form to the console that finds him.
void register_somebody(walk& road)
{
    const auto search = [&road](const QString& word) {
        road.add({{}, at("str_txt"), [word](QWidget* field) {
                      type(field, word);
                      press_enter(field);
                  }});
    };
    road.add({QStringLiteral("main-window"), at("workspace"), [](QWidget* window) {
                  window->window()->findChild<QAction*>(QStringLiteral("Toolbar1(1)"))->trigger();
              }});
    road.add({QStringLiteral("registration"), at("mem_in_img"), [](QWidget*) { fill_registration(); }});
    road.add({{}, at("addr_img"), click});
    search(QStringLiteral("동"));
    road.add({QStringLiteral("postal-codes"), at("addr_grd"), [](QWidget* found) { click_row(found, 0); }});
    road.add({{}, at("school_img"), click});
    search(QStringLiteral("대학교"));
    road.add({QStringLiteral("code-editor"), at("bran_grd"), [](QWidget* found) { click_row(found, 0); }});
    road.add({QStringLiteral("registration-filled"), at("mem_in_img"), click});
    road.add({QStringLiteral("no-pledge"), at("message_box"), press_enter});
    road.add({QStringLiteral("registered"), at("message_box"), press_enter});
    road.add({{}, at("search_im"), click});
    search(QStringLiteral("나새봄"));
    road.add({{}, at("custom_lst"), [](QWidget* list) { press(list, Qt::Key_Down); }});
}

/// A payment by the keyboard alone, and the other dialogs of the console.
void pay_and_look_around(walk& road)
{
    const auto close = [](QWidget* dialog) { press(dialog, Qt::Key_Escape); };
    road.add({{}, at("dues_h_grd"), [](QWidget* years) { click_row(years, 2); }});
    road.add({{}, at("dues_in_img"), click});
    road.add({{}, at("dues_in_dlg"), [](QWidget* dialog) {
                  press(dialog->focusWidget(), Qt::Key_Down);
                  press(dialog->focusWidget(), Qt::Key_Return);
                  type(static_cast<QComboBox*>(dialog->focusWidget())->lineEdit(), QStringLiteral("+"));
                  press(dialog->focusWidget(), Qt::Key_Return);
              }});
    road.add({QStringLiteral("payment"), at("dues_in_dlg"),
              [](QWidget* dialog) { press(dialog->focusWidget(), Qt::Key_Return); }});
    for (const auto& [button, dialog] : {std::pair{"mem_ud_img", "mem_ud_dlg"},
                                         {"mem_del_img", "mem_del_dlg"},
                                         {"con_in_img", "con_in_dlg"},
                                         {"comp_in_img", "comp_in_dlg"}}) {
        road.add({{}, at(button), click});
        road.add({QString::fromLatin1(dialog).chopped(4).replace(u'_', u'-'), at(dialog), close});
    }
}

/// From the payments of a period to their receipts, and the other ways to members who paid.
void print_receipts(walk& road)
{
    const auto start = [&road](const char* command) {
        road.add({{}, at("main_frm"), [command](QWidget* window) {
                      window->findChild<QAction*>(QString::fromLatin1(command))->trigger();
                  }});
    };
    const auto close = [](QWidget* dialog) { press(dialog, Qt::Key_Escape); };
    start("m_mg_dues");
    road.add({QStringLiteral("dues-search"), at("dues_search_dlg"), close});
    start("m_t_date");
    road.add({{}, at("receipt_cbb"), [](QWidget* place) { press(place, Qt::Key_Down); }});
    road.add({{}, at("search_img"), click});
    road.add({QStringLiteral("receipts-of-a-period"), at("print_img"), click});
    road.add({QStringLiteral("receipt"), at("receipt_dsg"), close});
    start("m_r_etc");
    road.add({{}, at("cbb_memkind"), [](QWidget* kind) {
                  for (int i = 0; i < 2; ++i)
                      press(kind, Qt::Key_Down);
              }});
    road.add({{}, at("str_txt"), [](QWidget* word) {
                  type(word, QStringLiteral("김"));
                  press_enter(word);
              }});
    road.add({QStringLiteral("receipts-of-members"), at("pers_receipt_dlg"), close});
}

/// From the login over a new member to a member's payments.
void plan(walk& road)
{

    road.add({QStringLiteral("login"), at("id_txt"), [](QWidget* id) {
                  type(id, QStringLiteral("head"));
                  press(id, Qt::Key_Return);
              }});
    road.add({{}, at("passwd_txt"), [](QWidget* password) {
                  type(password, QStringLiteral("wrong"));
                  press(password, Qt::Key_Return);
              }});
    road.add({QStringLiteral("login-refused"), at("message_box"), press_enter});
    road.add({{}, at("passwd_txt"), [](QWidget* password) {
                  type(password, QStringLiteral("head1234"));
                  press(password, Qt::Key_Return);
              }});
    register_somebody(road);
    road.add({QStringLiteral("console-of-the-new-member"), at("custom_lst"), [](QWidget* list) {
                  list->window()->findChild<QAction*>(QStringLiteral("m_m_search"))->trigger();
              }});
    road.add({QStringLiteral("search"), at("str_txt"), [](QWidget* word) {
                  type(word, QStringLiteral("김"));
                  press(word, Qt::Key_Return);
              }});
    road.add({QStringLiteral("console-page-1"), at("next_img"), [](QWidget* next) { click(next); }});
    road.add({QStringLiteral("console-page-2"), at("custom_lst"), [](QWidget* list) { click_row(list, 3); }});
    road.add({QStringLiteral("member"), at("dues_h_grd"), [](QWidget* years) { click_row(years, 1); }});
    pay_and_look_around(road);
    road.add({QStringLiteral("member-payments"), at("search_im"), click});
    road.add({QStringLiteral("search-again"), at("str_txt"), [](QWidget* word) {
                  type(word, QStringLiteral("없는 이름"));
                  press(word, Qt::Key_Return);
              }});
    road.add({QStringLiteral("nobody-found"), at("message_box"), press_enter});
    road.add({{}, at("str_txt"), [](QWidget* word) {
                  type(word, QStringLiteral("%"));
                  press(word, Qt::Key_Return);
              }});
    road.add({{}, at("custom_lst"), [](QWidget*) {}});
    print_receipts(road);
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

#include "members/screens/insert_frm.h"
#include "members/screens/manager_main_frm.h"
#include "members/screens/search_dlg.h"
#include "shell/login_dlg.h"
#include "support/fake_desk.h"
#include "support/screens.h"
#include "support/test_register.h"
#include "ui/accessible.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPixmapCache>
#include <QPushButton>
#include <QTableView>
#include <QTest>

using namespace orvo;

using make_screen = std::function<QWidget*(client&, desk&)>;

class controls_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void controls_bear_names_and_captions_have_room_data();
    void controls_bear_names_and_captions_have_room();
    void a_screen_leaves_no_pictures_behind();
};

void controls_test::initTestCase()
{
    qputenv("ORVO_ACCESSIBLE_IDS", "1");
    name_controls_for_tools(*qApp);
}

/// In a cache of the room that the screens need once, what nobody asks for again is the first to go.
void controls_test::a_screen_leaves_no_pictures_behind()
{
    running_client on{engine::embedded};
    fake_desk desk;
    const auto open_all = [&](int times) {
        for (int i = 0; i < times; ++i)
            for (const bool is_console : {true, false}) {
                std::unique_ptr<QWidget> screen;
                if (is_console)
                    screen = std::make_unique<manager_main_frm>(on.c, desk, nullptr);
                else
                    screen = std::make_unique<insert_frm>(on.c, desk, nullptr);
                screen->resize(1366, 660);
                screen->grab();
            }
    };
    const int usual = QPixmapCache::cacheLimit();
    QPixmapCache::clear();
    QPixmapCache::setCacheLimit(1024); // KB
    open_all(1);
    QPixmap mark{1, 1};
    QPixmapCache::insert("mark", mark);
    open_all(20);
    const bool is_still_there = QPixmapCache::find("mark", &mark);
    QPixmapCache::setCacheLimit(usual);
    QVERIFY(is_still_there);
}

void controls_test::controls_bear_names_and_captions_have_room_data()
{
    QTest::addColumn<make_screen>("make");
    QTest::addColumn<int>("fields");
    QTest::newRow("login") << make_screen{[](client& c, desk&) { return new login_dlg{c, nullptr}; }} << 2;
    QTest::newRow("search") << make_screen{[](client& c, desk& at) {
        return new search_dlg{c, at, nullptr};
    }} << 4;
    QTest::newRow("console") << make_screen{[](client& c, desk& at) {
        return new manager_main_frm{c, at, nullptr};
    }} << 39;
}

void controls_test::controls_bear_names_and_captions_have_room()
{
    QFETCH(make_screen, make);
    QFETCH(int, fields);
    running_client on{engine::embedded};
    fake_desk desk;
    const std::unique_ptr<QWidget> screen{make(on.c, desk)};
    // A full screen gets what is left of 1366x768 inside the main window; a dialog takes its own size.
    screen->isWindow() && screen->inherits("QDialog") ? bring_up(*screen) : bring_up(*screen, 1366, 660);
    int named = 0;
    for (QWidget* each : screen->findChildren<QWidget*>()) {
        const bool is_field = dynamic_cast<QLineEdit*>(each) || dynamic_cast<QComboBox*>(each) ||
                              dynamic_cast<QTableView*>(each) || dynamic_cast<QListWidget*>(each);
        if (is_field && !each->objectName().isEmpty()) {
            const QByteArray name = each->objectName().toUtf8();
            QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(each);
            QVERIFY2(!heard->text(QAccessible::Name).isEmpty(), name.constData());
            if (each->isVisible())
                QCOMPARE(heard->text(QAccessible::Description), u'#' + each->objectName());
            ++named;
        }
        const bool is_caption = dynamic_cast<QLabel*>(each) || dynamic_cast<QAbstractButton*>(each);
        if (is_caption && each->isVisible() && each->parentWidget() != nullptr) {
            const QSize wanted = each->sizeHint();
            QVERIFY2(each->width() >= wanted.width() && each->height() >= wanted.height(),
                     qPrintable(each->objectName() + u' ' + each->property("text").toString()));
            QVERIFY2(each->parentWidget()->rect().contains(each->geometry()),
                     qPrintable(each->property("text").toString()));
        }
    }
    QVERIFY2(named >= fields, qPrintable(QString::number(named)));
}

ORVO_SCREEN_TESTS(controls_test)
#include "controls_test.moc"

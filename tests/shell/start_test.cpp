#include "db/schema/schema.h"
#include "shell/main_frm.h"
#include "shell/start.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/ordinary_user.h"
#include "support/pausable_proxy.h"
#include "support/screens.h"
#include "support/test_register.h"

#include "client/client.h"
#include "hands/hands.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace orvo;

namespace {

const QString unreachable = QStringLiteral("서버에 연결할 수 없습니다!\n인터넷에 연결되어 있는지 확인하고, "
                                           "잠시 후에 다시 시도하십시오!");
const QString no_local_file = QStringLiteral("로컬 파일 orvo.mdb가 없거나 손상되었습니다. 새로 만들까요?\n"
                                             "이 파일에는 오래 보관하는 자료가 없습니다.");

/// Answers the boxes of a program in their order, while the program waits inside them.
class box_hands {
public:
    box_hands()
    {
        look_.callOnTimeout([this] { look(); });
        look_.start(5);
    }

    /// The next box bears that text. `before` happens while it stands, then the button of that caption is
    /// clicked.
    void will_press(
        const QString& text, const QString& caption, std::function<void()> before = [] {})
    {
        will_meet(text, [=](QWidget& box) {
            before();
            for (auto* each : box.findChildren<QPushButton*>())
                if (each->text() == caption)
                    return each->click();
            static_cast<QDialog&>(box).reject();
        });
    }
    void will_log_in()
    {
        will_meet("login_dlg", [](QWidget& dlg) {
            type(&control<QLineEdit>(dlg, "id_txt"), "head");
            type(&control<QLineEdit>(dlg, "passwd_txt"), "secret");
            click(&control<QPushButton>(dlg, "Image1"));
        });
    }
    void will_cancel_the_login()
    {
        will_meet("login_dlg", [](QWidget& dlg) { press(&dlg, Qt::Key_Escape); });
    }

    QStringList seen; ///< texts of message boxes, names of other dialogs
    bool is_done() const { return steps_.isEmpty(); }

private:
    QTimer look_;
    QList<std::pair<QString, std::function<void(QWidget&)>>> steps_;

    void will_meet(const QString& name, std::function<void(QWidget&)> act)
    {
        steps_.append({name, std::move(act)});
    }

    void look()
    {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal)
            return;
        const auto* box = dynamic_cast<QMessageBox*>(modal);
        seen.append(box ? box->text() : modal->objectName());
        if (!steps_.isEmpty() && steps_.first().first == seen.last())
            return steps_.takeFirst().second(*modal);
        seen.append("which nobody expected");
        static_cast<QDialog*>(modal)->reject();
    }
};

/// A program folder with an operator and two branches in the register, one of them in the local file too.
struct at_start {
    explicit at_start(engine kind = engine::embedded) : its{kind}
    {
        connection db = its.connect();
        an_operator{"head"}.store_in(db);
        for (const int code : {10, 20})
            a_row{"branch_code"}.with("code_bran", code).with("branch_name", "지부").store_in(db);
        connection local = its.connect(database::local);
        a_row{"branch_code", database::local}
            .with("code_bran", 10)
            .with("branch_name", "지부")
            .store_in(local);
        qputenv("ORVO_HOME", its.folder().path.toUtf8());
    }

    void configure(const server_address& server)
    {
        QDir{its.folder().path}.mkpath("conf");
        QFile file{its.folder().file("conf/connection.ini")};
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QStringLiteral("[SERVER]\nengine=postgresql\nhost=%1\nport=%2\nuser=%3\ndatabase=%4\n"
                                  "mail_database=%5\ntls=disable\n")
                       .arg(server.host)
                       .arg(server.port)
                       .arg(server.user, server.name, server.mail_name)
                       .toUtf8());
    }
    bool run(const QStringList& arguments = {"re_execute"}, const start_steps& steps = {})
    {
        running.reset();
        running = std::make_unique<program>();
        return running->start(arguments, steps);
    }
    QString local_file() const { return its.folder().file("orvo.mdb"); }
    qint64 local_branches()
    {
        return its.connect(database::local).number("select count(*) as n from branch_code");
    }

    test_register its;
    box_hands hands;
    std::unique_ptr<program> running;
};

void overwrite(const QString& path, const QByteArray& bytes, qint64 keep = 0)
{
    QFile file{path};
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.resize(keep));
    file.seek(keep);
    file.write(bytes);
}

} // namespace

class start_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("XDG_RUNTIME_DIR", runtime_.path().toUtf8()); }
    void an_operator_logs_in_data() { engines_under_test(); }
    void an_operator_logs_in();
    void a_second_instance_is_told_and_ends();
    void the_version_is_checked_unless_restarted();
    void a_broken_local_file_is_made_anew_data();
    void a_broken_local_file_is_made_anew();
    void a_broken_local_file_is_left_alone_when_declined();
    void an_unreachable_server_can_be_tried_again_data() { engines_under_test(); }
    void an_unreachable_server_can_be_tried_again();
    void codes_come_even_after_a_start_that_was_broken_off();
    void an_unknown_engine_is_said();
    void a_folder_that_cannot_be_written_is_said();

private:
    QTemporaryDir runtime_;
};

void start_test::an_operator_logs_in()
{
    FETCH_ENGINE(kind);
    at_start at{kind};
    if (kind == engine::postgresql)
        at.configure(at.its.address());
    at.hands.will_log_in();
    QVERIFY(at.run());
    QCOMPARE(at.hands.seen, QStringList{"login_dlg"});
    QVERIFY(at.running->window().isVisible());
    QCOMPARE(at.running->running_client().session_name, QStringLiteral("이정은"));
}

void start_test::a_second_instance_is_told_and_ends()
{
    at_start at;
    at.hands.will_log_in();
    QVERIFY(at.run());
    program second;
    int checks = 0;
    at.hands.will_press("선택하신 프로그램은 이미 실행 중 입니다.", "확인");
    QVERIFY(!second.start({}, {.check_version = [&] { return ++checks > 0; }}));
    QCOMPARE(checks, 0);
    QCOMPARE(at.hands.seen.mid(1), QStringList{"선택하신 프로그램은 이미 실행 중 입니다."});
    QVERIFY(at.running->window().isVisible());
    at.running.reset();
    at.hands.will_log_in();
    QVERIFY(second.start({}));
}

void start_test::the_version_is_checked_unless_restarted()
{
    at_start at;
    int checks = 0;
    const start_steps says_no{.check_version = [&] { return ++checks < 0; }};
    for (const QStringList& arguments : {QStringList{}, {"RE_EXECUTE"}, {"re_execute", "x"}})
        QVERIFY(!at.run(arguments, says_no)); // it ends in favour of the update
    QCOMPARE(checks, 3);
    QCOMPARE(at.hands.seen, QStringList{});
    at.hands.will_cancel_the_login();
    QVERIFY(!at.run({" re_execute "}, says_no));
    QCOMPARE(checks, 3);
    QCOMPARE(at.hands.seen, QStringList{"login_dlg"});
}

void start_test::a_broken_local_file_is_made_anew_data()
{
    QTest::addColumn<std::function<void(at_start&)>>("breaks");
    const auto row = [](const char* name, std::function<void(at_start&)> breaks) {
        QTest::newRow(name) << breaks;
    };
    row("missing", [](at_start& at) { QFile::remove(at.local_file()); });
    row("empty", [](at_start& at) { overwrite(at.local_file(), {}); });
    row("cut short", [](at_start& at) { overwrite(at.local_file(), {}, 4096); });
    row("garbage", [](at_start& at) { overwrite(at.local_file(), QByteArray(20'000, '?')); });
    row("garbage behind the first page",
        [](at_start& at) { overwrite(at.local_file(), QByteArray(300'000, 'x'), 4096); });
    row("a table gone", [](at_start& at) { at.its.connect(database::local).direct("drop table religion"); });
    row("a column gone", [](at_start& at) {
        at.its.connect(database::local).direct("alter table person_m_tbl drop column sub_code");
    });
}

void start_test::a_broken_local_file_is_made_anew()
{
    QFETCH(std::function<void(at_start&)>, breaks);
    at_start at;
    breaks(at);
    const bool was_there = QFile::exists(at.local_file());
    at.hands.will_press(no_local_file, "새로 만들기");
    at.hands.will_log_in();
    QVERIFY(at.run());
    QCOMPARE(at.hands.seen, (QStringList{no_local_file, "login_dlg"}));
    QCOMPARE(at.local_branches(), 2); // both of the register
    QCOMPARE(QFile::exists(at.local_file() + ".damaged"), was_there);
    at.hands.will_log_in(); // and the next start asks nothing
    QVERIFY(at.run());
}

void start_test::a_broken_local_file_is_left_alone_when_declined()
{
    at_start at;
    overwrite(at.local_file(), "not a database");
    at.hands.will_press(no_local_file, "그만두기");
    QVERIFY(!at.run());
    QFile file{at.local_file()};
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray{"not a database"});
    QCOMPARE(at.hands.seen, QStringList{no_local_file});
}

void start_test::an_unreachable_server_can_be_tried_again()
{
    FETCH_ENGINE(kind);
    at_start at{kind};
    std::unique_ptr<pausable_proxy> proxy;
    const QString path = file_of(at.its.address(), database::server);
    const auto take_away = [&] { proxy ? proxy->refuse() : void(QFile::rename(path, path + ".away")); };
    const auto bring_back = [&] { proxy ? proxy->resume() : void(QFile::rename(path + ".away", path)); };
    if (kind == engine::postgresql) {
        proxy = std::make_unique<pausable_proxy>(at.its.address());
        at.configure(proxy->address());
    }
    take_away();
    at.hands.will_press(unreachable, "다시 시도");
    at.hands.will_press(unreachable, "끝내기");
    QVERIFY(!at.run());
    at.hands.will_press(unreachable, "다시 시도");
    at.hands.will_press(unreachable, "다시 시도", bring_back);
    at.hands.will_log_in();
    QVERIFY(at.run());
    QVERIFY(at.hands.is_done());
}

void start_test::codes_come_even_after_a_start_that_was_broken_off()
{
    at_start at;
    QFile::remove(at.local_file());
    const QString path = file_of(at.its.address(), database::server);
    QFile::rename(path, path + ".away");
    at.hands.will_press(no_local_file, "새로 만들기");
    at.hands.will_press(unreachable, "끝내기");
    QVERIFY(!at.run());
    QFile::rename(path + ".away", path);
    at.its.connect().direct("alter table religion rename to faith"); // the codes cannot be read to their end
    at.hands.will_press(no_local_file, "새로 만들기");
    at.hands.will_press("no such table: religion", "확인");
    QVERIFY(!at.run());
    at.its.connect().direct("alter table faith rename to religion");
    at.hands.will_press(no_local_file, "새로 만들기");
    at.hands.will_log_in();
    QVERIFY(at.run());
    QCOMPARE(at.local_branches(), 2);
}

void start_test::an_unknown_engine_is_said()
{
    at_start at;
    QDir{at.its.folder().path}.mkpath("conf");
    overwrite(at.its.folder().file("conf/connection.ini"), "[SERVER]\nengine=oracular\n");
    const QString text = "conf/connection.ini의 engine 값 \"oracular\"을(를) 알 수 없습니다.";
    at.hands.will_press(text, "확인");
    QVERIFY(!at.run());
    QCOMPARE(at.hands.seen, QStringList{text});
}

void start_test::a_folder_that_cannot_be_written_is_said()
{
    at_start at;
    const QString folder = at.its.folder().path;
    const auto for_all = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
    for (const QFileInfo& each : QDir{folder}.entryInfoList(QDir::Files))
        QFile::setPermissions(each.filePath(), for_all);
    QFile::setPermissions(folder, for_all | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther);
    const QString text = "프로그램 폴더에 쓸 수 없습니다. 검색 결과와 설정이 저장되지 않습니다.\n" + folder;
    at.hands.will_press(text, "확인");
    at.hands.will_log_in();
    {
        const ordinary_user unprivileged;
        at.run();
        QCOMPARE(at.hands.seen.join(u'|'), text + "|login_dlg");
        at.running.reset();
    }
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

ORVO_SCREEN_TESTS(start_test)
#include "start_test.moc"

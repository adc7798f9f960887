#include "client/drafts.h"
#include "client/system_log.h"
#include "files/write_list.h"
#include "shell/main_frm.h"
#include "shell/start.h"
#include "support/builders.h"
#include "support/engines.h"
#include "support/files.h"
#include "support/ordinary_user.h"
#include "support/pausable_proxy.h"
#include "support/screens.h"
#include "support/test_register.h"

#include "hands/hands.h"

#include <QApplication>
#include <QDirIterator>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <sys/stat.h>

using namespace orvo;

namespace {

const QString unreachable = QStringLiteral("서버에 연결할 수 없습니다!\n인터넷에 연결되어 있는지 확인하고, "
                                           "잠시 후에 다시 시도하십시오!");
const QString no_local_file =
    QStringLiteral("로컬 파일 orvo.mdb가 없습니다. 새로 만들까요?\n"
                   "코드표는 서버에서 받지만, 우편번호는 관리자가 다시 넣어야 합니다.");
const QString broken_local_file =
    QStringLiteral("로컬 파일 orvo.mdb가 손상되었습니다. 새로 만들까요?\n"
                   "우편번호, 작성 중이던 내용, 영수증 대기열, 최근 검색은 읽을 수 있는 만큼 옮기고, 손상된 "
                   "파일은 orvo.mdb.damaged로 남깁니다.");
const QString nothing_carried = QStringLiteral(
    "로컬 파일을 새로 만들었습니다.\n옮긴 자료: 없음\n읽을 수 없는 자료는 옮기지 못했습니다.\n"
    "이 컴퓨터에는 우편번호가 없습니다. 관리자에게 우편번호 넣기(orvo_db import-zip)를 요청하십시오.");

/// Answers the boxes of a program in their order, while the program waits inside them.
class box_hands {
public:
    box_hands()
    {
        look_.callOnTimeout([this] { look(); });
        look_.start(5);
    }

    /// The next box bears that text, and the button of that caption is clicked.
    void will_press(const QString& text, const QString& caption)
    {
        steps_.append({text, [=](QWidget& box) {
                           for (auto* each : box.findChildren<QPushButton*>())
                               if (each->text() == caption)
                                   return each->click();
                           static_cast<QDialog&>(box).reject();
                       }});
    }
    void will_log_in()
    {
        steps_.append({"login_dlg", [](QWidget& dlg) {
                           type(&control<QLineEdit>(dlg, "id_txt"), "head");
                           type(&control<QLineEdit>(dlg, "passwd_txt"), "secret");
                           click(&control<QPushButton>(dlg, "Image1"));
                       }});
    }

    QStringList seen; ///< texts of message boxes, names of other dialogs

private:
    QTimer look_;
    QList<std::pair<QString, std::function<void(QWidget&)>>> steps_;

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

/// A program folder with an operator and a branch in the register.
struct at_start {
    explicit at_start(engine kind = engine::embedded) : its{kind}
    {
        connection db = its.connect();
        an_operator{"head"}.store_in(db);
        a_row{"branch_code"}.with("code_bran", 10).with("branch_name", "지부").store_in(db);
        qputenv("ORVO_HOME", its.folder().path.toUtf8());
    }

    void configure(const server_address& server)
    {
        write_file(its.folder().file("conf/connection.ini"),
                   QStringLiteral("[SERVER]\nengine=%1\nhost=%2\nport=%3\nuser=%4\npassword=%5\ndatabase=%6\n"
                                  "mail_database=%7\ntls=disable\n")
                       .arg(name_of(server.kind), server.host)
                       .arg(server.port)
                       .arg(server.user, server.password, server.name, server.mail_name)
                       .toUtf8());
    }
    bool run()
    {
        running.reset();
        running = std::make_unique<program>();
        return running->start({"re_execute"});
    }
    QString local_file() const { return its.folder().file("orvo.mdb"); }

    test_register its;
    box_hands hands;
    std::unique_ptr<program> running;
};

} // namespace

class start_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("XDG_RUNTIME_DIR", runtime_.path().toUtf8()); }
    void an_operator_logs_in_data() { engines_under_test(); }
    void an_operator_logs_in()
    {
        FETCH_ENGINE(kind);
        at_start at{kind};
        if (kind != engine::embedded)
            at.configure(at.its.address());
        a_member{"9001011234568"}.store_in(*std::make_unique<connection>(at.its.connect(database::local)));
        at.hands.will_log_in();
        QVERIFY(at.run());
        QCOMPARE(at.hands.seen, QStringList{"login_dlg"});
        QVERIFY(at.running->window().isVisible());
        client& c = at.running->running_client();
        QCOMPARE(c.session_name, QStringLiteral("이정은"));
        QCOMPARE(c.local_conn.number("select count(*) as n from person_m_tbl"),
                 0); // of whoever was here before
    }

    void a_second_instance_is_told_and_ends()
    {
        at_start at;
        at.hands.will_log_in();
        QVERIFY(at.run());
        program second;
        at.hands.will_press("선택하신 프로그램은 이미 실행 중 입니다.", "확인");
        QVERIFY(!second.start({}));
        QCOMPARE(at.hands.seen.mid(1), QStringList{"선택하신 프로그램은 이미 실행 중 입니다."});
        QVERIFY(at.running->window().isVisible());
        at.running.reset();
        at.hands.will_log_in();
        QVERIFY(second.start({}));
    }

    void a_broken_local_file_is_made_anew_when_wanted()
    {
        at_start at;
        write_file(at.local_file(), "not a database");
        at.hands.will_press(broken_local_file, "그만두기");
        QVERIFY(!at.run());
        QFile file{at.local_file()};
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray{"not a database"});
        for (const bool is_there : {true, false}) {
            if (!is_there)
                QFile::remove(at.local_file());
            at.hands.will_press(is_there ? broken_local_file : no_local_file, "새로 만들기");
            if (is_there)
                at.hands.will_press(nothing_carried, "확인");
            at.hands.will_log_in();
            QVERIFY2(at.run(), qPrintable(at.hands.seen.join(u'|')));
            QCOMPARE(at.its.connect(database::local).number("select count(*) as n from branch_code"), 1);
            QVERIFY(QFile::exists(at.local_file() + ".damaged"));
        }
        at.running.reset();
        at.its.connect(database::local).direct("drop table branch_code"); // as before a newer version
        at.hands.will_log_in();                                           // and the next start asks nothing
        QVERIFY(at.run());
        QCOMPARE(at.its.connect(database::local).number("select count(*) as n from branch_code"), 1);
    }

    void a_local_file_that_another_program_holds_is_left_as_it_is()
    {
        at_start at;
        write_file(at.its.folder().file("conf/connection.ini"), "[SERVER]\nstatement_timeout=1\n");
        connection other = at.its.connect(database::local);
        other.direct("pragma locking_mode=exclusive");
        other.write("insert into branch_code (code_bran) values (7)");
        at.hands.will_press("로컬 파일 orvo.mdb를 다른 프로그램이 쓰고 있습니다.\n"
                            "그 프로그램이 끝난 뒤에 다시 시작하십시오.",
                            "확인");
        QVERIFY(!at.run());
        other.close();
        at.hands.will_log_in();
        QVERIFY(at.run());
        QCOMPARE(at.hands.seen.size(), 2);
    }

    void an_unreachable_server_can_be_tried_again_data() { engines_under_test(); }
    void an_unreachable_server_can_be_tried_again()
    {
        FETCH_ENGINE(kind);
        at_start at{kind};
        std::unique_ptr<pausable_proxy> proxy;
        const QString path = file_of(at.its.address(), database::server);
        const auto take_away = [&] { proxy ? proxy->refuse() : void(QFile::rename(path, path + ".away")); };
        const auto bring_back = [&] { proxy ? proxy->resume() : void(QFile::rename(path + ".away", path)); };
        if (kind != engine::embedded) {
            proxy = std::make_unique<pausable_proxy>(at.its.address());
            at.configure(proxy->address());
        }
        take_away();
        at.hands.will_press(unreachable, "다시 시도");
        at.hands.will_press(unreachable, "끝내기");
        QVERIFY(!at.run());
        QCOMPARE(at.hands.seen, (QStringList{unreachable, unreachable}));
        bring_back();
        at.hands.will_log_in();
        QVERIFY(at.run());
    }

    void a_weak_configuration_is_told_and_the_work_goes_on()
    {
        if (!is_at_hand(engine::postgresql))
            QSKIP("ORVO_TEST_POSTGRESQL names no server; scripts/with_postgresql.sh starts one");
        at_start at{engine::postgresql};
        at.configure(at.its.address());
        const QString path = at.its.folder().file("conf/connection.ini");
        write_file(path, content_of(path).replace("tls=disable\n", ""));
        QFile::setPermissions(path, read_only);
        const QString readable =
            "설정 파일을 이 컴퓨터의 다른 사용자도 읽을 수 있습니다. 서버의 비밀번호가 들어 "
            "있으므로 본인만 읽을 수 있게 해야 합니다.\n\n";
        const QString no_tls =
            "서버와의 통신을 암호화할지 정하지 않았습니다(tls). 암호화되지 않은 통신은 다른 사람이 "
            "엿볼 수 있습니다.\n\n";
        const QString end = "관리자에게 알려 주십시오. 일은 그대로 계속할 수 있습니다.\n" + path;
        at.hands.will_press(readable + no_tls + end, "확인");
        at.hands.will_log_in();
        QVERIFY(at.run());
        QCOMPARE(at.hands.seen, (QStringList{readable + no_tls + end, "login_dlg"}));
    }

    void a_folder_that_cannot_be_written_is_said()
    {
        at_start at;
        const QString folder = at.its.folder().path;
        const auto for_all = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
        for (const QFileInfo& each : QDir{folder}.entryInfoList(QDir::Files))
            QFile::setPermissions(each.filePath(), for_all);
        QFile::setPermissions(folder, for_all | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther);
        const QString text =
            "프로그램 폴더에 쓸 수 없습니다. 검색 결과와 설정이 저장되지 않습니다.\n" + folder;
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

    void nobody_else_reads_what_it_writes()
    {
        const mode_t usual = ::umask(022);
        at_start at;
        QFile::remove(at.local_file());
        const QString former = at.its.folder().file("lists/former.csv");
        write_file(former, "");
        QFile::setPermissions(former, read_only | QFile::WriteOwner);
        at.hands.will_press(no_local_file, "새로 만들기");
        at.hands.will_log_in();
        QVERIFY(at.run());
        client& c = at.running->running_client();
        c.settings.setValue("width", 1);
        c.settings.sync();
        write_system_log(c.folder, test_clock(), "전송");
        for (const char* list : {"lists/former.csv", "lists/new.csv"})
            write_csv(c.folder.file(list), {{{"성명"}}, 1, [](qint64) { return QStringList{"김"}; }});
        keep_draft(c.local_conn, "head", "insert_frm", {});
        QStringList seen;
        for (const QString& place : {c.folder.path, runtime_.path()})
            for (QDirIterator all{place, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories};
                 all.hasNext();) {
                const QString path = all.next();
                seen.append(all.fileName());
                QVERIFY2(mode_of(path) == (path == former ? 0755 : 0600), qPrintable(path));
            }
        for (const char* each :
             {"SystemLog.txt", "user.ini", "orvo.mdb-wal", "orvo_db.sqlite-shm", "new.csv"})
            QVERIFY2(seen.contains(each), each);
        QCOMPARE(seen.filter(QRegularExpression{"^orvo-.*lock$"}).size(), 1);
        QCOMPARE(mode_of(c.folder.file("conf")), 0700);
        at.running.reset();
        QCOMPARE(::umask(usual), mode_t{022});
    }

private:
    QTemporaryDir runtime_;
};

ORVO_SCREEN_TESTS(start_test)
#include "start_test.moc"

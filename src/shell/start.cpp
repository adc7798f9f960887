#include "shell/start.h"

#include "client/client.h"
#include "client/code_mirror.h"
#include "client/configuration.h"
#include "client/local_file.h"
#include "shell/code_refresh.h"
#include "shell/main_frm.h"
#include "shell/new_local_file.h"
#include "shell/unfinished_saves_dlg.h"
#include "ui/failures.h"
#include "ui/patience.h"
#include "ui/window_prompts.h"

#include <QCryptographicHash>
#include <QDir>
#include <QLockFile>
#include <QStandardPaths>
#include <QStatusBar>

namespace orvo {

namespace {

/// Opens a connection, as often as the operator wants to try. False: he wants to end.
bool open_patiently(connection& line, prompts& say)
{
    while (true) {
        try {
            line.open();
            return true;
        } catch (const db_failure& failure) {
            const bool refused = failure.kind() == failure_kind::login_refused;
            message what{
                refused ? QStringLiteral("서버에 로그인 할 수 없습니다! 관리자에게 문의하시기 바랍니다!")
                        : QStringLiteral("서버에 연결할 수 없습니다!\n인터넷에 연결되어 있는지 확인하고, "
                                         "잠시 후에 다시 시도하십시오!"),
                refused ? QStringLiteral("로그인 에러") : QStringLiteral("서버연결 에러"), sign::critical};
            what.details = failure.details();
            if (!say.ask(what, QStringLiteral("다시 시도"), QStringLiteral("끝내기"), answer::first))
                return false;
        }
    }
}

/// Opens the local file and brings it up to this version of the program. The code tables that it had not are
/// marked as behind the server.
bool has_sound_local_file(client& c)
{
    try {
        c.local_conn.open();
        for (const std::string_view each : complete_local_file(c.local_conn))
            c.mirrors_behind.insert(each);
        return is_local_file_sound(c.local_conn);
    } catch (const db_failure& failure) {
        if (is_held_elsewhere(failure)) // nothing of it is lost: it must not be made anew
            throw db_failure{failure.kind(),
                             QStringLiteral("로컬 파일 orvo.mdb를 다른 프로그램이 쓰고 있습니다.\n"
                                            "그 프로그램이 끝난 뒤에 다시 시작하십시오.")};
        return false;
    }
}

/// What the administrator should mend in the configuration. The operator goes on all the same.
void tell_weaknesses(const program_folder& folder, prompts& say)
{
    QStringList all;
    for (const weakness each : weaknesses_of(folder))
        switch (each) {
        case weakness::readable_by_others:
            all.append(
                QStringLiteral("설정 파일을 이 컴퓨터의 다른 사용자도 읽을 수 있습니다. 서버의 비밀번호가 "
                               "들어 있으므로 본인만 읽을 수 있게 해야 합니다."));
            break;
        case weakness::no_tls:
            all.append(
                QStringLiteral("서버와의 통신을 암호화할지 정하지 않았습니다(tls). 암호화되지 않은 통신은 "
                               "다른 사람이 엿볼 수 있습니다."));
            break;
        }
    if (!all.isEmpty())
        say.tell({all.join(QStringLiteral("\n\n")) +
                      QStringLiteral("\n\n관리자에게 알려 주십시오. 일은 그대로 계속할 수 있습니다.\n%1")
                          .arg(folder.file(QStringLiteral("conf/connection.ini"))),
                  QStringLiteral("확인"), sign::exclamation});
}

/// A table that cannot be had now stays marked: it is looked for again while the program runs.
void fill_new_mirrors(client& c)
{
    for (const std::string_view each : std::set{c.mirrors_behind})
        failures::guard(c.say, failures::policy::silent, [&] {
            sync_code_table(c.db_conn, c.local_conn, each);
            c.mirrors_behind.erase(each);
        });
}

} // namespace

bool is_re_execute(const QStringList& arguments)
{
    return arguments.join(u' ').trimmed() == QLatin1String("re_execute");
}

program::program() : say_{std::make_unique<window_prompts>()}, patience_{std::make_unique<patience>(*say_)} {}

program::~program() = default;

bool program::is_first_instance(const QString& folder)
{
    // Two programs on one folder would share the copy of the last search. The lock lies with the user's own
    // files, as the folder may be one that cannot be written.
    QString place = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (place.isEmpty())
        place = QDir::tempPath();
    const QByteArray mark =
        QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha1).toHex().left(16);
    instance_ =
        std::make_unique<QLockFile>(QStringLiteral("%1/orvo-%2.lock").arg(place, QLatin1String(mark)));
    instance_->setStaleLockTime(0);
    return instance_->tryLock(0) || instance_->error() != QLockFile::LockFailedError;
}

bool program::start(const QStringList& arguments, const start_steps& steps)
{
    const program_folder folder = find_program_folder();
    if (!is_first_instance(folder.path)) {
        say_->tell({QStringLiteral("선택하신 프로그램은 이미 실행 중 입니다."), {}, sign::exclamation});
        return false;
    }
    if (!is_re_execute(arguments) && !steps.check_version())
        return false;
    try {
        client_ = std::make_unique<client>(folder, read_server_address(folder), *say_);
        client_->watch_lines(patience_.get());
        client_->saves.tidy(client_->now().date());
        client_->saves.on_failure = [this](const QString& why) {
            say_->note(QStringLiteral("저장을 기록하지 못했습니다. 저장은 그대로 됩니다. (%1)").arg(why));
        };
        say_->mend = [this] { return mend_local_file(); };
        tell_weaknesses(folder, *say_);
        if (!folder.is_writable)
            say_->tell(
                {QStringLiteral("프로그램 폴더에 쓸 수 없습니다. 검색 결과와 설정이 저장되지 않습니다.\n%1")
                     .arg(folder.path),
                 QStringLiteral("확인"), sign::exclamation});
        if (!open_connections())
            return false;
    } catch (const db_failure& failure) {
        say_->tell({failure.text(), QStringLiteral("에러"), sign::critical});
        return false;
    }
    window_ = std::make_unique<main_frm>(*client_, all_openers());
    say_->show_note = [this](const QString& text) { window_->statusBar()->showMessage(text, 10000); };
    if (!window_->log_in_and_start())
        return false;
    failures::guard(*say_, failures::policy::report,
                    [this] { offer_unfinished_saves(*client_, window_.get()); });
    code_refresh_ = std::make_unique<code_refresh>(*client_, code_refresh::pace{});
    return true;
}

bool program::open_connections()
{
    client& c = *client_;
    const bool sound = has_sound_local_file(c);
    if (!sound && !offer_new_local_file(c))
        return false;
    if (!open_patiently(c.db_conn, *say_) || !open_patiently(c.mail_conn, *say_))
        return false;
    if (!sound)
        make_new_local_file(c); // behind the others: its code tables come from the register
    fill_new_mirrors(c);
    return true;
}

bool program::mend_local_file()
{
    client& c = *client_;
    bool is_mended = false;
    failures::guard(*say_, failures::policy::report, [&] {
        if (is_local_file_sound(c.local_conn, inspection::thorough) || !offer_new_local_file(c))
            return;
        make_new_local_file(c);
        is_mended = true;
    });
    return is_mended;
}

} // namespace orvo

#include "files/new_file.h"

#include "base/for_owner_alone.h"
#include "db/failure.h"

#include <QFileInfo>

#include <cerrno>

#ifdef Q_OS_LINUX
#include <fcntl.h>
#endif

namespace orvo {

namespace {

[[noreturn]] void refuse(const QString& why, const QString& path)
{
    throw db_failure{failure_kind::other, why + u'\n' + path};
}

/// Office programs leave a mark beside what they have open. A file that took the name in spite of it would be
/// overwritten when they save.
bool is_open_elsewhere(const QFileInfo& target)
{
    const QString folder = target.path() + u'/';
    return QFileInfo::exists(folder + QStringLiteral(".~lock.") + target.fileName() + u'#') ||
           QFileInfo::exists(folder + QStringLiteral("~$") + target.fileName());
}

} // namespace

void throw_disk_full(const QString& place)
{
    throw db_failure{failure_kind::disk_full,
                     QStringLiteral("디스크에 빈 자리가 없어 파일을 저장하지 못했습니다.\n") + place}
        .at(place);
}

new_file::new_file(const QString& path) : file_{path}
{
    const QFileInfo target{path};
    if (target.exists() && !target.isFile())
        refuse(QStringLiteral("폴더의 이름이므로 파일로 저장할 수 없습니다."), path);
    if (is_open_elsewhere(target))
        refuse(QStringLiteral(
                   "다른 프로그램에서 열려 있는 파일입니다. 그 파일을 닫거나 다른 이름으로 저장하십시오."),
               path);
    if (target.exists() && !target.isWritable())
        refuse(QStringLiteral("쓸 수 없게 보호된 파일입니다. 다른 이름으로 저장하십시오."), path);
    const for_owner_alone fresh; // one that it replaces hands its own rights on
    errno = 0;
    if (!file_.open(QIODevice::WriteOnly)) {
        if (errno == ENOSPC || errno == EDQUOT)
            throw_disk_full(path);
        refuse(QStringLiteral("폴더에 쓸 수 없어 파일을 저장하지 못했습니다."), target.path());
    }
}

void new_file::write(const char* bytes, qint64 count)
{
    errno = 0;
    if (file_.write(bytes, count) != count || !file_.flush())
        give_up();
#ifdef Q_OS_LINUX
    // The disk begins while the next part is made, so that little is left to wait for at the end.
    ::sync_file_range(file_.handle(), written_, count, SYNC_FILE_RANGE_WRITE);
#endif
    written_ += count;
}

void new_file::finish()
{
    errno = 0;
    if (!file_.commit())
        give_up();
}

void new_file::give_up()
{
    // A file larger than the disk's system can hold is as little use to the operator as a full disk.
    if (file_.error() == QFileDevice::ResourceError || errno == ENOSPC || errno == EDQUOT || errno == EFBIG)
        throw_disk_full(file_.fileName());
    refuse(QStringLiteral("파일을 저장하지 못했습니다. (%1)").arg(file_.errorString()), file_.fileName());
}

} // namespace orvo

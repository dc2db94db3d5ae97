#include "whole_file.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

QByteArray native(const QString& path) { return QFile::encodeName(path); }

bool writeAll(int fd, const QByteArray& bytes)
{
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t n = ::write(fd, bytes.constData() + done, size_t(bytes.size() - done));
        if (n < 0 && errno != EINTR)
            return false;
        done += std::max<ssize_t>(n, 0);
    }
    return true;
}

// The whole content under the target's name, by way of a file of the target's directory that
// has no name while it is written (a death then leaves nothing), then one fixed name beside the
// target for the moment before the rename (a death then leaves that one, which the next write
// of the file removes). A process that dies leaves the kernel's copy of what it wrote whole; the
// power failing is not what this guards against, so nothing waits for the disk.
bool replaceBeside(const QString& target, const QByteArray& bytes)
{
    const QFileInfo info(target);
    const QByteArray staging = native(info.absolutePath() + "/." + info.fileName() + ".saving");
    int fd = ::open(native(info.absolutePath()).constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0644);
    const bool unnamed = fd >= 0;
    if (!unnamed && (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL)) // no such files here
        fd = ::open(staging.constData(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0644);
    if (fd < 0)
        return false;
    struct stat old {};
    if (::stat(native(target).constData(), &old) == 0)
        ::fchmod(fd, old.st_mode & 07777); // the permissions it had
    bool ok = writeAll(fd, bytes);
    if (ok && unnamed) {
        ::unlink(staging.constData());
        const QByteArray self = "/proc/self/fd/" + QByteArray::number(fd);
        ok = ::linkat(AT_FDCWD, self.constData(), AT_FDCWD, staging.constData(), AT_SYMLINK_FOLLOW) == 0;
    }
    ok = ok && ::rename(staging.constData(), native(target).constData()) == 0;
    const int error = errno;
    ::close(fd);
    if (!ok)
        ::unlink(staging.constData());
    errno = error;
    return ok;
}

// The content written over the file where it stands.
bool overwrite(const QString& path, const QByteArray& bytes)
{
    const int fd = ::open(native(path).constData(), O_WRONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    const bool ok = writeAll(fd, bytes) && ::ftruncate(fd, off_t(bytes.size())) == 0;
    ::close(fd);
    return ok;
}

} // namespace

QString unfinishedWritePath(const QString& path)
{
    const QByteArray key = QFileInfo(path).absoluteFilePath().toUtf8();
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + "/glidepath/unfinished/" +
           QString::fromLatin1(QCryptographicHash::hash(key, QCryptographicHash::Sha1).toHex());
}

bool canWriteWholeFile(const QString& path)
{
    const QFileInfo info(path);
    return ::access(native(info.absolutePath()).constData(), W_OK) == 0 ||
           (info.exists() && ::access(native(path).constData(), W_OK) == 0);
}

bool writeWholeFile(const QString& path, const QByteArray& bytes)
{
    if (replaceBeside(path, bytes))
        return true;
    if ((errno != EACCES && errno != EPERM && errno != EROFS) || !QFileInfo::exists(path))
        return false;
    // The directory takes no new file: the content waits complete in the user's cache while it
    // is written in place, and is dropped once it is there.
    const QString unfinished = unfinishedWritePath(path);
    if (!QDir().mkpath(QFileInfo(unfinished).absolutePath()) || !replaceBeside(unfinished, bytes))
        return false;
    const bool ok = overwrite(path, bytes);
    QFile::remove(unfinished);
    return ok;
}

void finishInterruptedWrite(const QString& path)
{
    QFile unfinished(unfinishedWritePath(path));
    if (!unfinished.exists() || !unfinished.open(QIODevice::ReadOnly))
        return;
    if (overwrite(path, unfinished.readAll()))
        unfinished.remove();
}

} // namespace platform

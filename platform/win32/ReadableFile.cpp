#include "ReadableFile.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ReadableFile {

namespace {

QString Named(const QString& path, const QString& why)
{
    return QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(path), why);
}

QString ErrnoText(int error)
{
    if (error == ENOENT)
        return QStringLiteral("no such file");
    return QString::fromLocal8Bit(std::strerror(error));
}

// What a file that is not a regular one is, for the refusal.
QString KindProblem(mode_t mode)
{
    if (S_ISREG(mode))
        return QString();
    if (S_ISDIR(mode))
        return QStringLiteral("a folder, not a file");
    if (S_ISFIFO(mode))
        return QStringLiteral("a named pipe, not a regular file");
    if (S_ISCHR(mode) || S_ISBLK(mode))
        return QStringLiteral("a device, not a regular file");
    if (S_ISSOCK(mode))
        return QStringLiteral("a socket, not a regular file");
    return QStringLiteral("not a regular file");
}

} // namespace

QString Problem(const QString& path)
{
    if (path.isEmpty())
        return QStringLiteral("no file name");
    struct stat status
    { };
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return Named(path, ErrnoText(errno));
    const QString kind = KindProblem(status.st_mode);
    return kind.isEmpty() ? QString() : Named(path, kind);
}

bool Open(QFile& file, const QString& path, QString* error, QIODevice::OpenMode extra)
{
    const auto fail = [error](const QString& why) {
        if (error)
            *error = why;
        return false;
    };
    // Looked at before it is opened: opening a device may already do something.
    if (const QString problem = Problem(path); !problem.isEmpty())
        return fail(problem);
    // Opened without waiting, so a pipe put in its place since cannot block.
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (fd < 0)
        return fail(Named(path, ErrnoText(errno)));
    struct stat status
    { };
    QString problem;
    if (::fstat(fd, &status) != 0)
        problem = Named(path, ErrnoText(errno));
    else if (const QString kind = KindProblem(status.st_mode); !kind.isEmpty())
        problem = Named(path, kind);
    else if (const int flags = ::fcntl(fd, F_GETFL);
             flags < 0 || ::fcntl(fd, F_SETFL, flags & ~O_NONBLOCK) < 0)
        problem = Named(path, ErrnoText(errno));
    if (!problem.isEmpty()) {
        ::close(fd);
        return fail(problem);
    }
    file.setFileName(path);
    if (!file.open(fd, QIODevice::ReadOnly | extra, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return fail(Named(path, file.errorString()));
    }
    return true;
}

} // namespace ReadableFile

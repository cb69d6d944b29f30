#include "QvKsAtomicFile.h"

#include "QvKsFileFaults.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {
// Large enough to write most files at once, small enough that a big one takes
// several writes (each checked).
constexpr qsizetype kChunk = 1 << 20;
constexpr int kNameTries = 64;

thread_local QvKsWriteStatus t_last;

QvKsWriteStatus remember(const QvKsWriteStatus& status)
{
    t_last = status;
    return status;
}

// The path as given, made absolute without taking ".." away.
QString rawAbsolute(const QString& path)
{
    return QDir::isAbsolutePath(path) ? path : QDir::currentPath() + u'/' + path;
}

// The folder of an absolute path as given.
QString rawFolder(const QString& raw)
{
    const qsizetype slash = raw.lastIndexOf(u'/');
    return slash <= 0 ? QStringLiteral("/") : raw.left(slash);
}

bool isInside(const QString& path, const QString& folder)
{
    if (folder.isEmpty())
        return false;
    const QString base = folder.endsWith(u'/') ? folder : folder + u'/';
    return path.startsWith(base) || path == folder;
}

// The folder lies inside `confineTo` once every link and ".." is resolved.
QvKsWriteStatus checkConfined(const QString& raw, const QString& folder, const QString& confineTo)
{
    const QString root = rawAbsolute(confineTo);
    if (!isInside(raw, root) && !isInside(raw, QDir::cleanPath(root)))
        return {};
    const QString realRoot = QFileInfo(root).canonicalFilePath();
    const QString realFolder = QFileInfo(folder).canonicalFilePath();
    if (realFolder.isEmpty())
        return QvKsWriteStatus::FromSystemError(ENOENT, raw);
    if (realRoot.isEmpty() || !isInside(realFolder, realRoot))
        return QvKsWriteStatus::Failure(QvKsWriteStatus::Kind::Outside, raw, QDir::cleanPath(root));
    return {};
}

QvKsWriteStatus checkTarget(const QString& path, const QString& confineTo, mode_t* oldMode)
{
    if (path.isEmpty())
        return QvKsWriteStatus::Failure(QvKsWriteStatus::Kind::Path, path, QStringLiteral("no file name"));
    const QString raw = rawAbsolute(path);
    const QString name = raw.mid(raw.lastIndexOf(u'/') + 1);
    if (name.isEmpty() || name == u"." || name == u"..")
        return QvKsWriteStatus::Failure(QvKsWriteStatus::Kind::Path, path, QStringLiteral("no file name"));
    if (!confineTo.isEmpty()) {
        if (QvKsWriteStatus confined = checkConfined(raw, rawFolder(raw), confineTo); !confined)
            return confined;
    }
    struct stat st
    { };
    const QByteArray native = QFile::encodeName(raw);
    if (::lstat(native.constData(), &st) != 0) {
        if (errno != ENOENT)
            return QvKsWriteStatus::FromSystemError(errno, path);
        struct stat folder
        { };
        if (::stat(QFile::encodeName(rawFolder(raw)).constData(), &folder) != 0)
            return QvKsWriteStatus::FromSystemError(errno, path);
        if (!S_ISDIR(folder.st_mode))
            return QvKsWriteStatus::FromSystemError(ENOTDIR, path);
        return {};
    }
    if (S_ISLNK(st.st_mode))
        return QvKsWriteStatus::Failure(QvKsWriteStatus::Kind::Link, path);
    if (!S_ISREG(st.st_mode))
        return QvKsWriteStatus::Failure(
            QvKsWriteStatus::Kind::Path, path, QStringLiteral("not a regular file"));
    // A read-only file stays read-only: it is not replaced behind its owner's back.
    if (::access(native.constData(), W_OK) != 0)
        return QvKsWriteStatus::FromSystemError(errno, path);
    if (oldMode)
        *oldMode = st.st_mode & 07777;
    return {};
}

// Runs a step unless a test made it fail; the system error, or 0.
template <typename Call> int step(QvKsFileFaults::Step which, Call call)
{
    if (const int injected = QvKsFileFaults::Take(which))
        return injected;
    while (call() != 0) {
        if (errno != EINTR)
            return errno;
    }
    return 0;
}

class TempFile
{
public:
    ~TempFile()
    {
        if (m_fd >= 0)
            ::close(m_fd);
        if (!m_name.isEmpty())
            ::unlink(m_name.constData());
    }

    int Create(const QString& folder, const QString& name, mode_t mode)
    {
        for (int i = 0; i < kNameTries; ++i) {
            const QString candidate
                = QStringLiteral("%1/.%2.%3~")
                      .arg(folder, name, QString::number(QRandomGenerator::global()->generate64(), 36));
            const QByteArray native = QFile::encodeName(candidate);
            const int error = step(QvKsFileFaults::Step::Create, [&] {
                m_fd = ::open(native.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
                return m_fd < 0 ? -1 : 0;
            });
            if (error == 0) {
                m_name = native;
                return 0;
            }
            if (error != EEXIST)
                return error;
        }
        return EEXIST;
    }

    int Write(const QByteArray& bytes)
    {
        qsizetype done = 0;
        while (done < bytes.size()) {
            const qsizetype size = std::min(kChunk, bytes.size() - done);
            if (const int injected = QvKsFileFaults::Take(QvKsFileFaults::Step::Write)) {
                // What fits goes down first, as on a disk that fills up.
                [[maybe_unused]] const ssize_t partial
                    = ::write(m_fd, bytes.constData() + done, size_t(size / 2));
                return injected;
            }
            const ssize_t written = ::write(m_fd, bytes.constData() + done, size_t(size));
            if (written < 0) {
                if (errno == EINTR)
                    continue;
                return errno;
            }
            if (written == 0)
                return ENOSPC;
            done += written;
        }
        return 0;
    }

    int Sync()
    {
        return step(QvKsFileFaults::Step::Sync, [&] { return ::fsync(m_fd); });
    }

    // The file on disk holds exactly `size` bytes.
    int CheckSize(qsizetype size)
    {
        struct stat st
        { };
        if (::fstat(m_fd, &st) != 0)
            return errno;
        return st.st_size == size ? 0 : EIO;
    }

    int SetMode(mode_t mode) { return ::fchmod(m_fd, mode) == 0 ? 0 : errno; }

    int Close()
    {
        const int fd = std::exchange(m_fd, -1);
        // A failed close still releases the descriptor: it is not retried.
        if (const int injected = QvKsFileFaults::Take(QvKsFileFaults::Step::Close)) {
            ::close(fd);
            return injected;
        }
        return ::close(fd) == 0 ? 0 : errno;
    }

    int RenameOver(const QByteArray& target)
    {
        const int error = step(
            QvKsFileFaults::Step::Rename, [&] { return ::rename(m_name.constData(), target.constData()); });
        if (error == 0)
            m_name.clear();
        return error;
    }

private:
    int m_fd = -1;
    QByteArray m_name;
};

// The rename itself is made durable; the file is whole whatever this returns.
void syncFolder(const QString& folder)
{
    const int fd = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return;
    ::fsync(fd);
    ::close(fd);
}
} // namespace

QvKsWriteStatus QvKsAtomicFile::CheckTarget(const QString& path, const QString& confineTo)
{
    return remember(checkTarget(path, confineTo, nullptr));
}

QvKsWriteStatus QvKsAtomicFile::Write(const QString& path, const QByteArray& bytes, const QString& confineTo)
{
    mode_t oldMode = 0;
    bool replaces = false;
    {
        mode_t mode = 0xFFFF;
        if (QvKsWriteStatus checked = checkTarget(path, confineTo, &mode); !checked)
            return remember(checked);
        replaces = mode != 0xFFFF;
        oldMode = mode;
    }
    const QString raw = rawAbsolute(path);
    const QString folder = rawFolder(raw);
    TempFile temp;
    int error = temp.Create(folder, raw.mid(raw.lastIndexOf(u'/') + 1), 0666);
    if (error == 0 && replaces)
        error = temp.SetMode(oldMode);
    if (error == 0)
        error = temp.Write(bytes);
    if (error == 0)
        error = temp.Sync();
    if (error == 0)
        error = temp.CheckSize(bytes.size());
    if (error == 0)
        error = temp.Close();
    if (error == 0)
        error = temp.RenameOver(QFile::encodeName(raw));
    if (error != 0)
        return remember(QvKsWriteStatus::FromSystemError(error, path));
    syncFolder(folder);
    return remember({});
}

QvKsWriteStatus QvKsAtomicFile::LastStatus()
{
    return t_last;
}

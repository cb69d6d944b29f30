#include "OrdinaryUser.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

QString systemError(const char* what, int error)
{
    return QStringLiteral("%1: %2").arg(QLatin1String(what), QString::fromLocal8Bit(std::strerror(error)));
}

bool writeAll(int fd, const QByteArray& bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.constData() + done, size_t(bytes.size() - done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        done += n;
    }
    return true;
}

QByteArray readAll(int fd)
{
    QByteArray bytes;
    char buffer[4096];
    for (;;) {
        const ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return bytes;
        bytes.append(buffer, n);
    }
}

// Never returns: gives up root, runs the work and writes what it returned.
[[noreturn]] void runInChild(int out, uid_t uid, gid_t gid, const std::function<QByteArray()>& work)
{
    if (::setgroups(0, nullptr) != 0 || ::setgid(gid) != 0 || ::setuid(uid) != 0) {
        writeAll(out, systemError("cannot become an ordinary user", errno).toUtf8());
        ::_exit(2);
    }
    if (::setuid(0) == 0) {
        writeAll(out, "root rights came back after giving them up");
        ::_exit(2);
    }
    const bool written = writeAll(out, work());
    ::_exit(written ? 0 : 3);
}

} // namespace

OrdinaryUser::OrdinaryUser()
{
    if (::geteuid() != 0)
        return;
    m_asChild = true;
    const passwd* user = ::getpwnam("nobody");
    m_uid = user ? user->pw_uid : 65534;
    m_gid = user ? user->pw_gid : 65534;
    const QByteArray probe = Run([] { return QByteArray("ok"); });
    if (probe != "ok")
        m_why = QString::fromUtf8(probe);
}

bool OrdinaryUser::Adopt(const QString& path)
{
    if (!m_asChild)
        return true;
    // The user must be able to walk down to the path.
    for (QDir up = QFileInfo(path).absoluteDir(); !up.isRoot(); up.cdUp()) {
        struct stat st
        { };
        if (::stat(QFile::encodeName(up.path()).constData(), &st) != 0 || (st.st_mode & S_IXOTH) == 0) {
            m_why = up.path() + QStringLiteral(" is closed to other users");
            return false;
        }
    }
    QStringList paths { path };
    QDirIterator below(path, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
        QDirIterator::Subdirectories);
    while (below.hasNext())
        paths << below.next();
    for (const QString& each : paths) {
        if (::lchown(QFile::encodeName(each).constData(), m_uid, m_gid) != 0) {
            m_why = systemError("cannot hand a file to an ordinary user", errno);
            return false;
        }
    }
    return true;
}

QByteArray OrdinaryUser::Run(const std::function<QByteArray()>& work) const
{
    if (!m_asChild)
        return work();
    int pipe[2];
    if (::pipe2(pipe, O_CLOEXEC) != 0)
        return "<child not started: " + systemError("pipe", errno).toUtf8() + '>';
    const pid_t pid = ::fork();
    if (pid < 0) {
        const int error = errno;
        ::close(pipe[0]);
        ::close(pipe[1]);
        return "<child not started: " + systemError("fork", error).toUtf8() + '>';
    }
    if (pid == 0) {
        ::close(pipe[0]);
        runInChild(pipe[1], m_uid, m_gid, work);
    }
    ::close(pipe[1]);
    const QByteArray result = readAll(pipe[0]);
    ::close(pipe[0]);
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) { }
    if (WIFSIGNALED(status))
        return "<child killed by signal " + QByteArray::number(WTERMSIG(status)) + '>';
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return "<child failed: " + result + '>';
    return result;
}

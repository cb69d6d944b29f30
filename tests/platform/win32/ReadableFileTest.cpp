// Files are opened for reading only when they are regular files: anything else is
// refused at once with what it is, and a regular file reads as always.
#include "ReadableFile.h"

#include "OrdinaryUser.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstring>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

TEST(ReadableFile, OnlyRegularFilesOpenAndTheRestSayWhatTheyAre)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("a.scn"));
    {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write("text");
    }
    const QString link = dir.filePath(QStringLiteral("link.scn"));
    ASSERT_TRUE(QFile::link(file, link));
    const QString fifo = dir.filePath(QStringLiteral("f.scn"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const QString socketPath = dir.filePath(QStringLiteral("s"));
    const int sock = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    const QByteArray native = QFile::encodeName(socketPath);
    ASSERT_LT(size_t(native.size()), sizeof(address.sun_path));
    std::memcpy(address.sun_path, native.constData(), size_t(native.size()));
    ASSERT_EQ(::bind(sock, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);

    const struct
    {
        QString path;
        QString problem; // empty: opens
    } cases[] = {
        { file, QString() },
        { link, QString() }, // a link to a file is that file
        { fifo, fifo + QStringLiteral(": a named pipe, not a regular file") },
        { dir.path(), dir.path() + QStringLiteral(": a folder, not a file") },
        { QStringLiteral("/dev/zero"), QStringLiteral("/dev/zero: a device, not a regular file") },
        { socketPath, socketPath + QStringLiteral(": a socket, not a regular file") },
        { dir.filePath(QStringLiteral("none")), dir.filePath(QStringLiteral("none: no such file")) },
        { QString(), QStringLiteral("no file name") },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path.toStdString());
        EXPECT_EQ(ReadableFile::Problem(c.path), c.problem);
        QFile opened;
        QString error;
        QElapsedTimer clock;
        clock.start();
        const bool ok = ReadableFile::Open(opened, c.path, &error);
        EXPECT_LT(clock.elapsed(), 5000); // a pipe with no writer does not hold it
        EXPECT_EQ(ok, c.problem.isEmpty());
        EXPECT_EQ(error, c.problem);
        if (ok) {
            EXPECT_EQ(opened.size(), 4);
            EXPECT_EQ(opened.readAll(), QByteArray("text"));
            EXPECT_FALSE(opened.isWritable());
        } else {
            EXPECT_FALSE(opened.isOpen());
        }
    }
    ::close(sock);
}

TEST(ReadableFile, AnUnreadableFileSaysWhy)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("locked.scn"));
    {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write("text");
    }
    OrdinaryUser user;
    if (!user.IsAvailable() || !user.Adopt(dir.path()))
        GTEST_SKIP() << "cannot read as an ordinary user here: " << user.Why().toStdString();
    ASSERT_TRUE(QFile::setPermissions(file, QFileDevice::WriteOwner));
    const QByteArray said = user.Run([&file] {
        QFile opened;
        QString error;
        const bool ok = ReadableFile::Open(opened, file, &error);
        return ok || opened.isOpen() ? QByteArray("opened") : error.toUtf8();
    });
    EXPECT_EQ(said.toStdString(), (file + QStringLiteral(": Permission denied")).toStdString());
}

} // namespace

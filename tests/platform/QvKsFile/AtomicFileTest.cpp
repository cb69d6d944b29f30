// The one write path: a failure at any step keeps the old file byte for byte and
// leaves nothing beside it; a whole write replaces it.
#include "OrdinaryUser.h"
#include "QvKsAtomicFile.h"
#include "QvKsFileFaults.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Step = QvKsFileFaults::Step;
using Kind = QvKsWriteStatus::Kind;

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

bool writePlain(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

class AtomicFile : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(writePlain(path, kOld)); }
    void TearDown() override { QvKsFileFaults::Clear(); }

    QStringList Entries() const
    {
        return QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    static inline const QByteArray kOld = "the old content, whole\n";
    QTemporaryDir dir;
    QString path = dir.filePath(QStringLiteral("codes.scn"));
};

TEST_F(AtomicFile, ReplacesTheOldFileAndCreatesANewOne)
{
    const QvKsWriteStatus replaced = QvKsAtomicFile::Write(path, "new");
    ASSERT_TRUE(replaced) << replaced.Describe().toStdString();
    EXPECT_EQ(readAll(path), QByteArray("new"));
    const QString created = dir.filePath(QStringLiteral("系统编号.ini"));
    ASSERT_TRUE(QvKsAtomicFile::Write(created, QByteArray()));
    EXPECT_EQ(readAll(created), QByteArray());
    EXPECT_EQ(Entries(), QStringList({ QStringLiteral("codes.scn"), QStringLiteral("系统编号.ini") }));
    EXPECT_TRUE(QvKsAtomicFile::LastStatus().IsOk());
}

TEST_F(AtomicFile, KeepsTheOldFilesPermissions)
{
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0640), 0);
    ASSERT_TRUE(QvKsAtomicFile::Write(path, "new"));
    struct stat st
    { };
    ASSERT_EQ(::stat(QFile::encodeName(path).constData(), &st), 0);
    EXPECT_EQ(st.st_mode & 07777, 0640u);
}

struct FaultCase
{
    const char* name;
    Step step;
    int nth;
    int error;
    Kind kind;
};

class AtomicFileFaults : public AtomicFile, public ::testing::WithParamInterface<FaultCase>
{ };

// Every step that can fail, with what the user is told.
TEST_P(AtomicFileFaults, KeepTheOldFileByteForByteAndLeaveNothingBeside)
{
    const FaultCase& c = GetParam();
    // Three chunks of a megabyte, so that a later write can be the one to fail.
    const QByteArray big(3 << 20, 'x');
    QvKsFileFaults::FailNth(c.step, c.nth, c.error);
    const QvKsWriteStatus status = QvKsAtomicFile::Write(path, big);
    EXPECT_FALSE(status);
    EXPECT_EQ(status.GetKind(), c.kind);
    EXPECT_EQ(status.GetPath(), path);
    EXPECT_FALSE(status.Describe().isEmpty());
    EXPECT_EQ(QvKsAtomicFile::LastStatus().GetKind(), c.kind);
    EXPECT_EQ(readAll(path), kOld);
    EXPECT_EQ(Entries(), QStringList({ QStringLiteral("codes.scn") }));
    // The fault was taken once: the next write goes through.
    EXPECT_TRUE(QvKsAtomicFile::Write(path, "after"));
    EXPECT_EQ(readAll(path), QByteArray("after"));
}

INSTANTIATE_TEST_SUITE_P(EveryStep, AtomicFileFaults,
    ::testing::Values(FaultCase { "FirstWriteDiskFull", Step::Write, 1, ENOSPC, Kind::DiskFull },
        FaultCase { "ThirdWriteDiskFull", Step::Write, 3, ENOSPC, Kind::DiskFull },
        FaultCase { "WriteOverQuota", Step::Write, 2, EDQUOT, Kind::DiskFull },
        FaultCase { "WriteIoError", Step::Write, 1, EIO, Kind::Failed },
        FaultCase { "CreateReadOnlyFolder", Step::Create, 1, EACCES, Kind::Permission },
        FaultCase { "CreateReadOnlyDisk", Step::Create, 1, EROFS, Kind::Permission },
        FaultCase { "CreateNoRoomForAName", Step::Create, 1, ENOSPC, Kind::DiskFull },
        FaultCase { "SyncDiskFull", Step::Sync, 1, ENOSPC, Kind::DiskFull },
        FaultCase { "SyncIoError", Step::Sync, 1, EIO, Kind::Failed },
        FaultCase { "CloseDiskFull", Step::Close, 1, ENOSPC, Kind::DiskFull },
        FaultCase { "RenameImmutable", Step::Rename, 1, EPERM, Kind::Permission },
        FaultCase { "RenameIoError", Step::Rename, 1, EIO, Kind::Failed }),
    [](const ::testing::TestParamInfo<FaultCase>& info) { return std::string(info.param.name); });

TEST_F(AtomicFile, EveryWriteFailingKeepsEveryFile)
{
    QvKsFileFaults::FailAll(ENOSPC);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(QvKsAtomicFile::Write(path, "new").GetKind(), Kind::DiskFull);
    EXPECT_EQ(QvKsAtomicFile::Write(dir.filePath(QStringLiteral("fresh")), "new").GetKind(), Kind::DiskFull);
    EXPECT_EQ(readAll(path), kOld);
    EXPECT_EQ(Entries(), QStringList({ QStringLiteral("codes.scn") }));
}

TEST_F(AtomicFile, PathsThatCannotHoldAFileAreRefusedBeforeWriting)
{
    const struct
    {
        QString path;
        Kind kind;
    } cases[] = {
        { QString(), Kind::Path },
        { dir.filePath(QStringLiteral("missing/codes.scn")), Kind::Path },
        { dir.filePath(QStringLiteral("codes.scn/inner")), Kind::Path },
        { dir.path(), Kind::Path },
        { dir.filePath(QStringLiteral("..")), Kind::Path },
    };
    for (const auto& c : cases) {
        const QvKsWriteStatus status = QvKsAtomicFile::Write(c.path, "new");
        EXPECT_EQ(status.GetKind(), c.kind) << c.path.toStdString();
        EXPECT_EQ(QvKsFileFaults::StepsDone(Step::Create), 0) << c.path.toStdString();
    }
    EXPECT_EQ(readAll(path), kOld);
}

TEST_F(AtomicFile, AFifoIsNoFileToReplace)
{
    const QString fifo = dir.filePath(QStringLiteral("pipe.scn"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    EXPECT_EQ(QvKsAtomicFile::Write(fifo, "new").GetKind(), Kind::Path);
    struct stat st
    { };
    ASSERT_EQ(::lstat(QFile::encodeName(fifo).constData(), &st), 0);
    EXPECT_TRUE(S_ISFIFO(st.st_mode));
}

TEST_F(AtomicFile, AReadOnlyFileStaysAsItWas)
{
    OrdinaryUser user;
    if (!user.IsAvailable() || !user.Adopt(dir.path()))
        GTEST_SKIP() << "cannot write as an ordinary user here: " << user.Why().toStdString();
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0444), 0);
    const QByteArray kind
        = user.Run([this] { return QByteArray::number(int(QvKsAtomicFile::Write(path, "new").GetKind())); });
    EXPECT_EQ(kind.toStdString(), std::to_string(int(Kind::Permission)));
    EXPECT_EQ(readAll(path), kOld);
    EXPECT_EQ(Entries(), QStringList({ QStringLiteral("codes.scn") }));
}

// A real full disk: a small memory file system, when this process may mount one.
TEST(AtomicFileOnAFullDisk, KeepsTheOldFileAndSaysTheDiskIsFull)
{
    QTemporaryDir dir;
    const QByteArray mountPoint = QFile::encodeName(dir.path());
    if (::mount("tmpfs", mountPoint.constData(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "cannot mount a small tmpfs here (needs root): " << std::strerror(errno);
    const QString path = dir.filePath(QStringLiteral("codes.scn"));
    const QByteArray old(20000, 'o');
    ASSERT_TRUE(QvKsAtomicFile::Write(path, old));
    const QvKsWriteStatus status = QvKsAtomicFile::Write(path, QByteArray(60000, 'n'));
    const QByteArray after = readAll(path);
    const QStringList entries
        = QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    ::umount(mountPoint.constData());
    EXPECT_EQ(status.GetKind(), Kind::DiskFull) << status.Describe().toStdString();
    EXPECT_EQ(after, old);
    EXPECT_EQ(entries, QStringList({ QStringLiteral("codes.scn") }));
}

} // namespace

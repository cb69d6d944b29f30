// The line-type file of the codes, written while a project is open: a failure
// keeps the file that was there.
#include "LineTypeMgr.h"
#include "QvKsAtomicFile.h"
#include "QvKsFileFaults.h"
#include "TempProject.h"

#include <cerrno>

namespace {

TEST(LineTypeFile, AFullDiskKeepsTheOldFileWhole)
{
    TempProject project;
    ASSERT_TRUE(LineTypeMgr::Instance()->WriteLineTypeFile());
    const QString path = LineTypeMgr::FilePath();
    ASSERT_TRUE(writeBytes(path, "*OLD,kept\nA,1\n"));
    for (const QvKsFileFaults::Step step : { QvKsFileFaults::Step::Write, QvKsFileFaults::Step::Rename }) {
        QvKsFileFaults::FailNth(step, 1, ENOSPC);
        EXPECT_FALSE(LineTypeMgr::Instance()->WriteLineTypeFile());
        QvKsFileFaults::Clear();
        EXPECT_EQ(QvKsAtomicFile::LastStatus().GetKind(), QvKsWriteStatus::Kind::DiskFull);
        EXPECT_EQ(QvKsAtomicFile::LastStatus().GetPath(), path);
        EXPECT_EQ(readBytes(path), QByteArray("*OLD,kept\nA,1\n"));
    }
    ASSERT_TRUE(LineTypeMgr::Instance()->WriteLineTypeFile());
    EXPECT_NE(readBytes(path), QByteArray("*OLD,kept\nA,1\n"));
}

} // namespace

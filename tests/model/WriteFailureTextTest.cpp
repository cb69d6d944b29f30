#include "WriteFailureText.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

using Kind = QvKsWriteStatus::Kind;

TEST(WriteFailureText, NamesTheFileTheReasonAndThatTheOldFileIsKept)
{
    const QString path = QStringLiteral("/p/Profile/系统编号/P-电气.scn");
    const struct
    {
        QvKsWriteStatus status;
        const char16_t* text;
    } cases[] = {
        { QvKsWriteStatus::FromSystemError(ENOSPC, path),
            u"无法写入文件 /p/Profile/系统编号/P-电气.scn：磁盘空间已满（No space left on "
            u"device）；原有文件保持不变" },
        { QvKsWriteStatus::FromSystemError(EROFS, path),
            u"无法写入文件 /p/Profile/系统编号/P-电气.scn：没有写入权限（Read-only file "
            u"system）；原有文件保持不变" },
        { QvKsWriteStatus::FromSystemError(ENOENT, path),
            u"无法写入文件 /p/Profile/系统编号/P-电气.scn：路径无效或文件夹不存在（No such file or "
            u"directory）；原有文件保持不变" },
        { QvKsWriteStatus::Failure(Kind::Link, path),
            u"无法写入文件 "
            u"/p/Profile/系统编号/"
            u"P-电气.scn：该文件是指向别处的链接，不会写入链接或它指向的文件；原有文件保持不变" },
        { QvKsWriteStatus::Failure(Kind::Outside, path, QStringLiteral("/p")),
            u"无法写入文件 /p/Profile/系统编号/P-电气.scn：所在文件夹通向项目文件夹之外；原有文件保持不变" },
        { QvKsWriteStatus::Failure(Kind::Failed, path),
            u"无法写入文件 /p/Profile/系统编号/P-电气.scn：写入失败；原有文件保持不变" },
    };
    for (const auto& c : cases)
        EXPECT_EQ(WriteFailureText(c.status), QString::fromUtf16(c.text));
    EXPECT_TRUE(WriteFailureText(QvKsWriteStatus()).isEmpty());
}

TEST(WriteFailureText, EverySystemErrorOfAFullDiskReadsAsOne)
{
    for (const int error : { ENOSPC, EDQUOT, EFBIG })
        EXPECT_EQ(QvKsWriteStatus::FromSystemError(error, QStringLiteral("f")).GetKind(), Kind::DiskFull);
    for (const int error : { EACCES, EPERM, EROFS })
        EXPECT_EQ(QvKsWriteStatus::FromSystemError(error, QStringLiteral("f")).GetKind(), Kind::Permission);
    EXPECT_EQ(QvKsWriteStatus::FromSystemError(EIO, QStringLiteral("f")).GetKind(), Kind::Failed);
}

} // namespace

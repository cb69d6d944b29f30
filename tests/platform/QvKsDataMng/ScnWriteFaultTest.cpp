// ".scn" files on a disk that fills up and in a project folder with links planted
// in it: what was there is kept byte for byte, and the reason is told.
#include "CISysCode.h"
#include "CQvKsVersion.h"
#include "QvKsAtomicFile.h"
#include "QvKsFileFaults.h"
#include "QvKsXmlVertion.h"
#include "TempProject.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>

namespace {

using Kind = QvKsWriteStatus::Kind;
using Step = QvKsFileFaults::Step;

const char* const kLegacy = "<SysCodeData Version=\"2.0\"><SysNode><Name>中水</Name><Color>0,255,0</Color>"
                            "</SysNode></SysCodeData>";

struct ScnWriteFaults : ::testing::Test
{
    void TearDown() override { QvKsFileFaults::Clear(); }

    static void BuildTree(CSysCodeData& root)
    {
        fillAttributes(*addCode(*addCode(root, QStringLiteral("公共照明"), 1), QStringLiteral("WL1"), 2), 1);
        fillAttributes(*addCode(root, QStringLiteral("应急照明"), 3), 2);
    }

    QTemporaryDir dir;
    QString Path(const char* name) const { return dir.path() + QLatin1Char('/') + QString::fromUtf8(name); }
};

TEST_F(ScnWriteFaults, AnExportThatCannotBeWrittenKeepsTheOldFileAndSaysWhy)
{
    CSysCodeData root;
    BuildTree(root);
    const QString file = Path("电气.scn");
    ASSERT_TRUE(root.ExportData(file, QStringLiteral("电气")));
    const QByteArray good = readBytes(file);
    CSysCodeData more;
    BuildTree(more);
    addCode(more, QStringLiteral("新增"), 4);
    for (const Step step : { Step::Create, Step::Write, Step::Sync, Step::Close, Step::Rename }) {
        QvKsFileFaults::FailNth(step, 1, ENOSPC);
        EXPECT_FALSE(more.ExportData(file, QStringLiteral("电气"))) << int(step);
        EXPECT_EQ(readBytes(file), good) << int(step);
        EXPECT_EQ(QvKsAtomicFile::LastStatus().GetKind(), Kind::DiskFull);
        EXPECT_TRUE(QvKsDataMng::LastError().contains(QStringLiteral("the disk is full")))
            << QvKsDataMng::LastError().toStdString();
    }
    EXPECT_EQ(
        QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList({ QStringLiteral("电气.scn") }));
}

TEST_F(ScnWriteFaults, AnOlderFileThatCannotBeRewrittenIsLeftAsTheUserHadIt)
{
    const QString file = Path("old.scn");
    ASSERT_TRUE(writeBytes(file, kLegacy));
    QvKsFileFaults::FailNthWrite(1);
    EXPECT_FALSE(CISysCode::UpdataSysData(file));
    EXPECT_EQ(readBytes(file), QByteArray(kLegacy));
    EXPECT_EQ(QvKsAtomicFile::LastStatus().GetKind(), Kind::DiskFull);
    QvKsFileFaults::Clear();
    EXPECT_TRUE(CISysCode::UpdataSysData(file));
    EXPECT_TRUE(readText(file).contains(QStringLiteral("<SysCodeFile")));
}

TEST_F(ScnWriteFaults, TheStampIsWrittenOnlyWhenItChanges)
{
    CSysCodeData root;
    BuildTree(root);
    const QString file = Path("v.scn");
    ASSERT_TRUE(root.ExportData(file, QString()));
    const QByteArray exported = readBytes(file);
    // The export stamps the file already: setting the same stamp writes nothing.
    QvKsFileFaults::FailAll(ENOSPC);
    EXPECT_TRUE(QvKsXmlVertion::SetXmlVersion(CQvKsVersion::Current().ToString(), file));
    EXPECT_EQ(QvKsFileFaults::StepsDone(Step::Create), 0);
    EXPECT_FALSE(QvKsXmlVertion::SetXmlVersion(QStringLiteral("9.9.9"), file));
    EXPECT_EQ(QvKsFileFaults::StepsDone(Step::Create), 1);
    EXPECT_EQ(readBytes(file), exported);
}

// A project folder is shared: a link planted at the default export name, or in
// place of the exchange folder, does not carry the export out of the project.
TEST(ScnWriteLinks, PlantedLinksDoNotLeadTheExportOutOfTheProject)
{
    TempProject project;
    QTemporaryDir elsewhere;
    const QString victim = elsewhere.path() + QStringLiteral("/victim.txt");
    ASSERT_TRUE(writeBytes(victim, "not the project's"));
    const QString exchange = project.File(QStringLiteral("Profile/系统编号"));
    const QString planted = exchange + QStringLiteral("/测试项目-电气.scn");
    ASSERT_TRUE(QFile::link(victim, planted));
    CSysCodeData root;
    addCode(root, QStringLiteral("公共照明"), 1);
    EXPECT_FALSE(root.ExportData(planted, QStringLiteral("电气")));
    EXPECT_EQ(QvKsAtomicFile::LastStatus().GetKind(), Kind::Link);
    EXPECT_TRUE(QFileInfo(planted).isSymLink());

    ASSERT_TRUE(QDir(exchange).removeRecursively());
    ASSERT_TRUE(QFile::link(elsewhere.path(), exchange));
    EXPECT_FALSE(root.ExportData(exchange + QStringLiteral("/测试项目-电气.scn"), QStringLiteral("电气")));
    EXPECT_EQ(QvKsAtomicFile::LastStatus().GetKind(), Kind::Outside);
    EXPECT_EQ(readBytes(victim), QByteArray("not the project's"));
    EXPECT_EQ(QDir(elsewhere.path()).entryList(QDir::Files | QDir::Hidden),
        QStringList({ QStringLiteral("victim.txt") }));
}

} // namespace

// The dialog's index path with its fallback to the specialty's first code.
#include "SysCodeIndexPath.h"
#include "CISysCode.h"
#include "TempProject.h"

namespace {

struct IndexPath : ::testing::Test
{
    TempProject project;
    void SetUp() override
    {
        CSysCodeData root;
        addCode(*addCode(root, QStringLiteral("公共照明"), 4), QStringLiteral("WL1"), 9);
        addCode(root, QStringLiteral("公共插座"), 2);
        ASSERT_TRUE(CISysCode::SetSpecCodeInfos(root, QStringLiteral("电气")));
    }
};

TEST_F(IndexPath, KnownCodeAnswersDirectly)
{
    QString path = QStringLiteral("电气\\公共照明\\WL1");
    bool replaced = false;
    EXPECT_EQ(GetSysCodeIndexPath(path, replaced), QStringLiteral("3\\4\\9"));
    EXPECT_EQ(path, QStringLiteral("电气\\公共照明\\WL1"));
    EXPECT_FALSE(replaced);
}

TEST_F(IndexPath, UnknownCodeFallsBackToTheFirstTopLevelCode)
{
    QString path = QStringLiteral("电气\\已删除");
    bool replaced = false;
    EXPECT_EQ(GetSysCodeIndexPath(path, replaced), QStringLiteral("3\\4"));
    EXPECT_EQ(path, QStringLiteral("电气\\公共照明"));
    EXPECT_TRUE(replaced);
}

TEST_F(IndexPath, NoFallbackWithoutSpecialtyOrCodes)
{
    const QString paths[]
        = { QStringLiteral("电气"), QStringLiteral("弱电\\综合布线"), QStringLiteral("土建\\x"), QString() };
    for (const QString& original : paths) {
        QString path = original;
        bool replaced = false;
        EXPECT_TRUE(GetSysCodeIndexPath(path, replaced).isEmpty()) << original.toStdString();
        EXPECT_EQ(path, original);
        EXPECT_FALSE(replaced);
    }
}

} // namespace

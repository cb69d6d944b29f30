// Saving and loading specialties' code trees, indices, and the store's small
// operations on codes.
#include "CISysCode.h"
#include "StoreEngineFixture.h"

#include <QDir>

namespace {

const QString kElec = QStringLiteral("电气");

// 公共照明 { WL1 { WL1-1 }, WL2 }, 机房动力 { AP-B1 }; all new (index 0).
void buildSample(CSysCodeData& root)
{
    CSysCodeData* light = addCode(root, QStringLiteral("公共照明"));
    CSysCodeData* wl1 = addCode(*light, QStringLiteral("WL1"));
    addCode(*wl1, QStringLiteral("WL1-1"));
    addCode(*light, QStringLiteral("WL2"));
    addCode(*addCode(root, QStringLiteral("机房动力")), QStringLiteral("AP-B1"));
    int seed = 0;
    for (CSysCodeData* top : root.GetChildren()) {
        fillAttributes(*top, ++seed);
        for (CSysCodeData* second : top->GetChildren())
            fillAttributes(*second, ++seed);
    }
}

using CodeTreeStore = StoreEngineFixture;

TEST_P(CodeTreeStore, SavedTreeReadsBackWithEveryAttributeInOrder)
{
    const auto project = MakeProject();
    CSysCodeData root;
    buildSample(root);
    ASSERT_TRUE(CISysCode::SetSpecCodeInfos(root, kElec)) << QvKsDataMng::LastError().toStdString();
    // New codes were numbered 1.. in tree order and the numbers written back.
    EXPECT_EQ(root.FindByFullName(QStringLiteral("公共照明\\WL1\\WL1-1"))->GetNodeIndex(), 3);
    EXPECT_EQ(stored(), dumpTree(root));
    CSysCodeData empty;
    EXPECT_TRUE(CISysCode::GetSpecCodeInfos(empty, QStringLiteral("弱电")));
    EXPECT_EQ(empty.GetChildCount(), 0);
}

TEST_P(CodeTreeStore, IndicesSurviveRenamesAndMovesAndAreNeverReused)
{
    const auto project = MakeProject();
    CSysCodeData root;
    buildSample(root);
    ASSERT_TRUE(CISysCode::SetSpecCodeInfos(root, kElec));
    CSysCodeData tree;
    ASSERT_TRUE(CISysCode::GetSpecCodeInfos(tree, kElec));
    EXPECT_EQ(tree.GetNodeIndex(), 6); // the high-water mark rides on the root
    CSysCodeData* wl2 = tree.FindByFullName(QStringLiteral("公共照明\\WL2"));
    CSysCodeData* ap = tree.FindByFullName(QStringLiteral("机房动力\\AP-B1"));
    const int wl2Index = wl2->GetNodeIndex();
    const int apIndex = ap->GetNodeIndex();
    wl2->SetNodeName(QStringLiteral("WL9"));
    ap->SetParent(tree.FindByFullName(QStringLiteral("公共照明")));
    delete tree.FindByFullName(QStringLiteral("公共照明\\WL1")); // takes 3 and 4 with it
    addCode(*tree.GetChild(1), QStringLiteral("新回路"));
    ASSERT_TRUE(CISysCode::SetSpecCodeInfos(tree, kElec));

    CSysCodeData back;
    ASSERT_TRUE(CISysCode::GetSpecCodeInfos(back, kElec));
    EXPECT_EQ(back.FindByFullName(QStringLiteral("公共照明\\WL9"))->GetNodeIndex(), wl2Index);
    EXPECT_EQ(back.FindByFullName(QStringLiteral("公共照明\\AP-B1"))->GetNodeIndex(), apIndex);
    EXPECT_EQ(back.FindByFullName(QStringLiteral("机房动力\\新回路"))->GetNodeIndex(), 7);

    // Deleting the highest code does not free its index.
    delete back.FindByFullName(QStringLiteral("机房动力\\新回路"));
    ASSERT_TRUE(CISysCode::SetSpecCodeInfos(back, kElec));
    addCode(back, QStringLiteral("应急照明"));
    ASSERT_TRUE(CISysCode::SetSpecCodeInfos(back, kElec));
    EXPECT_EQ(back.FindByFullName(QStringLiteral("应急照明"))->GetNodeIndex(), 8);
}

TEST_P(CodeTreeStore, DuplicateIndicesInTheTreeGetFreshOnes)
{
    const auto project = MakeProject();
    CSysCodeData root;
    addCode(root, QStringLiteral("A"), 5);
    addCode(root, QStringLiteral("B"), 5); // a pasted copy that kept the original's index
    ASSERT_TRUE(CISysCode::SetSpecCodeInfos(root, kElec));
    EXPECT_EQ(
        stored(), (QStringList { QStringLiteral("A|5|0|0|0||||||"), QStringLiteral("B|6|0|0|0||||||") }));
}

TEST_P(CodeTreeStore, FailureHalfwayThroughASaveLeavesThePreviousTreeWhole)
{
    const auto project = MakeProject();
    CSysCodeData root;
    buildSample(root);
    ASSERT_TRUE(CISysCode::SetSpecCodeInfos(root, kElec));
    const QStringList before = stored();
    // Another program's trigger makes the insert of one code in the middle fail.
    ASSERT_EQ(Outside(*project,
                  "CREATE TRIGGER boom BEFORE INSERT ON sys_code WHEN NEW.name = 'BOOM' "
                  "BEGIN SELECT RAISE(ABORT, 'injected failure'); END;",
                  "CREATE FUNCTION boom() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN "
                  "IF NEW.name = 'BOOM' THEN RAISE EXCEPTION 'injected failure'; END IF; RETURN NEW; END $$; "
                  "CREATE TRIGGER boom BEFORE INSERT ON sys_code FOR EACH ROW EXECUTE FUNCTION boom();"),
        QString());
    CSysCodeData next;
    ASSERT_TRUE(CISysCode::GetSpecCodeInfos(next, kElec));
    addCode(*next.GetChild(0), QStringLiteral("新增一"));
    addCode(*next.GetChild(0), QStringLiteral("BOOM"));
    addCode(*next.GetChild(1), QStringLiteral("新增二"));
    next.GetChild(1)->SetDescribe(QStringLiteral("changed"));
    delete next.GetChild(0)->GetChild(0);
    EXPECT_FALSE(CISysCode::SetSpecCodeInfos(next, kElec));
    EXPECT_TRUE(QvKsDataMng::LastError().contains(QLatin1String("injected failure")))
        << QvKsDataMng::LastError().toStdString();
    EXPECT_EQ(stored(), before);
    // Indices are written back only after a commit, and the high-water mark held.
    EXPECT_EQ(next.FindByFullName(QStringLiteral("公共照明\\新增一"))->GetNodeIndex(), 0);
    CSysCodeData again;
    ASSERT_TRUE(CISysCode::GetSpecCodeInfos(again, kElec));
    EXPECT_EQ(again.GetNodeIndex(), 6);
}

TEST_P(CodeTreeStore, TreesTheStoreCannotHoldAreRefusedWhole)
{
    const auto project = MakeProject();
    CSysCodeData root;
    buildSample(root);
    ASSERT_TRUE(CISysCode::SetSpecCodeInfos(root, kElec));
    const QStringList before = stored();
    struct Case
    {
        const char* what;
        QString name;
    } cases[] = {
        { "sibling duplicate", QStringLiteral("WL2") },
        { "empty name", QString() },
        { "backslash", QStringLiteral("a\\b") },
        { "51 units", QString(51, QLatin1Char('n')) },
    };
    for (const Case& c : cases) {
        CSysCodeData bad;
        ASSERT_TRUE(CISysCode::GetSpecCodeInfos(bad, kElec));
        addCode(*bad.GetChild(0), c.name);
        EXPECT_FALSE(CISysCode::SetSpecCodeInfos(bad, kElec)) << c.what;
        EXPECT_EQ(stored(), before) << c.what;
    }
    CSysCodeData other;
    EXPECT_FALSE(CISysCode::SetSpecCodeInfos(other, QStringLiteral("电气 ")));
    EXPECT_FALSE(CISysCode::GetSpecCodeInfos(other, QStringLiteral("土建")));
}

TEST_P(CodeTreeStore, DamagedStoredTreeIsReportedNotHalfLoaded)
{
    const auto project = MakeProject();
    CSysCodeData root;
    buildSample(root);
    ASSERT_TRUE(CISysCode::SetSpecCodeInfos(root, kElec));
    ASSERT_EQ(Outside(*project,
                  "INSERT INTO sys_code VALUES(3, 40, 99, 0, 'orphan', 0, 0, 0, '', '', '', "
                  "'', '', '')"),
        QString());
    CSysCodeData back;
    EXPECT_FALSE(CISysCode::GetSpecCodeInfos(back, kElec));
    EXPECT_EQ(back.GetChildCount(), 0);
    EXPECT_TRUE(QvKsDataMng::LastError().contains(QLatin1String("damaged")));
}

TEST_P(CodeTreeStore, FullNamesAndIndexPathsFollowTheStoredTree)
{
    const auto project = MakeProject();
    CSysCodeData root;
    buildSample(root);
    ASSERT_TRUE(CISysCode::SetSpecCodeInfos(root, kElec));
    QStringList names;
    ASSERT_TRUE(CISysCode::GetFullNameAryBySpec(names, kElec));
    EXPECT_EQ(names,
        (QStringList { QStringLiteral("公共照明"), QStringLiteral("公共照明\\WL1"),
            QStringLiteral("公共照明\\WL1\\WL1-1"), QStringLiteral("公共照明\\WL2"),
            QStringLiteral("机房动力"), QStringLiteral("机房动力\\AP-B1") }));
    const struct
    {
        const char16_t* path;
        const char* index;
    } paths[] = {
        { u"电气\\公共照明", "3\\1" },
        { u"电气\\公共照明\\WL1\\WL1-1", "3\\1\\2\\3" },
        { u"电气\\机房动力\\AP-B1", "3\\5\\6" },
        { u"电气", "" },
        { u"电气\\WL1", "" },
        { u"电气\\公共照明\\\\WL1", "" },
        { u"弱电\\公共照明", "" },
        { u"", "" },
    };
    for (const auto& p : paths)
        EXPECT_EQ(CISysCode::GetIndexPath(QString::fromUtf16(p.path)), QLatin1String(p.index))
            << QString::fromUtf16(p.path).toStdString();
}

TEST(CodeTreeRules, FullNamesDivideIntoLevels)
{
    QStringList levels { QStringLiteral("kept") };
    int count = -1;
    EXPECT_TRUE(CISysCode::SysCodeDivide(QStringLiteral("公共照明\\WL1\\WL1-1"), levels, count));
    EXPECT_EQ(
        levels, (QStringList { QStringLiteral("公共照明"), QStringLiteral("WL1"), QStringLiteral("WL1-1") }));
    EXPECT_EQ(count, 3);
    for (const char* bad : { "", "a\\", "\\a", "a\\\\b" }) {
        QStringList out { QStringLiteral("kept") };
        EXPECT_FALSE(CISysCode::SysCodeDivide(QString::fromUtf8(bad), out, count)) << bad;
        EXPECT_EQ(out, QStringList { QStringLiteral("kept") });
    }
}

TEST(CodeTreeRules, CombinedInfoSplitsBackIntoItsParts)
{
    const QStringList texts { QString(), QStringLiteral("电气\\管线\\BV-2.5"), QStringLiteral("a|b"),
        QStringLiteral("\\|"), QStringLiteral("尾\\") };
    for (const QString& first : texts) {
        for (const QString& second : texts) {
            QString a, b;
            ASSERT_TRUE(CISysCode::DivideSysInfo(CISysCode::UniteSysInfo(first, second), a, b));
            EXPECT_EQ(a, first);
            EXPECT_EQ(b, second);
        }
    }
    QString a = QStringLiteral("x"), b = QStringLiteral("y");
    EXPECT_TRUE(CISysCode::DivideSysInfo(QStringLiteral("只有一段"), a, b));
    EXPECT_EQ(a, QStringLiteral("只有一段"));
    EXPECT_TRUE(b.isEmpty());
    a = QStringLiteral("x");
    EXPECT_FALSE(CISysCode::DivideSysInfo(QStringLiteral("dangling\\"), a, b));
    EXPECT_EQ(a, QStringLiteral("x"));
}

TEST(CodeTreeRules, SettingIsReadWithADefaultForAnythingMissing)
{
    QTemporaryDir dir;
    const QString ini = dir.path() + QStringLiteral("/SysCodeMng.ini");
    EXPECT_EQ(CISysCode::ReadSysCodeConfigFile(dir.path()), CISysCode::kDefaultDispAddedMsg);
    EXPECT_EQ(CISysCode::ReadSysCodeConfigFile(QString()), CISysCode::kDefaultDispAddedMsg);
    const struct
    {
        const char* text;
        int value;
    } cases[] = {
        { "[SysCodeConfig]\nDispAddedMsg=0\n", 0 },
        { "[Other]\nX=1\n[SysCodeConfig]\nDispAddedMsg = 1\n", 1 },
        { "[SysCodeConfig]\nDispAddedMsg=7\n", 7 },
        { "[SysCodeConfig]\nDispAddedMsg=yes\n", CISysCode::kDefaultDispAddedMsg },
        { "[SysCodeConfig]\nOther=0\n", CISysCode::kDefaultDispAddedMsg },
        { "[Other]\nDispAddedMsg=0\n", CISysCode::kDefaultDispAddedMsg },
    };
    for (const auto& c : cases) {
        ASSERT_TRUE(writeBytes(ini, c.text));
        EXPECT_EQ(CISysCode::ReadSysCodeConfigFile(dir.path()), c.value) << c.text;
    }
}

TEST_P(CodeTreeStore, LineTypeScaleKeepsOnlyNumbers)
{
    const auto project = MakeProject();
    QString scale;
    ASSERT_TRUE(CISysCode::GetLineTypeScale(scale));
    EXPECT_EQ(scale, QStringLiteral("1.0"));
    EXPECT_TRUE(CISysCode::SetLineTypeScale(QStringLiteral("2.5")));
    for (const char* bad : { "", "abc", "-1", "1,5" })
        EXPECT_FALSE(CISysCode::SetLineTypeScale(QString::fromUtf8(bad))) << bad;
    QvKsDataMng::CloseProject();
    ASSERT_TRUE(QvKsDataMng::OpenProject(project->Path()));
    ASSERT_TRUE(CISysCode::GetLineTypeScale(scale));
    EXPECT_EQ(scale, QStringLiteral("2.5"));
}

INSTANTIATE_TEST_SUITE_P(
    Engines, CodeTreeStore, ::testing::Values(StoreEngine::File, StoreEngine::Server), EngineName);

} // namespace

// The demo project's data through the data service: floors, specialty and floor
// selection, pipeline items and their save, the attribute library, laying modes.
#include "CAtt.h"
#include "CAttDetailMem.h"
#include "CHorizontalLayMng.h"
#include "CISysCode.h"
#include "CProj.h"
#include "CQVSpecTypeInfoGet.h"
#include "CQtxmMng.h"
#include "CReNameMng.h"
#include "CSys.h"
#include "IFloorMng.h"
#include "TempProject.h"

namespace {

QString demoScript()
{
    return readText(QStringLiteral(QV_DEMO_SQL));
}

struct DemoProject : ::testing::Test
{
    TempProject project { demoScript() };
};

TEST_F(DemoProject, HoldsFiveSpecialtiesWithTheirNumbers)
{
    EXPECT_EQ(CISysCode::GetAllSpecNames(),
        (QStringList { QStringLiteral("给排水"), QStringLiteral("电气"), QStringLiteral("暖通"),
            QStringLiteral("消防"), QStringLiteral("弱电") }));
    EXPECT_EQ(CQVSpecTypeInfoGet::GetSpecTypeByName(QStringLiteral("电气")), 3);
    EXPECT_EQ(CQVSpecTypeInfoGet::GetSpecTypeByName(L"弱电"), 6);
    EXPECT_EQ(CQVSpecTypeInfoGet::GetSpecTypeByName(QStringLiteral("电气 ")), eSpecNone);
    EXPECT_EQ(CQVSpecTypeInfoGet::GetSpecNameByType(1), QStringLiteral("给排水"));
    // The store's index paths and the specialty numbers agree.
    EXPECT_EQ(
        CISysCode::GetIndexPath(QStringLiteral("弱电\\综合布线\\数据\\TD-1")), QStringLiteral("6\\1\\6\\8"));
    CSysCodeData root;
    ASSERT_TRUE(CISysCode::GetSpecCodeInfos(root, QStringLiteral("给排水")));
    QStringList tops;
    for (const CSysCodeData* c : root.GetChildren())
        tops << c->GetNodeName();
    EXPECT_EQ(tops,
        (QStringList { QStringLiteral("生活给水"), QStringLiteral("生活排水"), QStringLiteral("生活污水"),
            QStringLiteral("消防水"), QStringLiteral("喷淋水"), QStringLiteral("雨水"),
            QStringLiteral("空调水") }));
    EXPECT_EQ(root.GetNodeIndex(), 17);
}

TEST_F(DemoProject, FloorsAndCurrentSelections)
{
    CProj proj;
    QVector<SQvKsFloorData> floors;
    ASSERT_TRUE(proj.GetAllFloorData(floors));
    ASSERT_EQ(floors.size(), 3);
    EXPECT_EQ(floors[0].strName, QStringLiteral("B1"));
    EXPECT_EQ(floors[2].strDwgFile, QStringLiteral("2F.dxf"));
    EXPECT_EQ(
        IFloorMng::GetDwgFullNameByFloorName(QStringLiteral("1F")), project.File(QStringLiteral("1F.dxf")));
    EXPECT_TRUE(IFloorMng::GetDwgFullNameByFloorName(QStringLiteral("9F")).isEmpty());
    EXPECT_EQ(proj.GetPrjName(), QStringLiteral("演示项目"));
    EXPECT_EQ(proj.GetColorShowType(), 1);
    EXPECT_EQ(proj.GetCurFloorName(), QStringLiteral("1F"));
    EXPECT_EQ(proj.GetCurrentSpec(), QStringLiteral("电气"));
    EXPECT_TRUE(proj.SetCurrentSpec(QStringLiteral("弱电")));
    EXPECT_FALSE(proj.SetCurrentSpec(QStringLiteral("土建")));
    EXPECT_FALSE(proj.SetCurFloorName(QStringLiteral("9F")));
    EXPECT_TRUE(proj.SetCurFloorName(QStringLiteral("2F")));
    QvKsDataMng::CloseProject();
    ASSERT_TRUE(QvKsDataMng::OpenProject(project.Path()));
    EXPECT_EQ(CProj().GetCurrentSpec(), QStringLiteral("弱电"));
    EXPECT_EQ(CProj().GetCurFloorName(), QStringLiteral("2F"));
}

TEST_F(DemoProject, PipelineItemsCarryTheirSystemCodeAndRenamesAreSavedTogether)
{
    QVector<SQvKsQdInfo> bills;
    ASSERT_TRUE(CQtxmMng::GetAllQdInfos(QStringLiteral("1F"), bills));
    ASSERT_EQ(bills.size(), 3);
    EXPECT_EQ(bills[0].GetName(), QStringLiteral("030411001-1 配管"));
    QVector<SQvKsDeInfo> quotas;
    ASSERT_TRUE(
        CQtxmMng::GetAllQdDeInfosByCode(QStringLiteral("1F"), QStringLiteral("030411004"), 1, quotas));
    ASSERT_EQ(quotas.size(), 1);
    EXPECT_EQ(quotas[0].strSysCode, QStringLiteral("电气\\公共照明\\WL1"));
    ASSERT_TRUE(CQtxmMng::GetAllDeInfos(QStringLiteral("1F"), quotas));
    EXPECT_EQ(quotas.size(), 4); // one of them belongs to no bill item
    EXPECT_FALSE(CQtxmMng::GetAllQdInfos(QStringLiteral("9F"), bills));

    // Rename 电气\公共照明\WL1 to WL7 in the bill and its quota item.
    ASSERT_TRUE(CQtxmMng::GetAllQdInfos(QStringLiteral("1F"), bills));
    SQvKsQdInfo bill = bills[1];
    bill.strSysCode = QStringLiteral("电气\\公共照明\\WL7");
    ASSERT_TRUE(CQtxmMng::SetQdInfo(bill));
    ASSERT_TRUE(CQtxmMng::GetAllQdDeInfosByCode(QStringLiteral("1F"), bill.strCode, bill.nIndex, quotas));
    SQvKsDeInfo quota = quotas[0];
    quota.strSysCode = bill.strSysCode;
    ASSERT_TRUE(CQtxmMng::SetQdDeInfo(quota));
    SQvKsQdInfo unknown;
    unknown.nId = 999;
    EXPECT_FALSE(CQtxmMng::SetQdInfo(unknown));

    // Reads see the edits at once; closing without CAtt::Save drops them.
    ASSERT_TRUE(CQtxmMng::GetAllQdInfos(QStringLiteral("1F"), bills));
    EXPECT_EQ(bills[1].strSysCode, bill.strSysCode);
    QvKsDataMng::CloseProject();
    ASSERT_TRUE(QvKsDataMng::OpenProject(project.Path()));
    ASSERT_TRUE(CQtxmMng::GetAllQdInfos(QStringLiteral("1F"), bills));
    EXPECT_EQ(bills[1].strSysCode, QStringLiteral("电气\\公共照明\\WL1"));

    ASSERT_TRUE(CQtxmMng::SetQdInfo(bill));
    ASSERT_TRUE(CQtxmMng::SetQdDeInfo(quota));
    ASSERT_TRUE(CAtt::Save());
    QvKsDataMng::CloseProject();
    ASSERT_TRUE(QvKsDataMng::OpenProject(project.Path()));
    ASSERT_TRUE(CQtxmMng::GetAllQdInfos(QStringLiteral("1F"), bills));
    EXPECT_EQ(bills[1].strSysCode, bill.strSysCode);
    ASSERT_TRUE(CQtxmMng::GetAllQdDeInfosByCode(QStringLiteral("1F"), bill.strCode, bill.nIndex, quotas));
    EXPECT_EQ(quotas[0].strSysCode, bill.strSysCode);
}

TEST_F(DemoProject, EveryPickerCategoryResolvesToMembers)
{
    const char* ids[] = { "3\\1\\1", "3\\1\\2", "3\\1\\3", "3\\1\\4", "3\\1\\5", "3\\1\\6", "3\\1\\8",
        "3\\1\\9", "3\\2\\2", "6\\3\\1", "6\\3\\2", "6\\3\\4", "6\\3\\5" };
    for (const char* id : ids) {
        const QString path = CSys::GetNamePath(QString::fromUtf8(id));
        ASSERT_FALSE(path.isEmpty()) << id;
        const SQvKsSmallCategoryId category = SmallCategoryNameToId(path);
        ASSERT_TRUE(category.IsComplete()) << id;
        EXPECT_EQ(category.ToString(), QString::fromUtf8(id));
        QVector<SQvKsDetailMemId> members;
        ASSERT_TRUE(CAtt::GetAllDetailMemIdsBySmallCategory(category, members));
        ASSERT_FALSE(members.isEmpty()) << id;
        for (const SQvKsDetailMemId& m : members) {
            const QString memberPath = CAttDetailMem(m).GetNamePath();
            EXPECT_TRUE(memberPath.startsWith(path + QLatin1Char('\\'))) << memberPath.toStdString();
            EXPECT_FALSE(AttNameToAttIndex(memberPath).isEmpty());
            EXPECT_EQ(AttNameToAttId(memberPath).strMemId, m.strMemId);
        }
    }
    EXPECT_EQ(CSys::GetNamePath(QStringLiteral("3\\1\\1")), QStringLiteral("电气\\管线\\导线·导管"));
    EXPECT_EQ(CSys::GetNamePath(QStringLiteral("6\\3\\1")), QStringLiteral("弱电\\穿管引线\\配管配线"));
    EXPECT_EQ(CSys::GetNamePath(QStringLiteral("3")), QStringLiteral("电气"));
    EXPECT_TRUE(CSys::GetNamePath(QStringLiteral("3\\1\\99")).isEmpty());
    EXPECT_TRUE(CSys::GetNamePath(QStringLiteral("x")).isEmpty());
    EXPECT_TRUE(CAttDetailMem(SQvKsDetailMemId { QStringLiteral("3"), QStringLiteral("1"),
                                  QStringLiteral("1"), QStringLiteral("99") })
                    .GetNamePath()
                    .isEmpty());
}

TEST_F(DemoProject, NamesThatAreNotMembersHaveNoIndex)
{
    for (const char16_t* path : { u"电气\\管线\\导线·导管", u"电气\\管线\\导线·导管\\",
             u"电气\\管线\\导线·导管\\BV-99", u"电气", u"", u"给排水\\管线\\导线·导管\\BV-2.5" }) {
        EXPECT_TRUE(AttNameToAttIndex(QString::fromUtf16(path)).isEmpty())
            << QString::fromUtf16(path).toStdString();
        EXPECT_TRUE(AttNameToAttId(QString::fromUtf16(path)).strMemId.isEmpty());
    }
    EXPECT_FALSE(SmallCategoryNameToId(QStringLiteral("电气\\管线")).IsComplete());
}

TEST_F(DemoProject, RelatedCategoriesComeWithTheCategoryFirst)
{
    const SQvKsDetailMemId member = AttNameToAttId(QStringLiteral("电气\\管线\\导线·导管\\BV-2.5"));
    const QString index = SmallCategoryIdToIndex(member.SmallCategory());
    ASSERT_FALSE(index.isEmpty());
    QStringList related;
    ASSERT_TRUE(CReNameMng::GetUpDetail(index, related));
    EXPECT_EQ(related,
        (QStringList { QStringLiteral("3\\1\\1"), QStringLiteral("3\\1\\5"), QStringLiteral("3\\1\\9") }));
    EXPECT_FALSE(CReNameMng::GetUpDetail(QStringLiteral("99999"), related));
    EXPECT_FALSE(CReNameMng::GetUpDetail(QStringLiteral("abc"), related));
}

TEST_F(DemoProject, LayingModesPerFloorAndVertical)
{
    QVector<SQvKsLayModeInfo> modes;
    ASSERT_TRUE(CHorizontalLayMng::GetAllLayModeInfos(QStringLiteral("B1"), modes));
    ASSERT_EQ(modes.size(), 6);
    EXPECT_EQ(modes[0].strName, QStringLiteral("沿墙明敷"));
    EXPECT_EQ(modes[0].strCode, QStringLiteral("WE"));
    EXPECT_FALSE(CHorizontalLayMng::GetAllLayModeInfos(QStringLiteral("9F"), modes));
    QStringList vertical;
    ASSERT_TRUE(CHorizontalLayMng::GetVerticalLayModeName(vertical));
    EXPECT_EQ(vertical,
        (QStringList { QStringLiteral("沿墙明敷"), QStringLiteral("暗敷在墙内"), QStringLiteral("竖井内敷设"),
            QStringLiteral("沿柱敷设") }));
}

TEST_F(DemoProject, EveryCodeOfTheDemoCarriesLegalNamesAndKnownPipelineInfo)
{
    for (const QString& spec : CISysCode::GetAllSpecNames()) {
        CSysCodeData root;
        ASSERT_TRUE(CISysCode::GetSpecCodeInfos(root, spec));
        EXPECT_GE(root.GetChildCount(), 4) << spec.toStdString();
        QStringList names;
        ASSERT_TRUE(CISysCode::GetFullNameAryBySpec(names, spec));
        for (const QString& name : names) {
            const CSysCodeData* code = root.FindByFullName(name);
            ASSERT_NE(code, nullptr);
            if (!code->GetAddedMsg().isEmpty()) {
                EXPECT_FALSE(AttNameToAttIndex(code->GetAddedMsg()).isEmpty())
                    << code->GetAddedMsg().toStdString();
            }
        }
    }
}

} // namespace

// The product's drawing services on the demo project, seen in the host's view:
// the line-type file, layer colours per code and the annotation refresh.
#include "HostFixture.h"

#include "CLayerManage.h"
#include "LineTypeMgr.h"
#include "QvKsBzPub.h"
#include "QvKsCodeStyles.h"
#include "ZcDbDatabase.h"

#include <QFile>

namespace {
bool ShowsText(const DisplayList& list, const QString& text)
{
    for (const DisplayItem& item : list.Items())
        if (item.kind == DisplayItem::Text && item.text == text)
            return true;
    return false;
}
} // namespace

TEST_F(HostFixture, LineTypeFileHoldsFixedStylesAndCharacterTypes)
{
    ASSERT_TRUE(LineTypeMgr::Instance()->WriteLineTypeFile());
    QFile file(LineTypeMgr::FilePath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    const QVector<LineTypeDef> defs = LinFormat::Parse(text);
    QStringList names;
    for (const LineTypeDef& def : defs)
        names.append(def.name);
    for (const char* name : { "QVCenter", "QVDash", "QV_Busbar", "QVdashdot", "QVSYS_J", "QVSYS_ZP" })
        EXPECT_TRUE(names.contains(QString::fromLatin1(name))) << name;
    EXPECT_NE(LineTypeMgr::Instance()->Find(QStringLiteral("qvsys_j")), nullptr);
    EXPECT_EQ(names.count(QStringLiteral("QVSYS_Y")), 1) << "two codes drawn with Y share one type";
    // The 给排水 code J runs on 1F: its characters appear along the run.
    window->Regen();
    EXPECT_TRUE(ShowsText(window->View()->List(), QStringLiteral("J")));
}

TEST_F(HostFixture, LayerColoursFollowCodesAndShowWhenDrawnByLayer)
{
    EXPECT_EQ(
        Run(QStringLiteral("sql UPDATE meta SET value = '0' WHERE key = 'color_show_type'\ncommand regen")),
        "");
    const QRgb magenta = qRgb(0xFF, 0x00, 0xFF); // 公共插座 by system
    EXPECT_LT(CountPixels(magenta), 20);
    EXPECT_GT(CLayerManage::GetInstance()->UpdateCurDwgLayerColor(), 0);
    const ZcDbLayerTableRecord* layer = session.Database()->layer(QStringLiteral("QV-电气-公共插座"));
    ASSERT_NE(layer, nullptr);
    EXPECT_TRUE(layer->hasTrueColor);
    EXPECT_EQ(layer->trueColor, 0xFF00FFu);
    window->Regen();
    EXPECT_GT(CountPixels(magenta), 200);
    // A second update finds everything in place.
    EXPECT_EQ(CLayerManage::GetInstance()->UpdateCurDwgLayerColor(), 0);
}

TEST_F(HostFixture, AnnotationRefreshShowsRenamedCode)
{
    EXPECT_EQ(
        Run(QStringLiteral("sql UPDATE sys_code SET name = '插座回路' WHERE spec_id = 3 AND node_index = 2")),
        "");
    EXPECT_FALSE(ShowsText(window->View()->List(), QStringLiteral("插座回路")));
    QvKsCodeStyles::Instance().Reload();
    EXPECT_GT(QvKsBzPub::RefreshAllBz(), 0);
    window->Regen();
    EXPECT_TRUE(ShowsText(window->View()->List(), QStringLiteral("插座回路")));
    EXPECT_FALSE(ShowsText(window->View()->List(), QStringLiteral("公共插座")));
    EXPECT_EQ(QvKsBzPub::RefreshAllBz(), 0);
}

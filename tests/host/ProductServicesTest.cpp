// The product's drawing services on the demo project, seen in the host's view:
// the line-type file, layer colours per code and the annotation refresh.
#include "HostFixture.h"

#include "CLayerManage.h"
#include "DisplayListBuilder.h"
#include "DxfWriter.h"
#include "LineTypeMgr.h"
#include "QvKsBzPub.h"
#include "QvKsCodeStyles.h"
#include "ZcDbDatabase.h"

#include <QFile>
#include <QTemporaryDir>

#include <tuple>
#include <utility>

namespace {
bool ShowsText(const DisplayList& list, const QString& text)
{
    bool shown = false;
    for (std::size_t i = 0; i < list.Entities().size(); ++i)
        list.ForEachPrimitive(i, [&](const DisplayPrimitive& primitive) {
            shown = shown || (primitive.text && primitive.text->text == text);
        });
    return shown;
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

// A product entity takes the look of the code its index path names, written exactly
// as the store writes it; any other spelling of the same numbers names no code.
TEST_F(HostFixture, ProductEntitiesTakeTheLookOfTheCodeTheirPathNamesExactly)
{
    const QvKsCodeStyles& styles = QvKsCodeStyles::Instance();
    const QvKsCodeStyle* first = nullptr;
    const QvKsCodeStyle* second = nullptr;
    QString firstPath;
    QString secondPath;
    for (auto it = styles.All().cbegin(); it != styles.All().cend() && !second; ++it) {
        if (!first)
            std::tie(first, firstPath) = std::make_pair(&it.value(), it.key());
        else if (it.value().color != first->color)
            std::tie(second, secondPath) = std::make_pair(&it.value(), it.key());
    }
    ASSERT_NE(second, nullptr) << "the demo has codes of two colours";
    const QString spec = firstPath.section(u'\\', 0, 0);
    const QString index = firstPath.section(u'\\', 1, 1);
    const QStringList paths { firstPath, secondPath, firstPath, spec + QStringLiteral("\\0") + index,
        u'0' + firstPath, firstPath + u'\\', QStringLiteral(" ") + firstPath,
        spec + QStringLiteral("\\99999999") };

    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("paths.dxf"));
    {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        DxfWriter writer(&out);
        writer.registerApp(QStringLiteral("QVKS"));
        for (int i = 0; i < paths.size(); ++i)
            writer.addProductEntity(paths[i], { { 0, i * 10.0, 0 }, { 500, i * 10.0, 0 } });
        ASSERT_TRUE(writer.finish());
    }
    ZcDbDatabase drawing(false, true);
    ASSERT_EQ(drawing.readDwgFile(file), Zcad::eOk);
    DisplayList list;
    DisplayListBuilder(styles, *LineTypeMgr::Instance(), {}).Build(&drawing, list);
    ASSERT_EQ(list.Entities().size(), std::size_t(paths.size()));
    const auto rgb = [&list](int entity) {
        QRgb color = 0;
        list.ForEachPrimitive(
            std::size_t(entity), [&color](const DisplayPrimitive& p) { color = p.look.color; });
        return color & 0xFFFFFF;
    };
    const auto codeRgb = [](const QvKsCodeStyle* style) {
        return qRgb(GetRValue(style->color), GetGValue(style->color), GetBValue(style->color)) & 0xFFFFFF;
    };
    EXPECT_EQ(rgb(0), codeRgb(first));
    EXPECT_EQ(rgb(1), codeRgb(second));
    EXPECT_EQ(rgb(2), codeRgb(first));
    const QRgb noCode = DisplayListBuilder::LayerColor(drawing.layer(QStringLiteral("0"))).rgb() & 0xFFFFFF;
    ASSERT_NE(codeRgb(first), noCode);
    for (int i = 3; i < paths.size(); ++i)
        EXPECT_EQ(rgb(i), noCode) << paths[i].toStdString();
}

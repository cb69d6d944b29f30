// The module's main job in the host, end to end: "bhgl" on the demo project, codes
// recoloured by an imported file and a new line-type scale, OK; then the store, the
// attribute bar, the commands the drawing received and the drawing's own pixels.
#include "HostFixture.h"

#include "CISysCode.h"
#include "CQvKsVersion.h"
#include "CSysCodeData.h"

#include <QCoreApplication>
#include <QFile>

namespace {
class MainJob : public HostFixture
{
protected:
    QStringList Plugins() const override { return { QStringLiteral(QV_MODULE_PLUGIN) }; }

    // A system-code file that gives 公共照明 pure red and adds 应急照明.
    QString WriteRecolourFile() const
    {
        const QString path = project.File(QStringLiteral("recolour.scn"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(QStringLiteral(
            "<SysCodeFile Version=\"%1\" Spec=\"电气\">"
            "<Code Name=\"公共照明\" Index=\"1\" Color=\"255\" LineWidth=\"30\" Alpha=\"0\"/>"
            "<Code Name=\"应急照明\" Index=\"2\" Color=\"65280\" LineWidth=\"30\" Alpha=\"0\"/>"
            "</SysCodeFile>")
                       .arg(CQvKsVersion::Current().ToString())
                       .toUtf8());
        return path;
    }
};

CSysCodeData* StoredCode(CSysCodeData& root, const QString& name)
{
    return CISysCode::GetSpecCodeInfos(root, QStringLiteral("电气")) ? root.FindByFullName(name) : nullptr;
}
} // namespace

TEST_F(MainJob, ImportedColoursAndANewScaleReachStoreBarAndDrawingOnOk)
{
    const QRgb red = qRgb(255, 0, 0);
    const int redBefore = CountPixels(red);
    const QString file = WriteRecolourFile();
    EXPECT_EQ(
        Run(QStringLiteral("command bhgl\n"
                           "expect-title 系统编号管理\n"
                           "file %1\n"
                           "click 204\n"
                           "expect-title 导入预览\n"
                           "expect-text 3101 新增 1 个，修改 1 个，不变 0 个\n"
                           "ok\n"
                           "expect-box 导入完成\n"
                           "expect-rows 公共照明 | 公共插座 | 区域照明 | 机房动力 | 弱电通信 | 应急照明\n"
                           "expect-back 公共照明 1 0x0000FF\n"
                           "set-text 3001 2\n"
                           "row 应急照明\n"
                           "ok\n"
                           "expect-title \n"
                           "expect-commands fredraw regen\n"
                           "expect-bar 应急照明")
                .arg(file)),
        "");
    CSysCodeData root;
    const CSysCodeData* lighting = StoredCode(root, QStringLiteral("公共照明"));
    ASSERT_NE(lighting, nullptr);
    EXPECT_EQ(lighting->GetMfcColor(), 255u);
    EXPECT_EQ(lighting->GetNodeIndex(), 1); // the code its entities carry stays theirs
    EXPECT_NE(root.FindByFullName(QStringLiteral("公共照明\\WL1")), nullptr); // nothing removed
    EXPECT_NE(root.FindByFullName(QStringLiteral("应急照明")), nullptr);
    QString scale;
    ASSERT_TRUE(CISysCode::GetLineTypeScale(scale));
    EXPECT_EQ(scale, QStringLiteral("2"));
    // The host ran "fredraw " and "regen ": 公共照明's entities are now drawn red.
    QCoreApplication::processEvents();
    EXPECT_GT(CountPixels(red), redBefore);
}

// A specialty's codes out to a spreadsheet and back, as a drafter does it in qvhost:
// export to ".csv", the sheet edited by hand (a colour changed, a code added, a bad
// row), import with its preview, OK; then what the store holds.
#include "HostFixture.h"

#include "CISysCode.h"
#include "CSysCodeData.h"

#include <QFile>

namespace {
class SpreadsheetScript : public HostFixture
{
protected:
    QStringList Plugins() const override { return { QStringLiteral(QV_MODULE_PLUGIN) }; }
};
} // namespace

TEST_F(SpreadsheetScript, ExportedSheetEditedByHandComesBackThroughThePreview)
{
    const QString path = project.File(QStringLiteral("电气.csv"));
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "file %1\n"
                                 "click 205\n"
                                 "expect-box 导出完成\n"
                                 // Read straight back, the sheet is the specialty itself.
                                 "file %1\n"
                                 "click 204\n"
                                 "expect-text 3101 新增 0 个，修改 0 个，不变 13 个\n"
                                 "cancel\n"
                                 "expect-title 系统编号管理\n"
                                 "cancel\n"
                                 "expect-title ")
                      .arg(path)),
        "");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray exported = file.readAll();
    file.close();
    ASSERT_TRUE(exported.startsWith("\xEF\xBB\xBF"));
    const QList<QByteArray> lines = exported.mid(3).split('\n');
    ASSERT_EQ(lines.size(), 15); // the titles, the demo's thirteen codes, and the end
    EXPECT_TRUE(lines[1].startsWith("公共照明,\"255,255,0\",2,电气\\管线\\导线·导管\\BV-2.5,"))
        << lines[1].toStdString();

    // By hand: 公共照明 turns green, a code is added below it, a row is refused.
    QByteArray edited = exported;
    edited.replace("公共照明,\"255,255,0\",2,", "公共照明,\"0,255,0\",,");
    edited += "公共照明\\夜景照明,\"0,0,255\",,,,,按字符,,25,0,立面\r\n";
    edited += "公共照明\\WL1\\WL1-1\\末端,,,,,,,,,,\r\n";
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(edited);
    file.close();

    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "file %1\n"
                                 "click 204\n"
                                 "expect-title 导入预览\n"
                                 "expect-text 3101 新增 1 个，修改 1 个，不变 12 个，未导入 1 行\n"
                                 "ok\n"
                                 "expect-box 导入完成\n"
                                 "expect-back 公共照明 1 0,255,0\n"
                                 "expand 公共照明\n"
                                 "expect-cell 公共照明&夜景照明 9 立面\n"
                                 "ok\n"
                                 "expect-title ")
                      .arg(path)),
        "");
    CSysCodeData root;
    ASSERT_TRUE(CISysCode::GetSpecCodeInfos(root, QStringLiteral("电气")));
    const CSysCodeData* lighting = root.FindByFullName(QStringLiteral("公共照明"));
    ASSERT_NE(lighting, nullptr);
    EXPECT_EQ(lighting->GetMfcColor(), 0x00FF00u);
    EXPECT_EQ(lighting->GetAddedMsg(), QStringLiteral("电气\\管线\\导线·导管\\BV-2.5"));
    EXPECT_EQ(lighting->GetNodeIndex(), 1);
    const CSysCodeData* added = root.FindByFullName(QStringLiteral("公共照明\\夜景照明"));
    ASSERT_NE(added, nullptr);
    EXPECT_EQ(added->GetLineWidth(), 25.0);
    EXPECT_EQ(root.FindByFullName(QStringLiteral("公共照明\\WL1\\WL1-1\\末端")), nullptr);
}

TEST_F(SpreadsheetScript, AWorkbookIsExportedAndIsNotImported)
{
    const QString book = project.File(QStringLiteral("电气.xlsx"));
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "file %1\n"
                                 "click 205\n"
                                 "expect-box 导出完成\n"
                                 "file %1\n"
                                 "click 204\n"
                                 "expect-box 工作簿（.xlsx）请另存为 CSV（UTF-8）后再导入!\n"
                                 "cancel\n"
                                 "expect-no-box\n"
                                 "expect-title ")
                      .arg(book)),
        "");
    QFile file(book);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.read(2) == "PK"); // a zip archive, as every workbook is
}

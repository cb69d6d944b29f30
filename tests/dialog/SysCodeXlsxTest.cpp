// The .xlsx export read by a real spreadsheet program: LibreOffice, headless,
// turns the workbook into CSV and every cell must be what the CSV export says.
#include "SysCodeXlsx.h"

#include "CSysCodeData.h"
#include "SysCodeCsv.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {
CSysCodeData* add(CSysCodeData& parent, const QString& name, COLORREF colour)
{
    auto* node = new CSysCodeData;
    node->SetNodeName(name);
    node->SetMfcColor(colour);
    node->SetLineWidth(30);
    node->SetLineStyle(QStringLiteral("按字符"));
    int counter = 0;
    parent.AddDataToChild(counter, node, false);
    return node;
}

CSysCodeData& sampleTree()
{
    static CSysCodeData root;
    if (root.GetChildCount() == 0) {
        CSysCodeData* lighting = add(root, QStringLiteral("照明"), 0x00FFFF);
        lighting->SetAddedMsg(QStringLiteral("电气\\配管\\SC20"));
        lighting->SetDescribe(QStringLiteral("一般照明, \"走道\""));
        CSysCodeData* wl1 = add(*lighting, QStringLiteral("WL1"), 0x123456);
        wl1->SetLineString(QStringLiteral("WL"));
        wl1->SetLineWidth(2.5);
        wl1->SetAlpha(30);
        add(*wl1, QStringLiteral("一层"), 0xFF);
        add(root, QStringLiteral("动力"), 0xFF0000);
    }
    return root;
}

int aciOf(COLORREF colour)
{
    return colour == 0x00FFFF ? 2 : colour == 0xFF ? 1 : 0;
}

TEST(Xlsx, LibreOfficeReadsTheCellsTheCsvExportHas)
{
    const QString soffice = QStandardPaths::findExecutable(QStringLiteral("soffice"));
    if (soffice.isEmpty())
        GTEST_SKIP() << "LibreOffice (soffice) is not installed: scripts/setup.sh installs it";
    QTemporaryDir dir;
    const QString book = dir.filePath(QStringLiteral("电气.xlsx"));
    const QvKsWriteStatus written = WriteSysCodeXlsx(sampleTree(), QStringLiteral("电气"), aciOf, book);
    ASSERT_TRUE(written) << written.Describe().toStdString();

    QProcess convert;
    convert.setWorkingDirectory(dir.path());
    convert.start(soffice,
        { QStringLiteral("-env:UserInstallation=file://%1/profile").arg(dir.path()),
            QStringLiteral("--headless"), QStringLiteral("--convert-to"),
            QStringLiteral("csv:Text - txt - csv (StarCalc):44,34,76"), QStringLiteral("--outdir"),
            dir.filePath(QStringLiteral("out")), book });
    ASSERT_TRUE(convert.waitForFinished(120000));
    ASSERT_EQ(convert.exitCode(), 0) << convert.readAllStandardError().toStdString();
    QFile csv(dir.filePath(QStringLiteral("out/电气.csv")));
    ASSERT_TRUE(csv.open(QIODevice::ReadOnly)) << convert.readAllStandardOutput().toStdString();
    const QList<CsvRecord> records = ParseCsv(csv.readAll());

    const QList<QStringList> expected = SysCodeSheetRows(sampleTree(), aciOf);
    ASSERT_EQ(records.size(), expected.size() + 1);
    EXPECT_EQ(records[0].fields, SysCodeCsvColumns());
    for (qsizetype r = 0; r < expected.size(); ++r)
        EXPECT_EQ(records[r + 1].fields, expected[r]) << r;
}

TEST(Xlsx, AFolderThatDoesNotExistIsAnErrorAndWritesNothing)
{
    QTemporaryDir dir;
    const QString book = dir.filePath(QStringLiteral("missing/电气.xlsx"));
    const QvKsWriteStatus written = WriteSysCodeXlsx(sampleTree(), QStringLiteral("电气"), aciOf, book);
    EXPECT_EQ(written.GetKind(), QvKsWriteStatus::Kind::Path);
    EXPECT_EQ(written.GetPath(), book);
    EXPECT_FALSE(QFile::exists(book));
}
} // namespace

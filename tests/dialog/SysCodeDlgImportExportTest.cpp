// "导出" and "导入" as a user drives them: the file dialogs they open, the files they
// write and read, the store and grid afterwards, and what the user is told.
#include "ShownDialog.h"
#include "SysCodeDlg.h"

#include "CISysCode.h"
#include "CQvKsVersion.h"
#include "CTreeListCtrl.h"
#include "CtrlId.h"
#include "IQvKsAppProfile.h"
#include "MessageBoxRecorder.h"
#include "ModalDriver.h"
#include "ModuleStrings.h"
#include "QvKsDataMng.h"
#include "QvKsProfile.h"
#include "QvKsXmlVertion.h"
#include "Resource.h"
#include "TestProject.h"
#include "WinFileDialog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QTest>
#include <QTreeWidget>
#include <gtest/gtest.h>

#include <memory>
#include <optional>

#include <sys/stat.h>

namespace {
const QString kElectrical = QStringLiteral("电气");

// Answers every file dialog with `path` (or cancels when it is empty) and keeps
// what was asked.
class FileDialogAnswer
{
public:
    explicit FileDialogAnswer(const QString& path)
    {
        m_previous = SetFileDialogHandler([this, path](const FileDialogRequest& request, QString& chosen) {
            requests.append(request);
            chosen = path;
            return !path.isEmpty();
        });
    }
    ~FileDialogAnswer() { SetFileDialogHandler(m_previous); }
    FileDialogAnswer(const FileDialogAnswer&) = delete;
    FileDialogAnswer& operator=(const FileDialogAnswer&) = delete;

    QList<FileDialogRequest> requests;

private:
    FileDialogHandler m_previous;
};

// A file of the current layout: 动力 in a new colour and a new code with a child.
QString currentLayout(const QString& version)
{
    const QString stamp = version.isEmpty() ? QString() : QStringLiteral(" Version=\"%1\"").arg(version);
    return QStringLiteral(R"(<?xml version="1.0" encoding="UTF-8"?>
<SysCodeFile%1 Spec="电气">
  <Code Name="动力" Index="1" Color="123" LineWidth="0.5" Alpha="0"/>
  <Code Name="消防报警" Index="2" Color="255" LineWidth="0.3" Alpha="0"><Code Name="一区" Index="3" Color="255" LineWidth="0.3" Alpha="0"/></Code>
</SysCodeFile>
)")
        .arg(stamp);
}

// The same codes as an older version of the product wrote them.
const char* const kOlderLayout = R"(<?xml version="1.0" encoding="UTF-8"?>
<SysCodeData Version="2.5.0">
  <SysNode><Name>动力</Name><Index>1</Index><Color>123,0,0</Color><Width>0.5</Width></SysNode>
  <SysNode><Name>消防报警</Name><Index>2</Index><Color>255,0,0</Color>
    <SubNodes><SysNode><Name>一区</Name><Index>3</Index><Color>255,0,0</Color></SysNode></SubNodes>
  </SysNode>
</SysCodeData>
)";

class SysCodeDlgImportExportTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(project.isOpen()); }

    std::unique_ptr<SysCodeDlg> open() { return OpenShownDialog(kElectrical, QString(), true); }
    static CTreeListCtrl& grid(SysCodeDlg& dlg) { return GridOf(dlg); }
    static QStringList topNames(SysCodeDlg& dlg)
    {
        QStringList names;
        CTreeListCtrl& g = grid(dlg);
        for (HTREEITEM c = g.GetChildItem(g.GetRootItem()); c; c = g.GetNextSiblingItem(c))
            names << g.GetItemText(c, 0);
        return names;
    }
    static void renameFirst(SysCodeDlg& dlg, const QString& to)
    {
        CTreeListCtrl& g = grid(dlg);
        g.SetItemText(g.GetChildItem(g.GetRootItem()), to, 0);
    }
    static void click(SysCodeDlg& dlg, int id) { QTest::mouseClick(GetDlgItem(&dlg, id), Qt::LeftButton); }
    static QStringList storedNames()
    {
        QStringList names;
        CISysCode::GetFullNameAryBySpec(names, kElectrical);
        return names;
    }
    static QString exchangeFolder()
    {
        return QvKsProfile::GetAppProfile()->GetPath() + QStringLiteral("/系统编号");
    }
    QString writeFile(const char* name, const QByteArray& content) const
    {
        const QString path = project.folder() + QLatin1Char('/') + QString::fromUtf8(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(content);
        return path;
    }

    TestProject project;
    MessageBoxRecorder boxes;
};

TEST_F(SysCodeDlgImportExportTest, ExportWritesTheSpecialtyStampedWithTheVersion)
{
    auto dlg = open();
    const QString path = exchangeFolder() + QStringLiteral("/测试项目-电气.scn");
    FileDialogAnswer answer(path);
    click(*dlg, IDC_BTN_EXPORT);
    ASSERT_EQ(answer.requests.size(), 1);
    const FileDialogRequest& r = answer.requests.first();
    EXPECT_FALSE(r.open);
    EXPECT_EQ(r.title, QStringLiteral("系统编号导出"));
    EXPECT_EQ(r.initialDir, exchangeFolder());
    EXPECT_TRUE(QDir(exchangeFolder()).exists());
    EXPECT_EQ(r.fileName, QStringLiteral("测试项目-电气"));
    EXPECT_EQ(r.defaultExt, QStringLiteral("scn"));
    // The system-code filter first (the default), then the spreadsheets.
    EXPECT_EQ(r.filter, QStringLiteral("*.scn|*.scn|CSV (UTF-8)|*.csv|Excel 工作簿 (*.xlsx)|*.xlsx|"));
    EXPECT_EQ(r.flags, DWORD(OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT));

    QString version;
    ASSERT_TRUE(QvKsXmlVertion::GetXmlVersion(version, path));
    EXPECT_EQ(version, CQvKsVersion::Current().ToString());
    CSysCodeData read;
    ASSERT_TRUE(read.ImportData(path));
    ASSERT_NE(read.FindByFullName(QStringLiteral("照明\\WL1\\一层")), nullptr);
    EXPECT_EQ(read.GetChildCount(), 3);
    EXPECT_EQ(boxes.texts(), QStringList({ "导出完成。" }));
    EXPECT_EQ(boxes.boxes().first().type, kMbNotice);
}

TEST_F(SysCodeDlgImportExportTest, ExportOverAnOldFileReplacesItWithTheNewOneWhole)
{
    auto dlg = open();
    const QString path = writeFile("old.scn", currentLayout("1.0.0").toUtf8());
    FileDialogAnswer answer(path);
    click(*dlg, IDC_BTN_EXPORT);
    CSysCodeData read;
    ASSERT_TRUE(read.ImportData(path));
    EXPECT_EQ(read.FindByFullName(QStringLiteral("消防报警")), nullptr);
    EXPECT_NE(read.FindByFullName(QStringLiteral("照明\\WL1")), nullptr);
    EXPECT_EQ(QDir(project.folder()).entryList({ "old.scn*" }, QDir::Files | QDir::Hidden),
        QStringList({ "old.scn" })); // nothing left beside it
}

TEST_F(SysCodeDlgImportExportTest, CancelledDialogsWriteNoFileButExportStoresEditsFirst)
{
    auto dlg = open();
    renameFirst(*dlg, QStringLiteral("灯光"));
    FileDialogAnswer cancel { QString() };
    click(*dlg, IDC_BTN_IMPORT); // import stores nothing before a file is chosen
    EXPECT_EQ(storedNames().first(), QStringLiteral("照明"));
    EXPECT_TRUE(dlg->IsModified());
    click(*dlg, IDC_BTN_EXPORT);
    EXPECT_EQ(storedNames().first(), QStringLiteral("灯光"));
    EXPECT_FALSE(dlg->IsModified());
    EXPECT_TRUE(dlg->m_bColorChanged);
    EXPECT_EQ(cancel.requests.size(), 2);
    EXPECT_EQ(cancel.requests.first().title, QStringLiteral("系统编号导入"));
    EXPECT_TRUE(cancel.requests.first().fileName.isEmpty());
    // A workbook cannot be imported: it is not offered.
    EXPECT_EQ(cancel.requests.first().filter, QStringLiteral("*.scn|*.scn|CSV (UTF-8)|*.csv|"));
    EXPECT_TRUE(boxes.texts().isEmpty());
    EXPECT_TRUE(QDir(exchangeFolder()).isEmpty());
}

struct ImportCase
{
    const char* what;
    QByteArray content;
    bool taken;
};

TEST_F(SysCodeDlgImportExportTest, ImportMergesFilesUpToTheRunningVersion)
{
    const CQvKsVersion now = CQvKsVersion::Current();
    const QString newer = CQvKsVersion(now.Major() + 1, 0, 0).ToString();
    const ImportCase cases[] = {
        { "equal", currentLayout(now.ToString()).toUtf8(), true },
        { "older", kOlderLayout, true },
        { "unversioned", currentLayout(QString()).toUtf8(), true },
        { "newer", currentLayout(newer).toUtf8(), false },
    };
    for (const ImportCase& c : cases) {
        SCOPED_TRACE(c.what);
        boxes.clear();
        const QString path = writeFile("in.scn", c.content);
        auto dlg = open();
        renameFirst(*dlg, QStringLiteral("灯光")); // stored once the import is confirmed
        FileDialogAnswer answer(path);
        QString summary;
        ModalDriver preview([&summary](QDialog* d) {
            summary = qobject_cast<QLabel*>(GetDlgItem(d, IDC_PREVIEW_SUMMARY))->text();
            QTest::mouseClick(GetDlgItem(d, IDC_BTN_OK), Qt::LeftButton);
        });
        click(*dlg, IDC_BTN_IMPORT);
        ASSERT_EQ(answer.requests.size(), 1);
        EXPECT_TRUE(answer.requests.first().open);
        EXPECT_EQ(preview.acted(), c.taken);
        if (!c.taken) {
            EXPECT_EQ(boxes.texts(), QStringList({ "不支持导入高版本的系统编号!" }));
            EXPECT_EQ(topNames(*dlg), QStringList({ "灯光", "动力", "插座" }));
            EXPECT_EQ(storedNames().first(), QStringLiteral("照明")); // a refused file stores nothing
            EXPECT_TRUE(dlg->IsModified());
            EXPECT_FALSE(dlg->m_bLineTypesChanged);
            continue;
        }
        EXPECT_EQ(summary, QStringLiteral("新增 2 个，修改 1 个，不变 0 个"));
        EXPECT_EQ(storedNames().first(), QStringLiteral("灯光"));
        EXPECT_EQ(boxes.texts(), QStringList({ "导入完成。" }));
        EXPECT_EQ(topNames(*dlg), QStringList({ "灯光", "动力", "插座", "消防报警" }));
        CTreeListCtrl& g = grid(*dlg);
        HTREEITEM power = g.GetNextSiblingItem(g.GetChildItem(g.GetRootItem()));
        EXPECT_EQ(g.GetItemBackColor(power, 1), 123u); // the file's attributes win
        EXPECT_EQ(dlg->GetRowNodeIndex(power), 4); // and the code keeps its index
        EXPECT_TRUE(dlg->IsModified());
        EXPECT_TRUE(dlg->m_bLineTypesChanged);
        // The older file itself was brought to the current layout first.
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_TRUE(file.readAll().contains("<SysCodeFile"));
        // New codes are numbered after the highest index in use when stored.
        click(*dlg, IDC_BTN_OK);
        EXPECT_EQ(CISysCode::GetIndexPath(kElectrical + QStringLiteral("\\消防报警\\一区")),
            QStringLiteral("3\\%1\\%2").arg(6).arg(7));
        // Back to the start for the next case.
        ASSERT_TRUE(QvKsDataMng::RunScript(QStringLiteral(
            "DELETE FROM sys_code WHERE spec_id = 3 AND node_index > 5;"
            "UPDATE sys_code SET name = '照明', color = 65535 WHERE spec_id = 3 AND node_index = 1;"
            "UPDATE sys_code SET color = 16711680 WHERE spec_id = 3 AND node_index = 4;"
            "UPDATE spec SET max_index = 5 WHERE spec_id = 3;")));
    }
}
} // namespace

namespace {
TEST_F(SysCodeDlgImportExportTest, CancellingThePreviewChangesNothingAndStoresNothing)
{
    const QString path = writeFile("in.scn", currentLayout(CQvKsVersion::Current().ToString()).toUtf8());
    auto dlg = open();
    renameFirst(*dlg, QStringLiteral("灯光"));
    FileDialogAnswer answer(path);
    QStringList groups;
    ModalDriver preview([&groups](QDialog* d) {
        auto* list = qobject_cast<QTreeWidget*>(GetDlgItem(d, IDC_PREVIEW_LIST));
        for (int i = 0; i < list->topLevelItemCount(); ++i) {
            QTreeWidgetItem* group = list->topLevelItem(i);
            QStringList lines { group->text(0) };
            for (int c = 0; c < group->childCount(); ++c) {
                QTreeWidgetItem* code = group->child(c);
                lines << code->text(0);
                for (int a = 0; a < code->childCount(); ++a)
                    lines << code->child(a)->text(0) + QLatin1Char(':') + code->child(a)->text(1)
                            + QStringLiteral("→") + code->child(a)->text(2);
            }
            groups << lines.join(QLatin1Char('|'));
        }
        QTest::mouseClick(GetDlgItem(d, IDC_BTN_CANCEL), Qt::LeftButton);
    });
    click(*dlg, IDC_BTN_IMPORT);
    ASSERT_TRUE(preview.acted());
    // The renamed 照明 shows as 灯光: the preview compares with the grid as it is.
    EXPECT_EQ(groups,
        (QStringList { QStringLiteral("新增（2）|消防报警|消防报警\\一区"),
            QStringLiteral("修改（1）|动力|颜色:0,0,255→123,0,0|线宽:30→0.5"),
            QStringLiteral("不变（0）") }));
    EXPECT_TRUE(boxes.texts().isEmpty());
    EXPECT_EQ(topNames(*dlg), QStringList({ "灯光", "动力", "插座" }));
    EXPECT_EQ(storedNames().first(), QStringLiteral("照明"));
    EXPECT_TRUE(dlg->IsModified());
    EXPECT_FALSE(dlg->m_bLineTypesChanged);
}
} // namespace

namespace {
// A file that cannot be read is refused with a warning saying why and where: no
// preview, no "导入完成", nothing stored, the grid as it was.
TEST_F(SysCodeDlgImportExportTest, AFileThatCannotBeReadIsRefusedAndChangesNothing)
{
    const auto wrap = [](const QByteArray& body) {
        return "<SysCodeFile Version=\"" + CQvKsVersion::Current().ToString().toUtf8() + "\">\n" + body
            + "\n</SysCodeFile>\n";
    };
    QByteArray random(3000, '\0');
    for (int i = 0; i < random.size(); ++i)
        random[i] = char((i * 7919 + 13) % 251);
    const QString fifo = project.folder() + QStringLiteral("/f.scn");
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const QString folder = project.folder() + QStringLiteral("/folder.scn");
    ASSERT_TRUE(QDir().mkdir(folder));
    // The file dialog gives a name without a suffix ".scn": a link stands for the device.
    const QString device = project.folder() + QStringLiteral("/zero.scn");
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/zero"), device));
    const struct
    {
        const char* what;
        QByteArray bytes; // written to the file unless `path` is given
        QString path;
        const char* reason; // a part of the warning
    } cases[] = {
        { "3000 random bytes", random, {}, "is not a valid system-code file: line " },
        { "backslash in a name", wrap(R"(<Code Name="a\b"/>)"), {},
            "line 2: the code name \"a\\b\" is not legal" },
        { "10,000-character name", wrap("<Code Name=\"" + QByteArray(10000, 'n') + "\"/>"), {}, "line 2:" },
        { "duplicate siblings", wrap("<Code Name=\"重复\"/>\n<Code Name=\"重复 \"/>"), {},
            "line 3: the code \"重复\" appears twice at one level" },
        { "four levels",
            wrap(R"(<Code Name="1"><Code Name="2"><Code Name="3"><Code Name="4"/></Code></Code></Code>)"), {},
            "deeper than 3 levels" },
        { "entity bomb",
            "<!DOCTYPE r [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;\">]>"
                + wrap("<Code Name=\"&b;\"/>"),
            {}, "document type declarations are not accepted" },
        { "newline in a name", wrap(R"(<Code Name="照明&#10;回路"/>)"), {}, "U+000A" },
        { "transparency 99999", wrap(R"(<Code Name="动力" Alpha="99999"/>)"), {}, "transparency 99999" },
        { "width -30", wrap(R"(<Code Name="动力" LineWidth="-30"/>)"), {}, "line width -30" },
        { "a folder", {}, folder, "a folder, not a file" },
        { "a named pipe", {}, fifo, "a named pipe, not a regular file" },
        { "a device", {}, device, "a device, not a regular file" },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        boxes.clear();
        const QString path = c.path.isEmpty() ? writeFile("in.scn", c.bytes) : c.path;
        auto dlg = open();
        renameFirst(*dlg, QStringLiteral("灯光"));
        FileDialogAnswer answer(path);
        ModalDriver preview([](QDialog* d) { d->reject(); }, 500);
        click(*dlg, IDC_BTN_IMPORT);
        EXPECT_FALSE(preview.acted());
        ASSERT_EQ(boxes.boxes().size(), 1);
        const MessageBoxRequest& box = boxes.boxes().first();
        EXPECT_EQ(box.type, kMbWarning);
        EXPECT_TRUE(box.text.startsWith(
            QStringLiteral("无法导入系统编号文件 %1：\n").arg(QFileInfo(path).fileName())))
            << box.text.toStdString();
        EXPECT_TRUE(box.text.contains(QString::fromUtf8(c.reason))) << box.text.toStdString();
        EXPECT_TRUE(box.text.endsWith(QLatin1Char('!')));
        EXPECT_EQ(topNames(*dlg), QStringList({ "灯光", "动力", "插座" }));
        EXPECT_EQ(storedNames().first(), QStringLiteral("照明"));
        EXPECT_EQ(storedNames().size(), 5);
        EXPECT_TRUE(dlg->IsModified());
        EXPECT_FALSE(dlg->m_bLineTypesChanged);
    }
}

// A file written for another specialty asks first, with No the default; No leaves
// everything as it was, Yes goes on to the preview.
TEST_F(SysCodeDlgImportExportTest, AFileOfAnotherSpecialtyAsksBeforeItGoesIn)
{
    QString content = currentLayout(CQvKsVersion::Current().ToString());
    content.replace(QStringLiteral("Spec=\"电气\""), QStringLiteral("Spec=\"给排水\""));
    const QString path = writeFile("water.scn", content.toUtf8());
    for (const bool yes : { false, true }) {
        SCOPED_TRACE(yes ? "yes" : "no");
        boxes.clear();
        if (yes)
            boxes.queueAnswer(IDYES);
        auto dlg = open();
        FileDialogAnswer answer(path);
        ModalDriver preview([](QDialog* d) { QTest::mouseClick(GetDlgItem(d, IDC_BTN_OK), Qt::LeftButton); });
        click(*dlg, IDC_BTN_IMPORT);
        ASSERT_GE(boxes.boxes().size(), 1);
        EXPECT_EQ(boxes.boxes().first().text,
            QStringLiteral("文件 water.scn 中是“给排水”专业的系统编号，是否导入到“电气”?"));
        EXPECT_EQ(boxes.boxes().first().type, kMbQuestionDefaultNo);
        EXPECT_EQ(preview.acted(), yes);
        EXPECT_EQ(topNames(*dlg).contains(QStringLiteral("消防报警")), yes);
        EXPECT_EQ(boxes.texts().contains(QStringLiteral("导入完成。")), yes);
        if (yes) {
            ASSERT_TRUE(QvKsDataMng::RunScript(
                QStringLiteral("DELETE FROM sys_code WHERE spec_id = 3 AND node_index > 5;"
                               "UPDATE sys_code SET color = 16711680 WHERE spec_id = 3 AND node_index = 4;"
                               "UPDATE spec SET max_index = 5 WHERE spec_id = 3;")));
        }
    }
}

// The reload other modules ask for reads the file before it stores the grid: a
// refused file stores nothing.
TEST_F(SysCodeDlgImportExportTest, AReloadFromAFileThatCannotBeReadStoresNothing)
{
    const QString path = writeFile("bad.scn", "<SysCodeFile><Code Name=\"A/B\"/></SysCodeFile>");
    auto dlg = open();
    renameFirst(*dlg, QStringLiteral("灯光"));
    EXPECT_FALSE(dlg->ReloadFromSysCodeFile(path));
    EXPECT_EQ(storedNames().first(), QStringLiteral("照明"));
    EXPECT_EQ(topNames(*dlg), QStringList({ "灯光", "动力", "插座" }));
    ASSERT_EQ(boxes.boxes().size(), 1);
    EXPECT_TRUE(boxes.boxes().first().text.contains(QStringLiteral("\"A/B\" is not legal")));
}

// A sheet that is not UTF-8 text, or is not a file, is refused whole before the preview.
TEST_F(SysCodeDlgImportExportTest, ASheetThatCannotBeReadIsRefusedWhole)
{
    const QString fifo = project.folder() + QStringLiteral("/pipe.csv");
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const struct
    {
        QString path;
        QString warning;
    } cases[] = {
        { writeFile("gbk.csv", "系统编号\n动力\n\xB6\xAF\xC1\xA6\n"),
            QStringLiteral("第 3 行不是 UTF-8 文本，请另存为 CSV（UTF-8）后再导入!") },
        { fifo,
            QStringLiteral("无法读取文件 %1：%1: a named pipe, not a regular file!")
                .arg(QDir::toNativeSeparators(fifo)) },
    };
    for (const auto& c : cases) {
        boxes.clear();
        auto dlg = open();
        FileDialogAnswer answer(c.path);
        ModalDriver preview([](QDialog* d) { d->reject(); }, 500);
        click(*dlg, IDC_BTN_IMPORT);
        EXPECT_FALSE(preview.acted());
        EXPECT_EQ(boxes.texts(), QStringList { c.warning });
        EXPECT_EQ(topNames(*dlg), QStringList({ "照明", "动力", "插座" }));
    }
}
} // namespace

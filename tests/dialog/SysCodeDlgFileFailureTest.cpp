// Files the dialog writes when they cannot be written (a full disk, a link planted
// in the shared project) and a store that cannot give the codes: the user is told
// the file and the reason in place of the notice, and nothing that was there is
// lost.
#include "ShownDialog.h"
#include "SysCodeDlg.h"

#include "CISysCode.h"
#include "IQvKsAppProfile.h"
#include "MessageBoxRecorder.h"
#include "ModuleStrings.h"
#include "QvKsFileFaults.h"
#include "QvKsProfile.h"
#include "TestProject.h"
#include "WinFileDialog.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <cerrno>

namespace {
const QString kElectrical = QStringLiteral("电气");

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

bool writeAll(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

// Every file dialog answered with `path`; the default names it offered kept.
class FileAnswer
{
public:
    explicit FileAnswer(const QString& path)
    {
        m_previous = SetFileDialogHandler([this, path](const FileDialogRequest& request, QString& chosen) {
            offered << request.fileName;
            chosen = path;
            return true;
        });
    }
    ~FileAnswer() { SetFileDialogHandler(m_previous); }
    FileAnswer(const FileAnswer&) = delete;
    FileAnswer& operator=(const FileAnswer&) = delete;

    QStringList offered;

private:
    FileDialogHandler m_previous;
};

class SysCodeDlgFileFailureTest : public ::testing::Test
{
protected:
    void TearDown() override { QvKsFileFaults::Clear(); }

    static void click(SysCodeDlg& dlg, int id) { QTest::mouseClick(GetDlgItem(&dlg, id), Qt::LeftButton); }
    static QString profile() { return QvKsProfile::GetAppProfile()->GetPath(); }
    static QString exchangeFile(const QString& name)
    {
        return profile() + QStringLiteral("/系统编号/") + name;
    }
    // The one warning shown, or a failure naming what was shown instead.
    ::testing::AssertionResult OneWarning(const QString& path, const QString& reason) const
    {
        const QStringList texts = boxes.texts();
        if (boxes.boxes().size() != 1 || boxes.boxes().first().type != kMbWarning)
            return ::testing::AssertionFailure() << "boxes: " << texts.join(u'|').toStdString();
        const QString expected
            = QStringLiteral("无法写入文件 %1：%2").arg(QDir::toNativeSeparators(path), reason);
        if (!texts.first().startsWith(expected) || !texts.first().endsWith(g_strExclaim))
            return ::testing::AssertionFailure() << texts.first().toStdString();
        return ::testing::AssertionSuccess();
    }

    TestProject project;
    MessageBoxRecorder boxes;
};

// Over a good file, on a disk that fills up at any step: a warning in place of the
// notice, and the file as it was.
TEST_F(SysCodeDlgFileFailureTest, AnExportOnAFullDiskKeepsTheOldFileAndSaysWhy)
{
    using Step = QvKsFileFaults::Step;
    for (const char* name : { "测试项目-电气.scn", "电气.csv", "电气.xlsx" }) {
        const QString path = exchangeFile(QString::fromUtf8(name));
        auto dlg = OpenShownDialog(kElectrical, QString(), true);
        FileAnswer answer(path);
        click(*dlg, IDC_BTN_EXPORT);
        ASSERT_EQ(boxes.texts(), QStringList({ QStringLiteral("导出完成。") })) << name;
        const QByteArray good = readAll(path);
        for (const Step step : { Step::Write, Step::Sync, Step::Rename }) {
            boxes.clear();
            QvKsFileFaults::FailNth(step, 1, ENOSPC);
            click(*dlg, IDC_BTN_EXPORT);
            QvKsFileFaults::Clear();
            EXPECT_TRUE(OneWarning(path, QStringLiteral("磁盘空间已满"))) << name << " step " << int(step);
            EXPECT_EQ(readAll(path), good) << name;
        }
        EXPECT_EQ(
            QDir(QFileInfo(path).path()).entryList(QDir::Files | QDir::Hidden).filter(QStringLiteral("~")),
            QStringList());
        boxes.clear();
    }
}

// A project name that would lead out of the exchange folder is cleaned; a link
// planted at the default name is not written through.
TEST(SysCodeDlgHostileProject, TheDefaultNameStaysAPlainNameAndAPlantedLinkIsRefused)
{
    TestProject project(
        QStringLiteral("UPDATE meta SET value = '../../../../tmp/evil' WHERE key = 'project_name';"));
    ASSERT_TRUE(project.isOpen());
    MessageBoxRecorder boxes;
    QTemporaryDir elsewhere;
    const QString victim = elsewhere.filePath(QStringLiteral("victim.scn"));
    ASSERT_TRUE(writeAll(victim, "not the project's"));
    auto dlg = OpenShownDialog(kElectrical, QString(), true);
    const QString planted
        = QvKsProfile::GetAppProfile()->GetPath() + QStringLiteral("/系统编号/tmpevil-电气.scn");
    ASSERT_TRUE(QDir().mkpath(QFileInfo(planted).path()));
    ASSERT_TRUE(QFile::link(victim, planted));
    FileAnswer answer(planted);
    QTest::mouseClick(GetDlgItem(dlg.get(), IDC_BTN_EXPORT), Qt::LeftButton);
    EXPECT_EQ(answer.offered, QStringList({ QStringLiteral("tmpevil-电气") }));
    ASSERT_EQ(boxes.texts().size(), 1);
    EXPECT_TRUE(boxes.texts().first().contains(QStringLiteral("链接")))
        << boxes.texts().first().toStdString();
    EXPECT_FALSE(boxes.texts().contains(QStringLiteral("导出完成。")));
    EXPECT_EQ(readAll(victim), QByteArray("not the project's"));
    EXPECT_TRUE(QFileInfo(planted).isSymLink());
}

// The setting on a full disk: told, the file whole, and the dialog closes.
TEST_F(SysCodeDlgFileFailureTest, ASettingThatCannotBeStoredKeepsTheFileWhole)
{
    const QString ini = profile() + QStringLiteral("/SysCodeMng.ini");
    const QByteArray before
        = "; shared with the other modules\r\n[SysCodeConfig]\r\nDispAddedMsg=1\r\n[Other]\r\nx=2\r\n";
    ASSERT_TRUE(writeAll(ini, before));
    auto dlg = OpenShownDialog(kElectrical);
    QTest::mouseClick(
        qobject_cast<QCheckBox*>(GetDlgItem(dlg.get(), IDC_CHECK_DISP_ADDEDMSG)), Qt::LeftButton);
    QvKsFileFaults::FailNthWrite(1);
    click(*dlg, IDC_BTN_OK);
    EXPECT_TRUE(OneWarning(ini, QStringLiteral("磁盘空间已满")));
    EXPECT_EQ(readAll(ini), before);
    EXPECT_EQ(dlg->result(), QDialog::Accepted);
}

// Without the codes' table the dialog says why and does not open on an empty grid,
// so nothing empty can be saved over the codes.
TEST(SysCodeDlgUnreadableStore, TheDialogSaysWhyAndDoesNotOpen)
{
    TestProject project(QStringLiteral("DROP TABLE sys_code;"));
    ASSERT_TRUE(project.isOpen());
    MessageBoxRecorder boxes;
    SysCodeDlg dlg;
    dlg.m_strSpec = kElectrical;
    EXPECT_EQ(dlg.DoModal(), IDCANCEL);
    ASSERT_EQ(boxes.texts().size(), 1);
    EXPECT_EQ(boxes.boxes().first().type, kMbWarning);
    EXPECT_TRUE(boxes.texts().first().startsWith(QStringLiteral("无法从项目数据中读取电气的系统编号：")));
    EXPECT_TRUE(boxes.texts().first().contains(QStringLiteral("no such table")))
        << boxes.texts().first().toStdString();
    EXPECT_FALSE(dlg.isVisible());
}

// One specialty's codes damaged: switching to it is refused, the one being edited
// keeps its rows and edits.
TEST(SysCodeDlgUnreadableStore, ASpecialtyThatCannotBeReadIsNotSwitchedTo)
{
    TestProject project(QStringLiteral("INSERT INTO sys_code(spec_id, node_index, parent_index, ord, name, "
                                       "color, line_width, alpha, line_style, "
                                       "line_string, hor_laying, ver_laying, added_msg, describe) "
                                       "VALUES (1, 9, 77, 0, '悬空', 0, 1, 0, '', '', '', '', '', '');"));
    ASSERT_TRUE(project.isOpen());
    MessageBoxRecorder boxes;
    auto dlg = OpenShownDialog(kElectrical);
    CTreeListCtrl& grid = GridOf(*dlg);
    grid.SetItemText(grid.GetChildItem(grid.GetRootItem()), QStringLiteral("照明改"), 0);
    auto* list = qobject_cast<QListWidget*>(GetDlgItem(dlg.get(), IDC_LIST_SPEC));
    QListWidgetItem* water = list->findItems(QStringLiteral("给排水"), Qt::MatchExactly).value(0);
    ASSERT_NE(water, nullptr);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(water).center());
    ASSERT_EQ(boxes.texts().size(), 1);
    EXPECT_TRUE(boxes.texts().first().startsWith(QStringLiteral("无法从项目数据中读取给排水的系统编号：")))
        << boxes.texts().first().toStdString();
    EXPECT_EQ(dlg->m_strSpec, kElectrical);
    EXPECT_EQ(list->currentItem()->text(), kElectrical);
    EXPECT_TRUE(dlg->IsModified());
    EXPECT_EQ(grid.GetItemText(grid.GetChildItem(grid.GetRootItem()), 0), QStringLiteral("照明改"));
}

} // namespace

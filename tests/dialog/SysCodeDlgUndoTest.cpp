// Undo and redo in the management dialog, driven with the keys a user presses: a
// rename with the rename recorded for the save, a deleted code with its pipeline
// information, an import's merge, the stop at the last save; and keyboard-only
// editing: Left and Right across cells, Tab and Shift+Tab from editor to editor.
#include "ShownDialog.h"
#include "SysCodeDlg.h"

#include "CISysCode.h"
#include "CQvKsVersion.h"
#include "CTreeListCtrl.h"
#include "CTreeListEditorBase.h"
#include "MessageBoxRecorder.h"
#include "ModalDriver.h"
#include "Resource.h"
#include "TestProject.h"
#include "WinFileDialog.h"

#include <QApplication>
#include <QFile>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

namespace {
const QString kElectrical = QStringLiteral("电气");

class SysCodeDlgUndoTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(project.isOpen()); }

    std::unique_ptr<SysCodeDlg> open()
    {
        auto dlg = OpenShownDialog(kElectrical, QString(), true);
        dlg->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(dlg.get())); // shortcuts answer in the active window
        GridOf(*dlg).setFocus();
        return dlg;
    }
    static QStringList topNames(SysCodeDlg& dlg)
    {
        QStringList names;
        const CTreeListCtrl& g = GridOf(dlg);
        for (HTREEITEM c = g.GetChildItem(g.GetRootItem()); c; c = g.GetNextSiblingItem(c))
            names << g.GetItemText(c, 0);
        return names;
    }
    static void clickRow(SysCodeDlg& dlg, HTREEITEM row, int column = 0)
    {
        const QPoint at = GridOf(dlg).GetSubItemRect(row, column).center();
        QTest::mouseClick(dlg.windowHandle(), Qt::LeftButton, {}, GridOf(dlg).viewport()->mapTo(&dlg, at));
    }
    // A key pressed in the dialog, made the active window again as a user's click
    // would after a message box.
    static void key(QWidget* target, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        target->window()->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(target->window()));
        QTest::keyClick(target, key, modifiers);
    }
    static void undo(SysCodeDlg& dlg) { key(&GridOf(dlg), Qt::Key_Z, Qt::ControlModifier); }
    static void redo(SysCodeDlg& dlg) { key(&GridOf(dlg), Qt::Key_Y, Qt::ControlModifier); }
    // Replaces the open editor's text as a user would: select all, type.
    static void retype(const QString& text)
    {
        QWidget* editor = QApplication::focusWidget();
        ASSERT_NE(editor, nullptr);
        key(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(editor, text);
    }
    static QStringList storedNames()
    {
        QStringList names;
        CISysCode::GetFullNameAryBySpec(names, kElectrical);
        return names;
    }

    TestProject project;
    MessageBoxRecorder boxes;
};

TEST_F(SysCodeDlgUndoTest, ARenameUndoneAndRedoneTakesItsRecordedRenameAndTheModifiedFlag)
{
    auto dlg = open();
    HTREEITEM power = dlg->FindRowByFullName(QStringLiteral("动力"));
    clickRow(*dlg, power);
    key(&GridOf(*dlg), Qt::Key_F2);
    retype(QStringLiteral("DL"));
    key(QApplication::focusWidget(), Qt::Key_Return);
    ASSERT_EQ(GridOf(*dlg).GetItemText(power, 0), QStringLiteral("DL"));
    ASSERT_EQ(dlg->m_renames.size(), 1u);
    ASSERT_TRUE(dlg->IsModified());

    undo(*dlg);
    EXPECT_EQ(GridOf(*dlg).GetItemText(power, 0), QStringLiteral("动力"));
    EXPECT_TRUE(dlg->m_renames.empty());
    EXPECT_FALSE(dlg->IsModified()) << "back as opened";
    EXPECT_EQ(GridOf(*dlg).GetCaretItem(), power);

    redo(*dlg);
    EXPECT_EQ(GridOf(*dlg).GetItemText(power, 0), QStringLiteral("DL"));
    ASSERT_EQ(dlg->m_renames.size(), 1u);
    EXPECT_EQ(dlg->m_renames.front().second, QStringLiteral("电气\\DL"));
    EXPECT_TRUE(dlg->IsModified());
    undo(*dlg);
    key(&GridOf(*dlg), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(GridOf(*dlg).GetItemText(power, 0), QStringLiteral("DL")) << "Ctrl+Shift+Z redoes too";
}

TEST_F(SysCodeDlgUndoTest, ADeletedCodeComesBackWithItsPipelineInformationAndSavesAsBefore)
{
    auto dlg = open();
    HTREEITEM lighting = dlg->FindRowByFullName(QStringLiteral("照明"));
    ASSERT_EQ(dlg->GetRowInfo(lighting), QStringLiteral("电气\\配管\\SC20"));
    clickRow(*dlg, lighting);
    boxes.queueAnswer(IDYES); // with the codes below it
    key(&GridOf(*dlg), Qt::Key_Delete);
    ASSERT_EQ(topNames(*dlg), QStringList({ "动力", "插座" }));
    EXPECT_EQ(dlg->GetRowInfo(lighting), QString());

    undo(*dlg);
    ASSERT_EQ(topNames(*dlg), QStringList({ "照明", "动力", "插座" }));
    EXPECT_EQ(dlg->FindRowByFullName(QStringLiteral("照明")), lighting) << "the same row, not a copy";
    EXPECT_EQ(dlg->GetRowInfo(lighting), QStringLiteral("电气\\配管\\SC20"));
    EXPECT_EQ(dlg->GetRowNodeIndex(dlg->FindRowByFullName(QStringLiteral("照明\\WL1\\一层"))), 3);
    EXPECT_FALSE(dlg->IsModified());

    // Deleted again and undone again: OK then stores the codes as they were.
    redo(*dlg);
    EXPECT_EQ(topNames(*dlg), QStringList({ "动力", "插座" }));
    undo(*dlg);
    // A cell written outside any recorded step loses the clean point: OK then stores
    // even though nothing is left to store.
    GridOf(*dlg).SetItemText(lighting, GridOf(*dlg).GetItemText(lighting, 0), 0);
    QTest::mouseClick(GetDlgItem(dlg.get(), IDC_BTN_OK), Qt::LeftButton);
    EXPECT_EQ(storedNames(), QStringList({ "照明", "照明\\WL1", "照明\\WL1\\一层", "动力", "插座" }));
    CSysCodeData root;
    ASSERT_TRUE(CISysCode::GetSpecCodeInfos(root, kElectrical));
    const CSysCodeData* stored = root.FindByFullName(QStringLiteral("照明"));
    ASSERT_NE(stored, nullptr);
    EXPECT_EQ(stored->GetNodeIndex(), 1);
    EXPECT_EQ(stored->GetAddedMsg(), QStringLiteral("电气\\配管\\SC20"));
}

TEST_F(SysCodeDlgUndoTest, AnImportIsOneStepBackToTheCodesBeforeIt)
{
    const QString path = project.folder() + QStringLiteral("/in.scn");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QStringLiteral(R"(<?xml version="1.0" encoding="UTF-8"?>
<SysCodeFile Version="%1" Spec="电气">
  <Code Name="动力" Index="1" Color="123" LineWidth="0.5" Alpha="0"/>
  <Code Name="消防报警" Index="2" Color="255" LineWidth="0.3" Alpha="0"/>
</SysCodeFile>
)")
                   .arg(CQvKsVersion::Current().ToString())
                   .toUtf8());
    file.close();
    auto dlg = open();
    const FileDialogHandler previous = SetFileDialogHandler([&](const FileDialogRequest&, QString& chosen) {
        chosen = path;
        return true;
    });
    ModalDriver preview([](QDialog* d) { QTest::mouseClick(GetDlgItem(d, IDC_BTN_OK), Qt::LeftButton); });
    QTest::mouseClick(GetDlgItem(dlg.get(), IDC_BTN_IMPORT), Qt::LeftButton);
    SetFileDialogHandler(previous);
    ASSERT_TRUE(preview.acted());
    ASSERT_EQ(topNames(*dlg), QStringList({ "照明", "动力", "插座", "消防报警" }));
    GridOf(*dlg).setFocus();

    undo(*dlg);
    EXPECT_EQ(topNames(*dlg), QStringList({ "照明", "动力", "插座" }));
    HTREEITEM power = dlg->FindRowByFullName(QStringLiteral("动力"));
    EXPECT_EQ(GridOf(*dlg).GetItemBackColor(power, 1), 16711680u);
    EXPECT_EQ(
        dlg->GetRowInfo(dlg->FindRowByFullName(QStringLiteral("照明"))), QStringLiteral("电气\\配管\\SC20"));
    EXPECT_FALSE(dlg->IsModified());
    redo(*dlg);
    EXPECT_EQ(topNames(*dlg), QStringList({ "照明", "动力", "插座", "消防报警" }));
    EXPECT_EQ(GridOf(*dlg).GetItemBackColor(dlg->FindRowByFullName(QStringLiteral("动力")), 1), 123u);
    EXPECT_TRUE(dlg->IsModified());
}

TEST_F(SysCodeDlgUndoTest, UndoStopsAtTheLastSave)
{
    auto dlg = open();
    clickRow(*dlg, dlg->FindRowByFullName(QStringLiteral("照明")));
    key(&GridOf(*dlg), Qt::Key_Down, Qt::AltModifier);
    ASSERT_EQ(topNames(*dlg), QStringList({ "动力", "照明", "插座" }));
    // Export stores the changed codes first: that is a save.
    const QString path = project.folder() + QStringLiteral("/out.scn");
    const FileDialogHandler previous = SetFileDialogHandler([&](const FileDialogRequest&, QString& chosen) {
        chosen = path;
        return true;
    });
    QTest::mouseClick(GetDlgItem(dlg.get(), IDC_BTN_EXPORT), Qt::LeftButton);
    SetFileDialogHandler(previous);
    ASSERT_EQ(storedNames().first(), QStringLiteral("动力"));
    EXPECT_FALSE(dlg->IsModified());
    GridOf(*dlg).setFocus();

    key(&GridOf(*dlg), Qt::Key_Down, Qt::AltModifier);
    ASSERT_EQ(topNames(*dlg), QStringList({ "动力", "插座", "照明" }));
    EXPECT_TRUE(dlg->IsModified());
    undo(*dlg);
    EXPECT_EQ(topNames(*dlg), QStringList({ "动力", "照明", "插座" }));
    EXPECT_FALSE(dlg->IsModified()) << "as last saved";
    undo(*dlg);
    EXPECT_EQ(topNames(*dlg), QStringList({ "动力", "照明", "插座" })) << "the saved move stays";
    EXPECT_FALSE(GridOf(*dlg).CanUndo());
}

TEST_F(SysCodeDlgUndoTest, LeftAndRightWalkTheCellsAndF2EditsTheCurrentOne)
{
    auto dlg = open();
    HTREEITEM power = dlg->FindRowByFullName(QStringLiteral("动力"));
    clickRow(*dlg, power);
    key(&GridOf(*dlg), Qt::Key_Right);
    key(&GridOf(*dlg), Qt::Key_Right);
    key(&GridOf(*dlg), Qt::Key_Right);
    key(&GridOf(*dlg), Qt::Key_Left);
    EXPECT_EQ(GridOf(*dlg).GetCaretItem(), power);
    EXPECT_EQ(GridOf(*dlg).GetSelectedCount(), 1);
    key(&GridOf(*dlg), Qt::Key_F2);
    CTreeListEditorBase* editor = GridOf(*dlg).GetActiveEditor();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->GetItem(), power);
    EXPECT_EQ(editor->GetColumn(), 2);
}

TEST_F(SysCodeDlgUndoTest, TabTakesTheTextAndOpensTheNextCellButARefusedNameStays)
{
    auto dlg = open();
    HTREEITEM power = dlg->FindRowByFullName(QStringLiteral("动力"));
    clickRow(*dlg, power);
    key(&GridOf(*dlg), Qt::Key_F2);
    retype(QStringLiteral("WL1")); // a code's name a level down, free beside 动力
    key(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(boxes.texts().isEmpty()) << boxes.texts().join(QLatin1Char('\n')).toStdString();
    ASSERT_NE(GridOf(*dlg).GetActiveEditor(), nullptr);
    EXPECT_EQ(GridOf(*dlg).GetActiveEditor()->GetColumn(), 1) << "the colour cell is next";
    EXPECT_EQ(GridOf(*dlg).GetItemText(power, 0), QStringLiteral("WL1"));

    key(QApplication::focusWidget(), Qt::Key_Backtab);
    ASSERT_NE(GridOf(*dlg).GetActiveEditor(), nullptr);
    EXPECT_EQ(GridOf(*dlg).GetActiveEditor()->GetColumn(), 0);
    key(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    key(QApplication::focusWidget(), Qt::Key_Delete);
    QTest::sendKeyEvent(
        QTest::Click, QApplication::focusWidget(), Qt::Key_unknown, QStringLiteral("插座"), {});
    key(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(boxes.texts(), QStringList({ " 插座系统编号在该级中已存在!" }));
    ASSERT_NE(GridOf(*dlg).GetActiveEditor(), nullptr);
    EXPECT_EQ(GridOf(*dlg).GetActiveEditor()->GetColumn(), 0) << "the refused name keeps its editor";
    EXPECT_EQ(GridOf(*dlg).GetItemText(power, 0), QStringLiteral("WL1"));

    // Each edit taken is a step of its own; undo first closes the open editor.
    retype(QStringLiteral("ZM"));
    key(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(GridOf(*dlg).GetItemText(power, 0), QStringLiteral("ZM"));
    undo(*dlg);
    EXPECT_EQ(GridOf(*dlg).GetActiveEditor(), nullptr);
    EXPECT_EQ(GridOf(*dlg).GetItemText(power, 0), QStringLiteral("WL1"));
    undo(*dlg);
    EXPECT_EQ(GridOf(*dlg).GetItemText(power, 0), QStringLiteral("动力"));
    EXPECT_TRUE(dlg->m_renames.empty());
}
TEST_F(SysCodeDlgUndoTest, TabFromTheLastCellGoesOnToTheNextRowAndShiftTabBack)
{
    auto dlg = open();
    HTREEITEM power = dlg->FindRowByFullName(QStringLiteral("动力"));
    HTREEITEM sockets = dlg->FindRowByFullName(QStringLiteral("插座"));
    const int remark = GridOf(*dlg).GetColumnCount() - 1;
    clickRow(*dlg, power);
    for (int c = 0; c < remark; ++c)
        key(&GridOf(*dlg), Qt::Key_Right);
    key(&GridOf(*dlg), Qt::Key_F2);
    ASSERT_NE(GridOf(*dlg).GetActiveEditor(), nullptr);
    ASSERT_EQ(GridOf(*dlg).GetActiveEditor()->GetColumn(), remark);
    key(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_NE(GridOf(*dlg).GetActiveEditor(), nullptr);
    EXPECT_EQ(GridOf(*dlg).GetActiveEditor()->GetItem(), sockets);
    EXPECT_EQ(GridOf(*dlg).GetActiveEditor()->GetColumn(), 0);
    EXPECT_EQ(GridOf(*dlg).GetCaretItem(), sockets);
    key(QApplication::focusWidget(), Qt::Key_Backtab);
    ASSERT_NE(GridOf(*dlg).GetActiveEditor(), nullptr);
    EXPECT_EQ(GridOf(*dlg).GetActiveEditor()->GetItem(), power);
    EXPECT_EQ(GridOf(*dlg).GetActiveEditor()->GetColumn(), remark);
}
} // namespace

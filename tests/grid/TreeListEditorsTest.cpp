// The in-place editors as a user and the dialog drive them: the line-width check,
// the short-code check, the end-of-edit notification, and a picture of the open
// line-width list with its samples.
#include "CLineWidthSampleDelegate.h"
#include "CTreeListCombo.h"
#include "CTreeListCtrl.h"
#include "CTreeListEdit.h"
#include "CTreeListEditBtn.h"
#include "MessageBoxRecorder.h"
#include "SysCodeEditChecks.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QPainter>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

namespace {
const QStringList kWidths { "1", "5", "15", "25", "30" };

class EditorsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        grid.SetDlgCtrlID(201);
        grid.GetCodeEditCtrl()->SetCommitCheck(&IsShortSysCode);
        grid.resize(640, 260);
        const QStringList titles { "系统编号", "颜色", "线型字符", "线宽(mm)", "线型样式" };
        for (int c = 0; c < titles.size(); ++c)
            grid.InsertColumn(c, titles[c], c == 0 ? LVCFMT_LEFT : LVCFMT_CENTER, c == 0 ? 110 : 100);
        grid.SetBkColor(RGB(214, 214, 214));
        const QStringList names { "生活给水", "热水", "中水" };
        for (const QString& name : names) {
            HTREEITEM item = grid.InsertItem(name);
            grid.SetEditMode(item, TLEM_EDIT, {}, 0);
            grid.SetItemColor(item, 0xCCFFCC, 1);
            grid.SetItemBackColor(item, 0xCCFFCC, 1);
            grid.SetEditMode(item, TLEM_BUTTON, {}, 1);
            grid.SetItemText(item, "AB", 2);
            grid.SetEditMode(item, TLEM_CODE, {}, 2);
            grid.SetItemText(item, "1", 3);
            grid.SetEditMode(item, TLEM_COMBO, kWidths, 3);
            grid.SetItemText(item, "按字符", 4);
            grid.SetEditMode(item, TLEM_LIST, { "", "按字符", "QVDash __ __ __ __" }, 4);
            rows.push_back(item);
        }
        grid.SetColumnEditorIds(1, 0, 10008);
        grid.SetLineTypeColumns({ 4 });
        QObject::connect(&grid, &CTreeListCtrl::endLabelEdit, &grid,
            [this](NMLVDISPINFO* info) { ends.push_back(*info); });
        grid.show();
        QApplication::processEvents();
    }

    // Opens a cell's editor by a double click, as the user does.
    void doubleClick(HTREEITEM item, int column)
    {
        const QPoint pos = grid.GetSubItemRect(item, column).center();
        QWidget* top = grid.window();
        QTest::mouseDClick(top->windowHandle(), Qt::LeftButton, {}, grid.viewport()->mapTo(top, pos));
    }

    CTreeListCtrl grid;
    std::vector<HTREEITEM> rows;
    std::vector<NMLVDISPINFO> ends;
    MessageBoxRecorder boxes;
};

struct WidthCase
{
    const char* typed;
    bool passes;
    const char* shown;
};

class LineWidthCheckTest : public EditorsTest, public ::testing::WithParamInterface<WidthCase>
{ };

TEST_P(LineWidthCheckTest, RoundsNumbersAndPutsLastGoodTextBack)
{
    const WidthCase& c = GetParam();
    ASSERT_TRUE(grid.EditSubItem(rows[0], 3));
    CTreeListCombo* combo = grid.GetComboCtrl();
    EXPECT_EQ(combo->GetDlgCtrlID(), 1005);
    combo->lineEdit()->clear();
    QTest::keyClicks(combo->lineEdit(), c.typed);
    EXPECT_EQ(combo->CheckLineWidth(), c.passes);
    EXPECT_EQ(combo->GetWindowText(), c.shown);
    if (c.passes) {
        EXPECT_TRUE(boxes.boxes().isEmpty());
        EXPECT_EQ(combo->GetLastGoodText(), c.shown);
    } else {
        ASSERT_EQ(boxes.boxes().size(), 1);
        EXPECT_EQ(boxes.boxes()[0].text, "线宽支持范围0-100");
        EXPECT_EQ(boxes.boxes()[0].caption, "Quorvatek");
        EXPECT_EQ(boxes.boxes()[0].type, 0x12030u);
    }
}

INSTANTIATE_TEST_SUITE_P(Widths, LineWidthCheckTest,
    ::testing::Values(WidthCase { "2.456", true, "2.46" }, WidthCase { "3.000", true, "3" },
        WidthCase { "0.004", true, "0" }, WidthCase { "1e1", true, "10" }, WidthCase { "abc", false, "1" },
        WidthCase { "", false, "1" }, WidthCase { "2.5mm", false, "1" }));

TEST_F(EditorsTest, LineWidthCheckRemembersEachGoodText)
{
    grid.EditSubItem(rows[0], 3);
    CTreeListCombo* combo = grid.GetComboCtrl();
    combo->SetWindowText("2.456");
    ASSERT_TRUE(combo->CheckLineWidth());
    combo->SetWindowText("x");
    EXPECT_FALSE(combo->CheckLineWidth());
    EXPECT_EQ(combo->GetWindowText(), "2.46");
    EXPECT_EQ(CTreeListCombo::RoundLineWidth(-2.456), "-2.45") << "the fraction is dropped, not floored";
}

struct CodeCase
{
    const char16_t* typed;
    int result;
    const char16_t* after;
};

class CodeCheckTest : public EditorsTest, public ::testing::WithParamInterface<CodeCase>
{ };

TEST_P(CodeCheckTest, AcceptsShortLetterDigitCodesOnly)
{
    const CodeCase& c = GetParam();
    ASSERT_TRUE(grid.EditSubItem(rows[1], 2));
    CTreeListEdit* edit = grid.GetCodeEditCtrl();
    EXPECT_EQ(edit->GetStartText(), "AB");
    edit->SetWindowText(QString::fromUtf16(c.typed));
    EXPECT_EQ(edit->CheckCode(), c.result);
    EXPECT_EQ(edit->GetWindowText(), QString::fromUtf16(c.after));
    EXPECT_EQ(edit->GetStartText(), c.result ? QString::fromUtf16(c.after) : QStringLiteral("AB"));
    EXPECT_TRUE(boxes.boxes().isEmpty()) << "the check itself shows nothing";
}

INSTANTIATE_TEST_SUITE_P(Codes, CodeCheckTest,
    ::testing::Values(CodeCase { u"", 1, u"" }, CodeCase { u"A1b", 1, u"A1b" },
        CodeCase { u" x9 ", 1, u"x9" }, CodeCase { u"ABCD", 0, u"AB" }, CodeCase { u"A-1", 0, u"AB" },
        CodeCase { u"A中", 0, u"AB" }, CodeCase { u"Ａ1", 0, u"AB" }));

TEST_F(EditorsTest, TypedNameEndsWithOneNotificationCarryingTheFields)
{
    doubleClick(rows[1], 0);
    CTreeListEdit* edit = grid.GetEditCtrl();
    ASSERT_TRUE(edit->isVisible());
    EXPECT_FALSE(edit->IsFinished());
    EXPECT_EQ(edit->GetStartText(), "热水");
    EXPECT_TRUE(grid.GetSubItemRect(rows[1], 0).contains(edit->geometry().center()));
    edit->selectAll();
    QTest::keyClicks(edit, "WS");
    QTest::keyClick(edit, Qt::Key_Return);
    ASSERT_EQ(ends.size(), 1u);
    const NMLVDISPINFO& info = ends[0];
    EXPECT_EQ(info.gridId, 201);
    EXPECT_EQ(info.hdr.hwndFrom, &grid);
    EXPECT_EQ(info.hdr.idFrom, 10000);
    EXPECT_EQ(info.hdr.code, LVN_ENDLABELEDITW);
    EXPECT_EQ(info.mask, LVIF_TEXT);
    EXPECT_EQ(info.iItem, 1);
    EXPECT_EQ(info.iSubItem, 0);
    EXPECT_EQ(info.pszText, "WS");
    EXPECT_EQ(info.cchTextMax, 2);
    EXPECT_EQ(info.state, 0u);
    EXPECT_FALSE(edit->isVisible());
    EXPECT_TRUE(edit->IsFinished());
    EXPECT_EQ(grid.GetItemText(rows[1]), "WS");
    // Ending again sends nothing more.
    EXPECT_FALSE(edit->EndEdit(true, TLEND_COMMIT));
    EXPECT_EQ(ends.size(), 1u);
}

TEST_F(EditorsTest, RejectedEndReportsRowMinusOneAndKeepsTheCell)
{
    grid.EditSubItem(rows[2], 0);
    grid.GetEditCtrl()->SetWindowText("新名");
    ASSERT_TRUE(grid.GetEditCtrl()->EndEdit(false, TLEND_COMMIT));
    ASSERT_EQ(ends.size(), 1u);
    EXPECT_EQ(ends[0].iItem, -1);
    EXPECT_EQ(ends[0].hItem, rows[2]);
    EXPECT_EQ(grid.GetItemText(rows[2]), "中水");
}

TEST_F(EditorsTest, CancelPutsTheStartTextBack)
{
    grid.EditSubItem(rows[0], 0);
    grid.GetEditCtrl()->SetWindowText("typed");
    QTest::keyClick(grid.GetEditCtrl(), Qt::Key_Escape);
    ASSERT_EQ(ends.size(), 1u);
    EXPECT_EQ(ends[0].pszText, "生活给水");
    EXPECT_EQ(grid.GetItemText(rows[0]), "生活给水");
}

TEST_F(EditorsTest, RefusedCodeEndsTheEditOnceWithTheStartTextBack)
{
    grid.EditSubItem(rows[0], 2);
    CTreeListEdit* edit = grid.GetCodeEditCtrl();
    edit->SetWindowText("A-1");
    EXPECT_FALSE(edit->EndEdit(true, TLEND_COMMIT));
    ASSERT_EQ(ends.size(), 1u);
    EXPECT_EQ(ends[0].pszText, "AB");
    EXPECT_EQ(ends[0].hdr.idFrom, edit->GetDlgCtrlID());
    EXPECT_FALSE(edit->isVisible());
    EXPECT_FALSE(edit->EndEdit(true, TLEND_COMMIT)) << "one notice per edit";
    EXPECT_EQ(ends.size(), 1u);
    EXPECT_EQ(grid.GetItemText(rows[0], 2), "AB");

    grid.EditSubItem(rows[0], 2);
    edit->SetWindowText(" C3 ");
    EXPECT_TRUE(edit->EndEdit(true, TLEND_COMMIT));
    ASSERT_EQ(ends.size(), 2u);
    EXPECT_EQ(grid.GetItemText(rows[0], 2), "C3");
}

TEST_F(EditorsTest, OwnerRefusesAnEndedTextThroughTheNotice)
{
    QObject::connect(&grid, &CTreeListCtrl::endLabelEdit, &grid,
        [](NMLVDISPINFO* info) { info->result = info->result && info->pszText != "热水"; });
    const QString before = grid.GetItemText(rows[0], 0);
    grid.EditSubItem(rows[0], 0);
    grid.GetEditCtrl()->SetWindowText("热水");
    QTest::keyClick(grid.GetEditCtrl(), Qt::Key_Return);
    ASSERT_EQ(ends.size(), 1u);
    EXPECT_EQ(ends[0].pszText, "热水");
    EXPECT_EQ(grid.GetItemText(rows[0], 0), before);
    grid.EditSubItem(rows[0], 0);
    grid.GetEditCtrl()->SetWindowText("冷水");
    QTest::keyClick(grid.GetEditCtrl(), Qt::Key_Return);
    ASSERT_EQ(ends.size(), 2u);
    EXPECT_EQ(grid.GetItemText(rows[0], 0), "冷水");
}

TEST_F(EditorsTest, ComboReportsChangedStateAndLineTypeChange)
{
    ASSERT_TRUE(grid.EditSubItem(rows[0], 4));
    CTreeListCombo* combo = grid.GetComboCtrl();
    EXPECT_EQ(combo->GetDlgCtrlID(), 10004);
    EXPECT_FALSE(combo->isEditable());
    EXPECT_EQ(combo->count(), 3);
    combo->setCurrentIndex(2);
    ASSERT_TRUE(combo->EndEdit(true, TLEND_COMMIT));
    ASSERT_EQ(ends.size(), 1u);
    EXPECT_EQ(ends[0].state, TLCOMBO_CHANGED);
    EXPECT_EQ(ends[0].hdr.idFrom, 10004);
    EXPECT_EQ(grid.GetItemText(rows[0], 4), "QVDash __ __ __ __");
    EXPECT_TRUE(grid.IsLineTypeChanged());
    grid.ClearLineTypeChanged();

    grid.EditSubItem(rows[1], 4);
    combo->EndEdit(true, TLEND_COMMIT);
    ASSERT_EQ(ends.size(), 2u);
    EXPECT_EQ(ends[1].state, 0u);
    EXPECT_FALSE(grid.IsLineTypeChanged());
}

// A column's editor and items reach every cell of it that has none of its own; a
// cell given either keeps its own whatever the column gets later.
TEST_F(EditorsTest, CellsWithoutEditorsOfTheirOwnTakeTheirColumns)
{
    HTREEITEM added = grid.InsertItem("雨水");
    HTREEITEM own = grid.InsertItem("废水");
    grid.SetEditMode(own, TLEM_NONE, {}, 4);
    HTREEITEM ownItems = grid.InsertItem("污水");
    EXPECT_EQ(grid.GetEditMode(added, 4), TLEM_NONE) << "no column editor yet";
    EXPECT_FALSE(grid.EditSubItem(added, 4));

    const QStringList first { "", "按字符" };
    ASSERT_TRUE(grid.SetColumnEditMode(4, TLEM_LIST, first));
    EXPECT_FALSE(grid.SetColumnEditMode(5, TLEM_LIST, first)) << "no such column";
    grid.SetEditOptions(ownItems, { "按字符" }, 4);
    ASSERT_TRUE(grid.EditSubItem(added, 4));
    EXPECT_EQ(grid.GetComboCtrl()->count(), 2);
    grid.EndEditing(false, TLEND_CANCEL);
    EXPECT_EQ(grid.GetEditMode(own, 4), TLEM_NONE);
    EXPECT_FALSE(grid.EditSubItem(own, 4));
    EXPECT_EQ(grid.GetEditMode(ownItems, 4), TLEM_LIST) << "the column's editor then, its own items";
    EXPECT_EQ(grid.GetEditOptions(ownItems, 4), QStringList({ "按字符" }));

    const QStringList second { "", "QVCenter ____ _ ____" };
    grid.SetColumnEditMode(4, TLEM_LIST, second);
    EXPECT_EQ(grid.GetEditOptions(added, 4), second);
    EXPECT_EQ(grid.GetEditOptions(ownItems, 4), QStringList({ "按字符" }));
    EXPECT_EQ(grid.GetEditOptions(rows[0], 4), QStringList({ "", "按字符", "QVDash __ __ __ __" }));
    HTREEITEM copy = grid.CopyItem(own, TVI_ROOT, TVI_LAST);
    EXPECT_EQ(grid.GetEditMode(copy, 4), TLEM_NONE) << "a copy keeps the cell's own editor";
    CTreeListCtrl other;
    for (int c = 0; c < grid.GetColumnCount(); ++c)
        other.InsertColumn(c, grid.GetColumnText(c));
    HTREEITEM moved = other.CopyItem(added, TVI_ROOT, TVI_LAST, &grid);
    EXPECT_EQ(other.GetEditMode(moved, 4), TLEM_LIST) << "a copy into another grid keeps what it offered";
    EXPECT_EQ(other.GetEditOptions(moved, 4), second);
    EXPECT_EQ(other.GetEditMode(moved, 3), TLEM_NONE);
    grid.DeleteColumn(0);
    grid.InsertColumn(0, "系统编号");
    HTREEITEM later = grid.InsertItem("回用水");
    EXPECT_EQ(grid.GetEditMode(later, 0), TLEM_NONE) << "a new column has no editor";
}

TEST_F(EditorsTest, DialogAnswerDecidesWhetherTheCellTakesTheText)
{
    QObject::connect(
        &grid, &CTreeListCtrl::endLabelEdit, &grid, [](NMLVDISPINFO* info) { info->result = false; });
    grid.EditSubItem(rows[0], 3);
    grid.GetComboCtrl()->SetWindowText("25");
    grid.GetComboCtrl()->EndEdit(true, TLEND_COMMIT);
    EXPECT_EQ(grid.GetItemText(rows[0], 3), "1");
}

TEST_F(EditorsTest, BrowseButtonCarriesTheIdTheDialogSet)
{
    QSignalSpy clicked(&grid, &CTreeListCtrl::editorButtonClicked);
    doubleClick(rows[2], 1);
    CTreeListEditBtn* editBtn = grid.GetEditBtnCtrl();
    ASSERT_TRUE(editBtn->isVisible());
    EXPECT_TRUE(editBtn->GetEdit()->isReadOnly());
    EXPECT_EQ(editBtn->GetButtonId(), 10008);
    QTest::mouseClick(editBtn->GetButton(), Qt::LeftButton);
    ASSERT_EQ(clicked.count(), 1);
    EXPECT_EQ(clicked.at(0).at(0).toInt(), 10008);
    // The dialog writes the text into the cell while the edit goes on.
    editBtn->SetWindowText("x");
    EXPECT_TRUE(grid.ApplyEditorText(rows[2], 0));
    EXPECT_EQ(grid.GetItemText(rows[2], 1), "x");
    EXPECT_TRUE(editBtn->IsEditing());
}

TEST_F(EditorsTest, ClickOnAnotherRowCommitsTheOpenEdit)
{
    grid.EditSubItem(rows[0], 0);
    grid.GetEditCtrl()->SetWindowText("改名");
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.GetSubItemRect(rows[2], 2).center());
    ASSERT_EQ(ends.size(), 1u);
    EXPECT_EQ(grid.GetItemText(rows[0]), "改名");
    EXPECT_EQ(grid.GetSelectedItem(), rows[2]);
}

TEST_F(EditorsTest, DeletingTheEditedRowEndsTheEditOffRow)
{
    grid.EditSubItem(rows[1], 0);
    grid.DeleteItem(rows[1]);
    ASSERT_EQ(ends.size(), 1u);
    EXPECT_EQ(ends[0].iItem, -1);
    EXPECT_EQ(grid.GetActiveEditor(), nullptr);
}

TEST(LineWidthSampleTest, EachEntryIsALineOneWiderThanTheLast)
{
    QStandardItemModel model;
    for (const QString& w : kWidths)
        model.appendRow(new QStandardItem(w));
    CLineWidthSampleDelegate delegate;
    const int rowHeight = 20;
    QImage image(150, rowHeight * 5, QImage::Format_RGB32);
    image.fill(Qt::red);
    QPainter painter(&image);
    for (int r = 0; r < 5; ++r) {
        QStyleOptionViewItem option;
        option.rect = QRect(0, r * rowHeight, 150, rowHeight);
        delegate.paint(&painter, option, model.index(r, 0));
    }
    painter.end();
    EXPECT_EQ(CLineWidthSampleDelegate::SampleLineEnd(QRect(0, 0, 150, 20)), 100);
    for (int r = 0; r < 5; ++r) {
        // Count the black pixels down the middle of the line.
        int thickness = 0;
        for (int y = r * rowHeight; y < (r + 1) * rowHeight; ++y)
            thickness += image.pixelColor(50, y) == QColor(Qt::black) ? 1 : 0;
        EXPECT_EQ(thickness, r + 1) << "entry " << r;
        EXPECT_EQ(image.pixelColor(140, r * rowHeight + 1), QColor(Qt::white)) << "the row is filled white";
    }
}

// The open width list as the user sees it: every entry is a sample line one pixel
// thicker than the one above, and the entry of the cell's value, 1, is the blue bar.
TEST_F(EditorsTest, ScreenshotOfOpenLineWidthListShowsTheSamples)
{
    grid.SelectItem(rows[1]);
    ASSERT_TRUE(grid.EditSubItem(rows[1], 3));
    CTreeListCombo* combo = grid.GetComboCtrl();
    combo->showPopup();
    QAbstractItemView* list = combo->view();
    QTRY_VERIFY(list->isVisible());
    QApplication::processEvents();
    ASSERT_EQ(list->model()->rowCount(), kWidths.size());
    const QImage samples = list->viewport()->grab().toImage();
    for (int r = 0; r < kWidths.size(); ++r) {
        const QRect entry = list->visualRect(list->model()->index(r, 0));
        ASSERT_TRUE(list->viewport()->rect().contains(entry)) << "entry " << r << " is in sight";
        if (kWidths[r] == grid.GetItemText(rows[1], 3)) {
            EXPECT_EQ(samples.pixelColor(entry.center()), QColor(0, 0, 255)) << "the cell's value";
            continue;
        }
        int thickness = 0;
        for (int y = entry.top(); y <= entry.bottom(); ++y)
            thickness += samples.pixelColor(entry.left() + 10, y) == QColor(Qt::black) ? 1 : 0;
        EXPECT_EQ(thickness, r + 1) << "entry " << r;
        EXPECT_EQ(samples.pixelColor(entry.right() - 1, entry.top()), QColor(Qt::white)) << "entry " << r;
    }

    // Saved for a look: the grid with the list laid below the cell.
    QPixmap shot = grid.grab();
    const QPixmap popup = list->window()->grab();
    const QRect cell = grid.GetSubItemRect(rows[1], 3);
    const QPoint at = grid.viewport()->mapTo(&grid, cell.bottomLeft() + QPoint(0, 1));
    QPixmap canvas(
        std::max(shot.width(), at.x() + popup.width()), std::max(shot.height(), at.y() + popup.height()));
    canvas.fill(Qt::darkGray);
    QPainter painter(&canvas);
    painter.drawPixmap(0, 0, shot);
    painter.drawPixmap(at, popup);
    painter.end();
    const QString dir = qEnvironmentVariable("QV_TEST_ARTIFACTS", QDir::tempPath());
    QDir().mkpath(dir);
    EXPECT_TRUE(canvas.save(dir + "/grid_line_width_combo.png"));
    combo->hidePopup();
}
} // namespace

// The management dialog as a user sees and drives it, on a project made for the test.
#include "SysCodeDlg.h"
#include "CDialogUnits.h"
#include "CTreeListCtrl.h"
#include "CtrlId.h"
#include "DialogTemplate.h"
#include "MessageBoxRecorder.h"
#include "QvKsDataMng.h"
#include "Resource.h"
#include "ShownDialog.h"
#include "SysCodeColumn.h"
#include "TestProject.h"
#include "WinMessage.h"
#include "WinMessageBox.h"

#include <QApplication>
#include <QDir>
#include <QFontDatabase>
#include <QFontInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include <functional>
#include <iterator>
#include <memory>
#include <vector>

namespace {
class SysCodeDlgTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(project.isOpen()); }

    std::unique_ptr<SysCodeDlg> open(
        const QString& spec, const QString& selCode = QString(), bool importExport = false)
    {
        return OpenShownDialog(spec, selCode, importExport);
    }
    static QWidget* control(SysCodeDlg& dlg, int id) { return GetDlgItem(&dlg, id); }
    static CTreeListCtrl& grid(SysCodeDlg& dlg)
    {
        return *qobject_cast<CTreeListCtrl*>(control(dlg, IDC_TREE_SYSCODE));
    }
    static QStringList shownNames(SysCodeDlg& dlg)
    {
        QStringList names;
        for (int r = 0; r < grid(dlg).GetItemCount(); ++r)
            names << grid(dlg).GetItemText(grid(dlg).GetItemFromRow(r), 0);
        return names;
    }
    static void click(SysCodeDlg& dlg, int id) { QTest::mouseClick(control(dlg, id), Qt::LeftButton); }
    static void chooseSpec(SysCodeDlg& dlg, const QString& spec)
    {
        auto* list = qobject_cast<QListWidget*>(control(dlg, IDC_LIST_SPEC));
        const QList<QListWidgetItem*> found = list->findItems(spec, Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(found.first()).center());
    }

    TestProject project;
};

TEST_F(SysCodeDlgTest, ControlsStandWhereTheTemplatePutsThem)
{
    auto dlg = open(QStringLiteral("电气"));
    const DialogTemplate& t = SysCodeDlgTemplate();
    EXPECT_EQ(dlg->windowTitle(), QStringLiteral("系统编号管理"));
    EXPECT_FALSE(dlg->windowIcon().isNull());
    EXPECT_EQ(dlg->minimumSize(), dlg->size());
    // Dialog units scale the same way across the whole dialog, whatever the font:
    // every edge stands where its share of the template puts it, give or take the
    // rounding of one pixel, and edges that meet in the template meet on screen.
    const double sx = dlg->width() / double(t.size.width());
    const double sy = dlg->height() / double(t.size.height());
    EXPECT_GT(sx, 1.0);
    EXPECT_GT(sy, 1.0);
    for (const ControlTemplate& c : t.controls) {
        QWidget* w = control(*dlg, c.id);
        ASSERT_NE(w, nullptr) << c.id;
        const QRect g = w->geometry();
        EXPECT_TRUE(dlg->rect().contains(g)) << c.id;
        EXPECT_NEAR(g.left(), c.rect.left() * sx, 1.0) << c.id;
        EXPECT_NEAR(g.top(), c.rect.top() * sy, 1.0) << c.id;
        EXPECT_NEAR(g.left() + g.width(), (c.rect.left() + c.rect.width()) * sx, 1.0) << c.id;
        EXPECT_NEAR(g.top() + g.height(), (c.rect.top() + c.rect.height()) * sy, 1.0) << c.id;
        for (const ControlTemplate& d : t.controls) {
            const QRect h = control(*dlg, d.id)->geometry();
            if (c.rect.left() == d.rect.left())
                EXPECT_EQ(g.left(), h.left()) << c.id << " and " << d.id;
            if (c.rect.top() == d.rect.top())
                EXPECT_EQ(g.top(), h.top()) << c.id << " and " << d.id;
            if (c.rect.bottom() == d.rect.bottom())
                EXPECT_EQ(g.bottom(), h.bottom()) << c.id << " and " << d.id;
            if (c.rect.right() == d.rect.right())
                EXPECT_EQ(g.right(), h.right()) << c.id << " and " << d.id;
        }
        if (!c.text.isEmpty() && qobject_cast<QAbstractButton*>(w)) {
            EXPECT_EQ(qobject_cast<QAbstractButton*>(w)->text(), c.text);
        }
    }
    EXPECT_FALSE(control(*dlg, IDC_BTN_CLOUD_IMPORT)->isVisible());
    EXPECT_EQ(dlg->m_editScale.GetMax(), 9999.0);
    EXPECT_EQ(dlg->m_editScale.text(), QStringLiteral("1.0"));
}

struct PlacedControl
{
    int id;
    QRect units;
    QRect pixels;
};

struct WorkedFont
{
    int pixelSize;
    QSize baseUnits;
    QSize dialog; // 724 × 241 units
    std::vector<PlacedControl> controls;
};

// The layout in pixels, worked out by hand for DejaVu Sans at two sizes. At 12 px
// its 52 Latin letters average 7 pixels across and its lines are 14 high, so a
// dialog unit is 7/4 of a pixel across and 14/8 down; at 16 px they are 10 and 19,
// 10/4 across and 19/8 down. Each edge is rounded on its own, halves away from
// zero, so equal widths in the template may differ by a pixel on screen.
const WorkedFont kWorkedFonts[] = {
    { 12, QSize(7, 14), QSize(1267, 422),
        {
            { IDC_BTN_OK, QRect(612, 221, 50, 14), QRect(1071, 387, 88, 24) },
            { IDC_BTN_CANCEL, QRect(668, 221, 50, 14), QRect(1169, 387, 88, 24) },
            { IDC_STATIC_SPEC, QRect(6, 7, 42, 8), QRect(11, 12, 73, 14) },
            { IDC_STATIC_SYSCODE, QRect(81, 7, 60, 8), QRect(142, 12, 105, 14) },
            { IDC_LIST_SPEC, QRect(6, 18, 63, 198), QRect(11, 32, 110, 346) },
            { IDC_TREE_SYSCODE, QRect(78, 18, 640, 198), QRect(137, 32, 1120, 346) },
            { IDC_BTN_BATCH_MODIFY, QRect(159, 221, 62, 14), QRect(278, 387, 109, 24) },
            { IDC_BTN_DELETE_PIPEINFO, QRect(238, 221, 62, 14), QRect(417, 387, 108, 24) },
            { IDC_BTN_IMPORT, QRect(40, 221, 29, 14), QRect(70, 387, 51, 24) },
            { IDC_BTN_EXPORT, QRect(7, 221, 29, 14), QRect(12, 387, 51, 24) },
            { IDC_CHECK_DISP_ADDEDMSG, QRect(303, 6, 117, 10), QRect(530, 11, 205, 17) },
            { IDC_BTN_EXPAND_LEVEL, QRect(253, 5, 18, 11), QRect(443, 9, 31, 19) },
            { IDC_BTN_COLLAPSE_LEVEL, QRect(276, 5, 18, 11), QRect(483, 9, 32, 19) },
            { IDC_BTN_CLOUD_IMPORT, QRect(80, 221, 62, 14), QRect(140, 387, 109, 24) },
            { IDC_STATIC_LINETYPE_SCALE, QRect(180, 6, 33, 8), QRect(315, 11, 58, 14) },
            { IDC_EDIT_LINETYPE_SCALE, QRect(216, 4, 29, 12), QRect(378, 7, 51, 21) },
        } },
    { 16, QSize(10, 19), QSize(1810, 572),
        {
            { IDC_BTN_OK, QRect(612, 221, 50, 14), QRect(1530, 525, 125, 33) },
            { IDC_TREE_SYSCODE, QRect(78, 18, 640, 198), QRect(195, 43, 1600, 470) },
            { IDC_BTN_EXPORT, QRect(7, 221, 29, 14), QRect(18, 525, 72, 33) },
            { IDC_BTN_EXPAND_LEVEL, QRect(253, 5, 18, 11), QRect(633, 12, 45, 26) },
            { IDC_BTN_COLLAPSE_LEVEL, QRect(276, 5, 18, 11), QRect(690, 12, 45, 26) },
            { IDC_EDIT_LINETYPE_SCALE, QRect(216, 4, 29, 12), QRect(540, 10, 73, 28) },
            { IDC_CHECK_DISP_ADDEDMSG, QRect(303, 6, 117, 10), QRect(758, 14, 292, 24) },
        } },
};

// The application's font for the dialogs opened while it lives.
class ApplicationFont
{
public:
    explicit ApplicationFont(const QFont& font) { QApplication::setFont(font); }
    ~ApplicationFont() { QApplication::setFont(m_old); }

private:
    QFont m_old = QApplication::font();
};

TEST_F(SysCodeDlgTest, ControlsStandAtThePixelsWorkedOutByHand)
{
    EXPECT_EQ(std::size(kWorkedFonts[0].controls), SysCodeDlgTemplate().controls.size());
    for (const WorkedFont& worked : kWorkedFonts) {
        SCOPED_TRACE(worked.pixelSize);
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPixelSize(worked.pixelSize);
        if (QFontInfo(font).family() != QStringLiteral("DejaVu Sans"))
            GTEST_SKIP() << "DejaVu Sans, for which the pixels are worked out, is not installed";
        const ApplicationFont applied(font);
        auto dlg = open(QStringLiteral("电气"));
        ASSERT_EQ(QFontInfo(dlg->font()).pixelSize(), worked.pixelSize);
        EXPECT_EQ(CDialogUnits::BaseUnits(dlg->font()), worked.baseUnits);
        EXPECT_EQ(dlg->size(), worked.dialog);
        for (const PlacedControl& c : worked.controls) {
            const ControlTemplate* placed = SysCodeDlgTemplate().control(c.id);
            ASSERT_NE(placed, nullptr) << c.id;
            EXPECT_EQ(placed->rect, c.units) << c.id << ": the template moved; work the pixels out again";
            EXPECT_EQ(control(*dlg, c.id)->geometry(), c.pixels) << c.id;
        }
    }
}

TEST_F(SysCodeDlgTest, ColumnsFollowTheSpecialty)
{
    struct Case
    {
        QString spec;
        QStringList titles;
        QList<int> widths;
    };
    const Case cases[] = {
        { QStringLiteral("电气"),
            { "系统编号", "颜色", "管线信息", "水平敷设方式", "垂直敷设方式", "线型样式", "线型字符",
                "线宽(mm)", "透明度", "备注" },
            { 100, 75, 200, 80, 80, 100, 60, 100, 60, 100 } },
        { QStringLiteral("给排水"),
            { "系统编号", "颜色", "线型样式", "线型字符", "线宽(mm)", "透明度", "备注" },
            { 100, 115, 120, 60, 120, 60, 120 } },
    };
    for (const Case& c : cases) {
        auto dlg = open(c.spec);
        CTreeListCtrl& g = grid(*dlg);
        ASSERT_EQ(g.GetColumnCount(), c.titles.size()) << c.spec.toStdString();
        for (int i = 0; i < c.titles.size(); ++i) {
            EXPECT_EQ(g.GetColumnText(i), c.titles[i]);
            EXPECT_EQ(g.GetColumnWidth(i), c.widths[i]);
            EXPECT_EQ(g.GetColumnFormat(i), i == 0 ? LVCFMT_LEFT : LVCFMT_CENTER);
        }
        EXPECT_EQ(g.GetBkColor(), RGB(214, 214, 214));
    }
}

TEST_F(SysCodeDlgTest, RowsShowTheCodesOfTheSpecialty)
{
    auto dlg = open(QStringLiteral("电气"));
    CTreeListCtrl& g = grid(*dlg);
    EXPECT_EQ(shownNames(*dlg), QStringList({ "照明", "动力", "插座" }));
    HTREEITEM lighting = g.GetItemFromRow(0);
    EXPECT_EQ(g.GetItemColor(lighting, 1), kLightingColour);
    EXPECT_EQ(g.GetItemBackColor(lighting, 1), kLightingColour);
    for (int column : { 0, 2, 5, 9 })
        EXPECT_EQ(g.GetItemBackColor(lighting, column), RGB(214, 214, 214)) << column;
    EXPECT_EQ(g.GetItemText(lighting, 2), QStringLiteral("SC20"));
    EXPECT_EQ(dlg->GetRowInfo(lighting), QStringLiteral("电气\\配管\\SC20"));
    EXPECT_EQ(g.GetItemText(lighting, 7), QStringLiteral("30"));
    HTREEITEM wl1 = g.GetChildItem(lighting);
    EXPECT_EQ(g.GetItemText(wl1, 7), QStringLiteral("2.5"));
    EXPECT_EQ(g.GetItemText(wl1, 8), QStringLiteral("10"));
    EXPECT_EQ(g.GetItemText(g.GetChildItem(wl1), 7), QStringLiteral("30")); // width not set
    EXPECT_EQ(dlg->GetRowNodeIndex(wl1), 2);
    EXPECT_EQ(dlg->m_nMaxIndex, 5);
}

TEST_F(SysCodeDlgTest, SelectsTheGivenCodeAndShowsIt)
{
    MessageBoxRecorder boxes;
    auto dlg = open(QStringLiteral("电气"), QStringLiteral("照明\\WL1\\一层"));
    HTREEITEM caret = grid(*dlg).GetCaretItem();
    ASSERT_NE(caret, nullptr);
    EXPECT_EQ(dlg->GetRowFullName(caret), QStringLiteral("照明\\WL1\\一层"));
    EXPECT_GE(grid(*dlg).GetRowFromItem(caret), 0);
    EXPECT_EQ(grid(*dlg).GetSelectedCount(), 1);

    auto unknown = open(QStringLiteral("电气"), QStringLiteral("照明\\WL9"));
    EXPECT_EQ(grid(*unknown).GetSelectedCount(), 0);
    EXPECT_TRUE(boxes.boxes().isEmpty());
}

TEST_F(SysCodeDlgTest, ChoosingASpecialtyRefillsTheGrid)
{
    auto dlg = open(QStringLiteral("电气"));
    chooseSpec(*dlg, QStringLiteral("给排水"));
    EXPECT_EQ(dlg->m_strSpec, QStringLiteral("给排水"));
    EXPECT_EQ(dlg->m_strPrevSpec, QStringLiteral("电气"));
    EXPECT_EQ(grid(*dlg).GetColumnCount(), 7);
    EXPECT_EQ(shownNames(*dlg), QStringList({ "给水" }));
    EXPECT_FALSE(control(*dlg, IDC_BTN_BATCH_MODIFY)->isEnabled());
    EXPECT_FALSE(control(*dlg, IDC_BTN_DELETE_PIPEINFO)->isEnabled());
    EXPECT_EQ(dlg->GetRowInfo(dlg->FindRowByFullName(QStringLiteral("给水"))), QString());

    chooseSpec(*dlg, QStringLiteral("弱电"));
    EXPECT_EQ(grid(*dlg).GetColumnCount(), 10);
    EXPECT_EQ(grid(*dlg).GetItemCount(), 0);
    EXPECT_TRUE(control(*dlg, IDC_BTN_BATCH_MODIFY)->isEnabled());
    EXPECT_TRUE(control(*dlg, IDC_BTN_DELETE_PIPEINFO)->isEnabled());
}

TEST_F(SysCodeDlgTest, PlusAndMinusMoveTheWholeTreeOneLevel)
{
    auto dlg = open(QStringLiteral("电气"));
    click(*dlg, IDC_BTN_EXPAND_LEVEL);
    EXPECT_EQ(shownNames(*dlg), QStringList({ "照明", "WL1", "动力", "插座" }));
    click(*dlg, IDC_BTN_EXPAND_LEVEL);
    EXPECT_EQ(shownNames(*dlg), QStringList({ "照明", "WL1", "一层", "动力", "插座" }));
    click(*dlg, IDC_BTN_EXPAND_LEVEL); // already fully open
    EXPECT_EQ(grid(*dlg).GetItemCount(), 5);

    // The focused level-3 row is hidden: its parent takes the focus.
    grid(*dlg).SelectItem(grid(*dlg).GetItemFromRow(2));
    click(*dlg, IDC_BTN_COLLAPSE_LEVEL);
    EXPECT_EQ(shownNames(*dlg), QStringList({ "照明", "WL1", "动力", "插座" }));
    EXPECT_EQ(grid(*dlg).GetItemText(grid(*dlg).GetCaretItem(), 0), QStringLiteral("WL1"));
    click(*dlg, IDC_BTN_COLLAPSE_LEVEL);
    EXPECT_EQ(shownNames(*dlg), QStringList({ "照明", "动力", "插座" }));
    click(*dlg, IDC_BTN_COLLAPSE_LEVEL); // level 0: nothing changes visibly
    EXPECT_EQ(shownNames(*dlg), QStringList({ "照明", "动力", "插座" }));
    click(*dlg, IDC_BTN_EXPAND_LEVEL);
    EXPECT_EQ(grid(*dlg).GetItemCount(), 4);

    auto empty = open(QStringLiteral("弱电"));
    click(*empty, IDC_BTN_EXPAND_LEVEL);
    click(*empty, IDC_BTN_COLLAPSE_LEVEL);
    EXPECT_EQ(grid(*empty).GetItemCount(), 0);
}

// Stands for the host's display-control window.
class DisplayControlWindow : public QWidget
{
public:
    DisplayControlWindow() { setWindowTitle(QStringLiteral("显示控制")); }
    QList<UINT> messages; // those sent with both parameters 0

protected:
    bool event(QEvent* e) override
    {
        if (e->type() == WinMessageEvent::eventType()) {
            auto* m = static_cast<WinMessageEvent*>(e);
            if (m->wParam() == 0 && m->lParam() == 0)
                messages << m->message();
            return true;
        }
        return QWidget::event(e);
    }
};

TEST_F(SysCodeDlgTest, RefreshAfterSaveReloadsAndTellsTheDisplayControlWindow)
{
    auto dlg = open(QStringLiteral("电气"));
    dlg->RefreshAfterSave(QStringLiteral("电气")); // no such window: nothing is sent, nothing fails
    InstallQtMessageBox(); // the host's window finder
    DisplayControlWindow window;
    window.show();
    ASSERT_TRUE(QvKsDataMng::RunScript(
        QStringLiteral("UPDATE sys_code SET name = '应急照明' WHERE spec_id = 3 AND node_index = 1;")));
    dlg->RefreshAfterSave(QStringLiteral("电气"));
    EXPECT_EQ(shownNames(*dlg), QStringList({ "应急照明", "动力", "插座" }));
    EXPECT_EQ(window.messages, QList<UINT>({ 7034 }));
    EXPECT_FALSE(QApplication::overrideCursor());
}

TEST_F(SysCodeDlgTest, CommandsWaitWhileANameIsEdited)
{
    auto dlg = open(QStringLiteral("电气"));
    CTreeListCtrl& g = grid(*dlg);
    HTREEITEM lighting = g.GetItemFromRow(0);
    dlg->m_pCurRow = lighting;
    g.SetEditMode(lighting, TLEM_EDIT, {}, 0);
    ASSERT_TRUE(g.EditSubItem(lighting, 0));
    EXPECT_FALSE(dlg->OnCommand(ID_MENU_COPY));
    EXPECT_EQ(dlg->m_clipboard.GetChildCount(), 0);
    g.EndEditing(true, TLEND_CANCEL);

    EXPECT_TRUE(dlg->OnCommand(ID_MENU_COPY));
    ASSERT_EQ(dlg->m_clipboard.GetChildCount(), 1);
    EXPECT_EQ(dlg->m_clipboard.GetChild(0)->GetChild(0)->GetFullName(), QStringLiteral("照明\\WL1"));
    EXPECT_EQ(dlg->m_nLevelBase, 3);
}

TEST_F(SysCodeDlgTest, ScreenshotsShowEveryTextWhole)
{
    ASSERT_FALSE(QFontDatabase::families(QFontDatabase::SimplifiedChinese).isEmpty());
    const QString folder = qEnvironmentVariable("QV_TEST_ARTIFACTS", QDir::tempPath());
    QDir().mkpath(folder);
    for (const auto& [spec, file] : { std::pair { QStringLiteral("电气"), "syscode_dlg_electrical.png" },
             std::pair { QStringLiteral("给排水"), "syscode_dlg_water.png" } }) {
        auto dlg = open(spec, QStringLiteral("照明\\WL1"), true);
        click(*dlg, IDC_BTN_EXPAND_LEVEL);
        EXPECT_TRUE(dlg->grab().save(folder + QLatin1Char('/') + QLatin1String(file)));
        for (QPushButton* b : dlg->findChildren<QPushButton*>()) {
            if (b->isVisible()) {
                EXPECT_LE(b->fontMetrics().horizontalAdvance(b->text()), b->width())
                    << b->text().toStdString();
            }
        }
    }
}
TEST_F(SysCodeDlgTest, PipelineItemsOfEveryFloorAreLoadedOnceByName)
{
    ASSERT_TRUE(QvKsDataMng::RunScript(QStringLiteral(R"sql(
INSERT INTO qd_item(qd_id, floor_id, code, idx, name, sys_code) VALUES
  (1, 1, '030411001', 1, '配管', '电气\照明'), (2, 1, '', 1, '', ''), (3, 3, '030411004', 1, '配线', '');
INSERT INTO de_item(de_id, floor_id, qd_id, code, idx, name, sys_code) VALUES
  (1, 1, 1, '4-12-5', 1, '砖混暗配', '电气\照明'), (2, 1, NULL, '', 1, '', ''), (3, 3, 3, '4-13-1', 1, '穿线', '');
)sql")));
    auto dlg = open(QStringLiteral("电气"));
    ASSERT_EQ(dlg->m_mapQdInfo["B1"].size(), 1); // the nameless item is left out
    EXPECT_EQ(dlg->m_mapQdInfo["B1"].first().strSysCode, QStringLiteral("电气\\照明"));
    ASSERT_EQ(dlg->m_mapDeInfo["B1"].size(), 1); // found twice, kept once
    EXPECT_EQ(dlg->m_mapDeInfo["B1"].first().nQdId, 1);
    EXPECT_EQ(dlg->m_mapDeInfo["2F"].size(), 1);
    EXPECT_TRUE(dlg->m_mapQdInfo["1F"].isEmpty());
}

TEST_F(SysCodeDlgTest, RowsPlacedInOrderSortTrailingNumbersAsNumbersAfterEveryRefill)
{
    auto dlg = open(QStringLiteral("电气"));
    for (const QString& spec : { QStringLiteral("给排水"), QStringLiteral("电气") }) {
        chooseSpec(*dlg, spec);
        CTreeListCtrl& g = grid(*dlg);
        HTREEITEM parent = g.GetItemFromRow(0);
        for (const char* name : { "P3", "P10", "P2", "P02", "P" })
            ASSERT_NE(g.InsertItem(QString::fromLatin1(name), parent, TVI_SORT), nullptr);
        QStringList order;
        for (HTREEITEM c = g.GetChildItem(parent); c; c = g.GetNextSiblingItem(c))
            order << g.GetItemText(c, 0);
        order.removeIf([](const QString& name) { return !name.startsWith(u'P'); });
        EXPECT_EQ(order, QStringList({ "P", "P2", "P3", "P10", "P02" })) << spec.toStdString();
        // The rows were put in behind the dialog's back: it would ask to save them.
        g.ClearUndo();
    }
}

TEST_F(SysCodeDlgTest, IndexPathOfAnUnknownCodeFallsBackToTheFirstTopLevelCode)
{
    auto dlg = open(QStringLiteral("电气"));
    QString known = QStringLiteral("电气\\照明\\WL1");
    EXPECT_FALSE(dlg->GetSysCodeIndexPath(known).isEmpty());
    EXPECT_FALSE(dlg->m_bSelCodeReplaced);
    EXPECT_EQ(known, QStringLiteral("电气\\照明\\WL1"));

    QString unknown = QStringLiteral("电气\\无此编号");
    EXPECT_EQ(dlg->GetSysCodeIndexPath(unknown), QStringLiteral("3\\1"));
    EXPECT_TRUE(dlg->m_bSelCodeReplaced);
    EXPECT_EQ(unknown, QStringLiteral("电气\\照明"));
}
TEST_F(SysCodeDlgTest, ARowCommandMarksTheDialogModifiedExactlyWhenItChangesTheGrid)
{
    const auto snapshot = [](SysCodeDlg& dlg) {
        CTreeListCtrl& g = grid(dlg);
        QStringList rows;
        for (int r = 0; r < g.GetItemCount(); ++r)
            rows << dlg.GetRowFullName(g.GetItemFromRow(r));
        return rows;
    };
    for (const int command : { ID_MENU_ADD_SIBLING, ID_MENU_ADD_CHILD, ID_MENU_DELETE, ID_MENU_INSERT,
             ID_MENU_COPY, ID_MENU_PASTE }) {
        auto dlg = open(QStringLiteral("电气"));
        CTreeListCtrl& g = grid(*dlg);
        HTREEITEM row = g.GetItemFromRow(1);
        g.SelectItem(row);
        g.SetItemState(row, LVIS_SELECTED, LVIS_SELECTED);
        dlg->m_pCurRow = row;
        const QStringList before = snapshot(*dlg);
        EXPECT_TRUE(dlg->OnCommand(command)) << command;
        EXPECT_EQ(dlg->IsModified(), snapshot(*dlg) != before) << command;
    }
}

// The find field searches what the codes hold when the text is typed: a change made
// while it is open (a rename, pipeline information set or taken back, a code added
// or deleted) is found by the next keystroke.
TEST_F(SysCodeDlgTest, FindSeesChangesMadeWhileItIsOpen)
{
    struct Case
    {
        const char* what;
        std::function<void(SysCodeDlg&)> change;
        const char* typed;
        QStringList shown; // the rows the text keeps, once typed after the change
    };
    const auto at
        = [](SysCodeDlg& dlg, const char* name) { return dlg.FindRowByFullName(QString::fromUtf8(name)); };
    const Case cases[] = {
        { "nothing changed", [](SysCodeDlg&) {}, "一般", { "照明" } },
        { "a code renamed", [&](SysCodeDlg& dlg) { grid(dlg).SetItemText(at(dlg, "动力"), "动力照明", 0); },
            "动力照明", { "动力照明" } },
        { "a remark written", [&](SysCodeDlg& dlg) { grid(dlg).SetItemText(at(dlg, "插座"), "一般插座", 9); },
            "一般", { "照明", "插座" } },
        { "pipeline information set",
            [&](SysCodeDlg& dlg) {
                grid(dlg).SetItemValue(at(dlg, "动力"), QStringLiteral("电气\\电缆\\YJV"), kColPipeInfo);
            },
            "YJV", { "动力" } },
        { "pipeline information cleared and that undone",
            [&](SysCodeDlg& dlg) {
                grid(dlg).BeginUndoGroup();
                grid(dlg).SetItemValue(at(dlg, "照明"), QString(), kColPipeInfo);
                grid(dlg).EndUndoGroup();
                dlg.ReplayUndo(true);
            },
            "SC20", { "照明" } },
        { "a code added",
            [&](SysCodeDlg& dlg) {
                dlg.m_pCurRow = at(dlg, "插座");
                dlg.OnCommand(ID_MENU_ADD_SIBLING);
            },
            "插座", { "插座", "插座1" } },
        { "a code deleted with the code below it",
            [&](SysCodeDlg& dlg) {
                grid(dlg).SelectItem(at(dlg, "照明"));
                dlg.m_pCurRow = at(dlg, "照明");
                dlg.OnCommand(ID_MENU_DELETE);
            },
            "WL", {} },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        MessageBoxRecorder boxes;
        SetMessageBoxHandler([](const MessageBoxRequest&) { return IDYES; });
        auto dlg = open(QStringLiteral("电气"));
        dlg->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dlg.get()));
        QTest::keyClick(dlg.get(), Qt::Key_F, Qt::ControlModifier);
        auto* field = qobject_cast<QLineEdit*>(control(*dlg, IDC_FIND_TEXT));
        ASSERT_NE(field, nullptr);
        ASSERT_TRUE(field->isVisible());
        field->setText(QStringLiteral("照明"));
        c.change(*dlg);
        field->setText(QString::fromUtf8(c.typed));
        EXPECT_EQ(shownNames(*dlg), c.shown);
        SetMessageBoxHandler({});
    }
}

} // namespace

// The grid's node operations on a specialty of about 10,000 or 50,000 codes, each
// with the grid's repaint: add a sibling, add a child, paste a subtree, delete a
// subtree, drop a dragged subtree, Ctrl-drop it, move the pointer while dragging,
// a keystroke in the find field, undo and redo. Each is compared with the bare grid
// operation on the same rows (insert, copy, delete, move, filter, cell text) and
// the same repaint. Arguments: see SizesAndShown.
#include "BenchArgs.h"
#include "BenchProject.h"
#include "CTreeListCtrl.h"
#include "CTreeListItem.h"
#include "CtrlId.h"
#include "QvKsDataMng.h"
#include "Resource.h"
#include "SysCodeColumns.h"
#include "SysCodeDlg.h"
#include "WinMessageBox.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <benchmark/benchmark.h>

#include <functional>
#include <memory>

namespace {
void ExpandAll(CTreeListCtrl& grid, HTREEITEM row)
{
    for (HTREEITEM c = grid.GetChildItem(row); c; c = grid.GetNextSiblingItem(c)) {
        grid.Expand(c, TVE_EXPAND);
        ExpandAll(grid, c);
    }
}

// The first top code and its middle codes, where every benchmark works.
HTREEITEM TopRow(const CTreeListCtrl& grid)
{
    return grid.GetChildItem(grid.GetRootItem());
}

HTREEITEM MiddleRow(const CTreeListCtrl& grid, int i)
{
    HTREEITEM row = grid.GetChildItem(TopRow(grid));
    while (row && i-- > 0)
        row = grid.GetNextSiblingItem(row);
    return row;
}

// The dialog open on the benchmark specialty, tall enough that a subtree and the
// code after it are both on screen.
struct OpenDialog
{
    SysCodeDlg dlg;
    CTreeListCtrl& grid = dlg.m_tree;

    OpenDialog(int size, bool expandAll)
    {
        SetMessageBoxHandler([](const MessageBoxRequest&) { return IDYES; });
        dlg.m_strSpec = TheBenchProject().Spec(size);
        dlg.OnInitDialog();
        dlg.resize(1200, 1600);
        dlg.show();
        grid.SetRedraw(false);
        if (expandAll)
            ExpandAll(grid, grid.GetRootItem());
        else
            grid.Expand(Top(), TVE_EXPAND);
        grid.SetRedraw(true);
        QApplication::processEvents();
        // The first miss of the usage look-up reads the other floors once: not part
        // of a single delete.
        dlg.IsCodeIndexUsed(QStringLiteral("0\\0"));
    }
    HTREEITEM Top() const { return TopRow(grid); }
    HTREEITEM Middle(int i) const { return MiddleRow(grid, i); }
    // What the event loop does next: paints whatever the operation left dirty.
    static void Repaint() { QApplication::processEvents(); }
    void Command(HTREEITEM row, int command)
    {
        dlg.m_pCurRow = row;
        dlg.OnCommand(command);
        Repaint();
    }
    QPoint At(HTREEITEM row) const
    {
        return grid.viewport()->mapTo(&dlg, grid.GetSubItemRect(row, 0).center());
    }
    // A drag needs the dragged code and the codes it goes over on screen: where the
    // first two middle codes' subtrees are taller than the grid (50,000 codes), they
    // are closed; every other row stays shown.
    void FitDraggedRows()
    {
        grid.SetRedraw(false);
        for (int i = 0; i < 2; ++i) {
            if (grid.GetSubItemRect(Middle(i + 1), 0).bottom() > grid.viewport()->height())
                grid.Expand(Middle(i), TVE_COLLAPSE);
        }
        grid.SetRedraw(true);
        Repaint();
    }
    // Presses on `source` and moves the pointer onto `target`: the drag is running.
    void DragTo(HTREEITEM source, HTREEITEM target)
    {
        QWindow* window = dlg.windowHandle();
        const QPoint from = At(source);
        QTest::mousePress(window, Qt::LeftButton, {}, from);
        QTest::mouseMove(window, from + QPoint(0, QApplication::startDragDistance() + 2));
        QTest::mouseMove(window, At(target));
        QApplication::processEvents();
    }
    void Drop(HTREEITEM target, Qt::KeyboardModifiers modifiers)
    {
        QTest::mouseRelease(dlg.windowHandle(), Qt::LeftButton, modifiers, At(target));
        Repaint();
    }
};

// A grid holding the dialog's rows, shown the same way, for the bare operations.
struct BareGrid
{
    OpenDialog source;
    CTreeListCtrl grid;

    BareGrid(int size, bool expandAll)
        : source(size, expandAll)
    {
        for (const SysCodeColumnInfo& c : SysCodeColumnSet(true))
            grid.InsertColumn(c.logical, c.title, c.format, c.width);
        grid.setGeometry(source.grid.geometry());
        grid.SetRedraw(false);
        for (HTREEITEM r = source.grid.GetChildItem(source.grid.GetRootItem()); r;
             r = source.grid.GetNextSiblingItem(r))
            grid.CopyItem(r, TVI_ROOT, TVI_LAST, &source.grid);
        if (expandAll)
            ExpandAll(grid, grid.GetRootItem());
        else
            grid.Expand(grid.GetChildItem(grid.GetRootItem()), TVE_EXPAND);
        grid.SetRedraw(true);
        source.dlg.hide();
        grid.show();
        QApplication::processEvents();
    }
    HTREEITEM Top() const { return TopRow(grid); }
    HTREEITEM Middle(int i) const { return MiddleRow(grid, i); }
    static void Repaint() { QApplication::processEvents(); }
};

void Shown(benchmark::State& state, const CTreeListCtrl& grid)
{
    state.counters["rows_shown"] = grid.GetItemCount();
    state.counters["codes"] = BenchCodeCount(int(state.range(0)));
}

// Runs `command` on the row `at` names and, untimed, deletes the row it made.
void RunAndRemoveNewRow(
    benchmark::State& state, int command, HTREEITEM (*at)(const OpenDialog&), bool copyFirst = false)
{
    OpenDialog open(int(state.range(0)), state.range(1) != 0);
    if (copyFirst)
        open.Command(open.Middle(0), ID_MENU_COPY);
    for (auto _ : state) {
        open.Command(at(open), command);
        state.PauseTiming();
        open.grid.DeleteItem(open.grid.GetSelectedItem());
        state.ResumeTiming();
    }
    Shown(state, open.grid);
}

HTREEITEM FirstMiddle(const OpenDialog& open)
{
    return open.Middle(0);
}

HTREEITEM FirstTop(const OpenDialog& open)
{
    return open.Top();
}

void BM_AddSibling(benchmark::State& state)
{
    RunAndRemoveNewRow(state, ID_MENU_ADD_SIBLING, FirstMiddle);
}
BENCHMARK(BM_AddSibling)->Apply(SizesAndShown)->Unit(benchmark::kMillisecond);

void BM_AddChild(benchmark::State& state)
{
    RunAndRemoveNewRow(state, ID_MENU_ADD_CHILD, FirstTop);
}
BENCHMARK(BM_AddChild)->Apply(SizesAndShown)->Unit(benchmark::kMillisecond);

void BM_BareInsertRow(benchmark::State& state)
{
    BareGrid bare(int(state.range(0)), state.range(1) != 0);
    for (auto _ : state) {
        HTREEITEM row = bare.grid.InsertItem(QStringLiteral("WL30"), bare.Top(), bare.Middle(0));
        for (int c = 1; c < kSysCodeColumnCount; ++c)
            bare.grid.SetItemText(row, bare.grid.GetItemText(bare.Middle(0), c), c);
        bare.grid.SetItemBackColor(row, 0xCCFFCC, kColColor);
        bare.Repaint();
        state.PauseTiming();
        bare.grid.DeleteItem(row);
        state.ResumeTiming();
    }
    Shown(state, bare.grid);
}
BENCHMARK(BM_BareInsertRow)->Apply(SizesAndShown)->Unit(benchmark::kMillisecond);

void BM_PasteSubtree(benchmark::State& state)
{
    RunAndRemoveNewRow(state, ID_MENU_PASTE, FirstMiddle, true);
}
BENCHMARK(BM_PasteSubtree)->Apply(SizesAndShown)->Unit(benchmark::kMillisecond);

void BM_DeleteSubtree(benchmark::State& state)
{
    OpenDialog open(int(state.range(0)), state.range(1) != 0);
    for (auto _ : state) {
        state.PauseTiming();
        open.grid.SelectItem(open.Middle(0));
        state.ResumeTiming();
        open.Command(open.Middle(0), ID_MENU_DELETE);
    }
    Shown(state, open.grid);
}
BENCHMARK(BM_DeleteSubtree)->Apply(SizesAndShown)->Iterations(25)->Unit(benchmark::kMillisecond);

// The drop: the release over the target row, the move and the repaint. Pressing and
// moving there come before and are timed apart (BM_DragOverRows).
void BM_DropSubtree(benchmark::State& state)
{
    OpenDialog open(int(state.range(0)), state.range(1) != 0);
    open.FitDraggedRows();
    for (auto _ : state) {
        state.PauseTiming();
        HTREEITEM target = open.Middle(1);
        HTREEITEM dragged = open.Middle(0);
        open.DragTo(dragged, target);
        state.ResumeTiming();
        open.Drop(target, Qt::NoModifier);
        if (open.Middle(1) != dragged) {
            state.SkipWithError("the drop moved nothing");
            break;
        }
    }
    Shown(state, open.grid);
}
BENCHMARK(BM_DropSubtree)->Apply(SizesAndShown)->Unit(benchmark::kMillisecond);

void BM_CtrlDropSubtree(benchmark::State& state)
{
    OpenDialog open(int(state.range(0)), state.range(1) != 0);
    open.FitDraggedRows();
    for (auto _ : state) {
        state.PauseTiming();
        HTREEITEM target = open.Middle(1);
        open.DragTo(open.Middle(0), target);
        state.ResumeTiming();
        open.Drop(target, Qt::ControlModifier);
        state.PauseTiming();
        if (open.Top()->children().size() != size_t(kBenchMiddle + 1)) {
            state.SkipWithError("the drop copied nothing");
            break;
        }
        open.grid.DeleteItem(open.Middle(2));
        state.ResumeTiming();
    }
    Shown(state, open.grid);
}
BENCHMARK(BM_CtrlDropSubtree)->Apply(SizesAndShown)->Unit(benchmark::kMillisecond);

// One pointer move onto another row while dragging: the drop highlight moves, the
// picture follows, the grid repaints.
void BM_DragOverRows(benchmark::State& state)
{
    OpenDialog open(int(state.range(0)), state.range(1) != 0);
    open.FitDraggedRows();
    open.DragTo(open.Middle(0), open.Middle(1));
    QWindow* window = open.dlg.windowHandle();
    const QPoint rows[] = { open.At(open.Middle(1)), open.At(open.Middle(2)) };
    int i = 0;
    for (auto _ : state) {
        QTest::mouseMove(window, rows[++i % 2]);
        open.Repaint();
    }
    QTest::mouseRelease(window, Qt::LeftButton, {}, open.At(open.Middle(2)));
    Shown(state, open.grid);
}
BENCHMARK(BM_DragOverRows)->Apply(SizesAndShown)->Unit(benchmark::kMillisecond);

// The bare highlight change and repaint.
void BM_BareDropHighlight(benchmark::State& state)
{
    BareGrid bare(int(state.range(0)), state.range(1) != 0);
    HTREEITEM rows[] = { bare.Middle(1), bare.Middle(2) };
    int i = 0;
    for (auto _ : state) {
        bare.grid.SelectDropTarget(rows[++i % 2]);
        bare.Repaint();
    }
    Shown(state, bare.grid);
}
BENCHMARK(BM_BareDropHighlight)->Apply(SizesAndShown)->Unit(benchmark::kMillisecond);

void BM_BareCopySubtree(benchmark::State& state)
{
    BareGrid bare(int(state.range(0)), state.range(1) != 0);
    for (auto _ : state) {
        HTREEITEM copy = bare.grid.CopyItem(bare.Middle(0), bare.Top(), bare.Middle(1));
        bare.Repaint();
        state.PauseTiming();
        bare.grid.DeleteItem(copy);
        state.ResumeTiming();
    }
    Shown(state, bare.grid);
}
BENCHMARK(BM_BareCopySubtree)->Apply(SizesAndShown)->Unit(benchmark::kMillisecond);

// The deleted row is the selected one, as in the dialog.
void BM_BareDeleteSubtree(benchmark::State& state)
{
    BareGrid bare(int(state.range(0)), state.range(1) != 0);
    for (auto _ : state) {
        state.PauseTiming();
        bare.grid.SelectItem(bare.Middle(0));
        state.ResumeTiming();
        bare.grid.DeleteItem(bare.Middle(0));
        bare.Repaint();
    }
    Shown(state, bare.grid);
}
BENCHMARK(BM_BareDeleteSubtree)->Apply(SizesAndShown)->Iterations(25)->Unit(benchmark::kMillisecond);

// One keystroke in the find field (Ctrl+F): the rows filtered to the codes holding
// the text, their parents opened, the grid repainted.
void BM_FindKeystroke(benchmark::State& state)
{
    OpenDialog open(int(state.range(0)), state.range(1) != 0);
    open.dlg.activateWindow(); // the dialog's shortcuts answer in the active window
    (void)QTest::qWaitForWindowActive(&open.dlg);
    QTest::keyClick(&open.dlg, Qt::Key_F, Qt::ControlModifier);
    auto* field = qobject_cast<QLineEdit*>(GetDlgItem(&open.dlg, IDC_FIND_TEXT));
    if (!field || !field->isVisible()) {
        state.SkipWithError("the find field did not open");
        return;
    }
    int i = 0;
    for (auto _ : state) {
        field->setText(++i % 2 ? QStringLiteral("回路1") : QStringLiteral("回路2"));
        open.Repaint();
    }
    Shown(state, open.grid);
}
BENCHMARK(BM_FindKeystroke)->Apply(SizesAndShown)->Unit(benchmark::kMillisecond);

// The bare grid's filter with the same test of the name, and the repaint.
void BM_BareRowFilter(benchmark::State& state)
{
    BareGrid bare(int(state.range(0)), state.range(1) != 0);
    int i = 0;
    for (auto _ : state) {
        const QString text = ++i % 2 ? QStringLiteral("回路1") : QStringLiteral("回路2");
        bare.grid.SetRowFilter(
            [&](HTREEITEM row) { return row->cell(0).text.contains(text, Qt::CaseInsensitive); });
        bare.Repaint();
    }
    Shown(state, bare.grid);
}
BENCHMARK(BM_BareRowFilter)->Apply(SizesAndShown)->Unit(benchmark::kMillisecond);

void BM_BareMoveSubtree(benchmark::State& state)
{
    BareGrid bare(int(state.range(0)), state.range(1) != 0);
    for (auto _ : state) {
        // The dragged row is the selected one, as the press on it made it.
        state.PauseTiming();
        bare.grid.SelectItem(bare.Middle(0));
        QApplication::processEvents();
        state.ResumeTiming();
        bare.grid.MoveItem(bare.Middle(0), bare.Top(), bare.Middle(1));
        bare.Repaint();
    }
    Shown(state, bare.grid);
}
BENCHMARK(BM_BareMoveSubtree)->Apply(SizesAndShown)->Unit(benchmark::kMillisecond);

// Ctrl+Z and Ctrl+Y in turn, each with the repaint, after the change made by `change`.
void UndoRedoInTurn(benchmark::State& state, const std::function<void(OpenDialog&)>& change)
{
    OpenDialog open(int(state.range(0)), state.range(1) != 0);
    change(open);
    bool undo = true;
    for (auto _ : state) {
        open.dlg.ReplayUndo(undo);
        open.Repaint();
        undo = !undo;
    }
    Shown(state, open.grid);
}

// A deleted 33-row subtree coming back and going again; against the bare copy of
// the same subtree into the grid (BM_BareCopySubtree).
void BM_UndoRedoDeleteSubtree(benchmark::State& state)
{
    UndoRedoInTurn(state, [](OpenDialog& open) {
        open.grid.SelectItem(open.Middle(0));
        open.Command(open.Middle(0), ID_MENU_DELETE);
    });
}
BENCHMARK(BM_UndoRedoDeleteSubtree)->Apply(SizesAndShown)->Unit(benchmark::kMillisecond);

// One cell's new text taken back and made again; against the bare write of the text.
void BM_UndoRedoCellText(benchmark::State& state)
{
    UndoRedoInTurn(state, [](OpenDialog& open) {
        open.grid.BeginUndoGroup();
        open.grid.SetItemText(
            open.Middle(0), QStringLiteral("改过的备注"), SysCodeVisibleColumn(kColRemark, true));
        open.grid.EndUndoGroup();
    });
}
BENCHMARK(BM_UndoRedoCellText)->Apply(SizesAndShown)->Unit(benchmark::kMillisecond);

void BM_BareCellText(benchmark::State& state)
{
    BareGrid bare(int(state.range(0)), state.range(1) != 0);
    HTREEITEM row = bare.Middle(0);
    const int remark = SysCodeVisibleColumn(kColRemark, true);
    int i = 0;
    for (auto _ : state) {
        bare.grid.SetItemText(row, ++i % 2 ? QStringLiteral("改过的备注") : QStringLiteral("备注"), remark);
        bare.Repaint();
    }
    Shown(state, bare.grid);
}
BENCHMARK(BM_BareCellText)->Apply(SizesAndShown)->Unit(benchmark::kMillisecond);
} // namespace

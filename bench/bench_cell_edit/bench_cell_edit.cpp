// Committing a rename typed into a name cell, on a specialty of about 10,000 or
// 50,000 codes: Enter
// in the open editor, the clash look-up at the code's level, the rename recorded,
// the cell written and repainted. Compared with a bare grid of the same rows
// committing the same text from the same editor (no dialog judging it), and with
// the bare grid writing the text into the cell. Arguments: see SizesAndShown.
#include "BenchArgs.h"
#include "BenchProject.h"
#include "CTreeListCtrl.h"
#include "CTreeListEditBtn.h"
#include "QvKsDataMng.h"
#include "SysCodeColumns.h"
#include "SysCodeDlg.h"
#include "WinMessageBox.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QTest>
#include <benchmark/benchmark.h>

#include <algorithm>

namespace {
void ExpandAll(CTreeListCtrl& grid, HTREEITEM row)
{
    for (HTREEITEM c = grid.GetChildItem(row); c; c = grid.GetNextSiblingItem(c)) {
        grid.Expand(c, TVE_EXPAND);
        ExpandAll(grid, c);
    }
}

void Expand(CTreeListCtrl& grid, bool all)
{
    grid.SetRedraw(false);
    if (all)
        ExpandAll(grid, grid.GetRootItem());
    else
        grid.Expand(grid.GetChildItem(grid.GetRootItem()), TVE_EXPAND);
    grid.SetRedraw(true);
}

// The fifth code below the first top code: thirty siblings to look through.
HTREEITEM Worked(const CTreeListCtrl& grid)
{
    HTREEITEM row = grid.GetChildItem(grid.GetChildItem(grid.GetRootItem()));
    for (int i = 0; row && i < 5; ++i)
        row = grid.GetNextSiblingItem(row);
    return row;
}

// commit_ms: the Enter alone, up to the editor hidden (the rest is the repaint).
void CommitCounters(benchmark::State& state, const CTreeListCtrl& grid, qint64 commitNs)
{
    state.counters["commit_ms"] = double(commitNs) / 1e6 / double(std::max<int64_t>(1, state.iterations()));
    state.counters["rows_shown"] = grid.GetItemCount();
    state.counters["codes"] = BenchCodeCount(int(state.range(0)));
}

// A free name and back to the code's own: every commit is an accepted rename.
const QString kNewName = QStringLiteral("WL改名");

void BM_CommitRename(benchmark::State& state)
{
    int boxes = 0;
    SetMessageBoxHandler([&](const MessageBoxRequest&) {
        ++boxes;
        return IDOK;
    });
    SysCodeDlg dlg;
    dlg.m_strSpec = TheBenchProject().Spec(int(state.range(0)));
    dlg.OnInitDialog();
    dlg.resize(1200, 1600);
    dlg.show();
    CTreeListCtrl& grid = dlg.m_tree;
    Expand(grid, state.range(1) != 0);
    QApplication::processEvents();
    HTREEITEM row = Worked(grid);
    const QString names[2] = { kNewName, grid.GetItemText(row, 0) };
    int turn = 0;
    QElapsedTimer clock;
    clock.start();
    qint64 commitNs = 0;
    for (auto _ : state) {
        state.PauseTiming();
        if (!grid.EditSubItem(row, 0)) {
            state.SkipWithError("the name cell did not open");
            break;
        }
        QLineEdit* edit = grid.GetEditBtnCtrl()->GetEdit();
        edit->setText(names[turn++ % 2]);
        QApplication::processEvents();
        state.ResumeTiming();
        const qint64 start = clock.nsecsElapsed();
        QTest::keyClick(edit, Qt::Key_Return);
        commitNs += clock.nsecsElapsed() - start;
        QApplication::processEvents();
    }
    if (boxes != 0 || grid.GetActiveEditor())
        state.SkipWithError("a rename was refused");
    CommitCounters(state, grid, commitNs);
    SetMessageBoxHandler({});
}
BENCHMARK(BM_CommitRename)->Apply(SizesAndShown)->Unit(benchmark::kMillisecond);

// A grid holding the dialog's rows, expanded and shown the same way.
struct BareGrid
{
    SysCodeDlg source;
    CTreeListCtrl grid;

    BareGrid(int size, bool all)
    {
        source.m_strSpec = TheBenchProject().Spec(size);
        source.OnInitDialog();
        for (const SysCodeColumnInfo& c : SysCodeColumnSet(true))
            grid.InsertColumn(c.logical, c.title, c.format, c.width);
        grid.resize(1200, 1400);
        grid.SetRedraw(false);
        for (HTREEITEM r = source.m_tree.GetChildItem(source.m_tree.GetRootItem()); r;
             r = source.m_tree.GetNextSiblingItem(r))
            grid.CopyItem(r, TVI_ROOT, TVI_LAST, &source.m_tree);
        grid.SetRedraw(true);
        Expand(grid, all);
        grid.show();
        QApplication::processEvents();
    }
};

// The grid's own commit of the same typed name: Enter in the same editor, the cell
// written, the editor hidden and the grid repainted; no dialog to judge the name.
void BM_BareGridCommit(benchmark::State& state)
{
    BareGrid bare(int(state.range(0)), state.range(1) != 0);
    CTreeListCtrl& grid = bare.grid;
    HTREEITEM row = Worked(grid);
    const QString names[2] = { kNewName, grid.GetItemText(row, 0) };
    int turn = 0;
    QElapsedTimer clock;
    clock.start();
    qint64 commitNs = 0;
    for (auto _ : state) {
        state.PauseTiming();
        if (!grid.EditSubItem(row, 0)) {
            state.SkipWithError("the name cell did not open");
            break;
        }
        QLineEdit* edit = grid.GetEditBtnCtrl()->GetEdit();
        edit->setText(names[turn++ % 2]);
        QApplication::processEvents();
        state.ResumeTiming();
        const qint64 start = clock.nsecsElapsed();
        QTest::keyClick(edit, Qt::Key_Return);
        commitNs += clock.nsecsElapsed() - start;
        QApplication::processEvents();
    }
    if (grid.GetActiveEditor())
        state.SkipWithError("the edit did not end");
    CommitCounters(state, grid, commitNs);
}
BENCHMARK(BM_BareGridCommit)->Apply(SizesAndShown)->Unit(benchmark::kMillisecond);

void BM_BareSetItemText(benchmark::State& state)
{
    BareGrid bare(int(state.range(0)), state.range(1) != 0);
    CTreeListCtrl& grid = bare.grid;
    HTREEITEM row = Worked(grid);
    const QString names[2] = { kNewName, grid.GetItemText(row, 0) };
    int turn = 0;
    for (auto _ : state) {
        grid.SetItemText(row, names[turn++ % 2], 0);
        QApplication::processEvents();
    }
    state.counters["rows_shown"] = grid.GetItemCount();
    state.counters["codes"] = BenchCodeCount(int(state.range(0)));
}
BENCHMARK(BM_BareSetItemText)->Apply(SizesAndShown)->Unit(benchmark::kMillisecond);
} // namespace

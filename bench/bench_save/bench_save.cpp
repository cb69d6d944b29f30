// OK on a specialty of about 10,000 or 50,000 codes (the first argument) with one
// colour changed (checks, the save, the refresh of grid, bar and display window)
// against the store's bare save of the same tree, and against that save followed
// by the bare grid's refill with the same rows; and the refill of the grid from
// the tree just stored, as the save leaves it, against the bare refill.
#include "BenchBareGrid.h"
#include "BenchProject.h"
#include "CISysCode.h"
#include "CProj.h"
#include "CSysCodeData.h"
#include "CTreeListCtrl.h"
#include "CtrlId.h"
#include "QvKsDataMng.h"
#include "Resource.h"
#include "SysCodeColumns.h"
#include "SysCodeDlg.h"

#include <QAbstractButton>
#include <QApplication>
#include <benchmark/benchmark.h>

#include <memory>

namespace {
QString project(int size)
{
    static const bool colourByCode = [] {
        TheBenchProject();
        CProj().SetColorShowType(1);
        return true;
    }();
    (void)colourByCode;
    return TheBenchProject().Spec(size);
}

void Codes(benchmark::State& state)
{
    state.counters["codes"] = BenchCodeCount(int(state.range(0)));
}

void BM_OkWithOneColourChanged(benchmark::State& state)
{
    const QString spec = project(int(state.range(0)));
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto dlg = std::make_unique<SysCodeDlg>();
        dlg->m_strSpec = spec;
        dlg->OnInitDialog();
        CTreeListCtrl& grid = *qobject_cast<CTreeListCtrl*>(GetDlgItem(dlg.get(), IDC_TREE_SYSCODE));
        grid.SetItemBackColor(grid.GetItemFromRow(0), COLORREF(++round & 0xFF), kColColor);
        auto* ok = qobject_cast<QAbstractButton*>(GetDlgItem(dlg.get(), IDC_BTN_OK));
        state.ResumeTiming();
        ok->click();
        benchmark::DoNotOptimize(dlg->result());
        state.PauseTiming();
        dlg.reset();
        state.ResumeTiming();
    }
    Codes(state);
}
BENCHMARK(BM_OkWithOneColourChanged)->Arg(kBenchSmall)->Arg(kBenchLarge)->Unit(benchmark::kMillisecond);

// The anchor: the same tree handed to the store as it was read.
void BM_StoreBareSave(benchmark::State& state)
{
    const QString spec = project(int(state.range(0)));
    CSysCodeData root;
    CISysCode::GetSpecCodeInfos(root, spec);
    for (auto _ : state)
        benchmark::DoNotOptimize(CISysCode::SetSpecCodeInfos(root, spec));
    Codes(state);
}
BENCHMARK(BM_StoreBareSave)->Arg(kBenchSmall)->Arg(kBenchLarge)->Unit(benchmark::kMillisecond);

// A grid holding the rows of `root`, as the dialog's grid holds them before OK.
std::unique_ptr<CTreeListCtrl> FilledBareGrid(const CSysCodeData& root)
{
    auto grid = std::make_unique<CTreeListCtrl>();
    InsertBareColumns(*grid);
    FillBareGrid(*grid, root, TVI_ROOT);
    return grid;
}

// The anchor of OK: the bare save, then the bare grid's rows replaced by the same
// rows (the grid is not shown, as the dialog's is not once OK closes it).
void BM_BareSaveAndFill(benchmark::State& state)
{
    const QString spec = project(int(state.range(0)));
    CSysCodeData root;
    CISysCode::GetSpecCodeInfos(root, spec);
    for (auto _ : state) {
        state.PauseTiming();
        std::unique_ptr<CTreeListCtrl> grid = FilledBareGrid(root);
        state.ResumeTiming();
        benchmark::DoNotOptimize(CISysCode::SetSpecCodeInfos(root, spec));
        grid->DeleteAllItems();
        FillBareGrid(*grid, root, TVI_ROOT);
        state.PauseTiming();
        grid.reset();
        state.ResumeTiming();
    }
    Codes(state);
}
BENCHMARK(BM_BareSaveAndFill)->Arg(kBenchSmall)->Arg(kBenchLarge)->Unit(benchmark::kMillisecond);

struct RefillingDialog : SysCodeDlg
{
    using SysCodeDlg::FillRowsFromRoot;
};

// The grid refilled from the tree a save just stored, without reading it back.
void BM_FillAfterSave(benchmark::State& state)
{
    const QString spec = project(int(state.range(0)));
    CSysCodeData root;
    CISysCode::GetSpecCodeInfos(root, spec);
    RefillingDialog dlg;
    dlg.m_strSpec = spec;
    dlg.OnInitDialog();
    for (auto _ : state)
        dlg.FillRowsFromRoot(root);
    Codes(state);
}
BENCHMARK(BM_FillAfterSave)->Arg(kBenchSmall)->Arg(kBenchLarge)->Unit(benchmark::kMillisecond);

// Its anchor: the bare grid's rows replaced by the same rows.
void BM_BareRefill(benchmark::State& state)
{
    const QString spec = project(int(state.range(0)));
    CSysCodeData root;
    CISysCode::GetSpecCodeInfos(root, spec);
    std::unique_ptr<CTreeListCtrl> grid = FilledBareGrid(root);
    for (auto _ : state) {
        grid->DeleteAllItems();
        FillBareGrid(*grid, root, TVI_ROOT);
    }
    Codes(state);
}
BENCHMARK(BM_BareRefill)->Arg(kBenchSmall)->Arg(kBenchLarge)->Unit(benchmark::kMillisecond);
} // namespace

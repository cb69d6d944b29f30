// OK on a specialty of about 10,000 codes with one colour changed (checks, the
// save, the refresh of grid, bar and display window) against the store's bare
// save of the same tree.
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
const QString kSpec = QStringLiteral("电气");

void project()
{
    static const bool colourByCode = [] {
        TheBenchProject();
        CProj().SetColorShowType(1);
        return true;
    }();
    (void)colourByCode;
}

void BM_OkWithOneColourChanged(benchmark::State& state)
{
    project();
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto dlg = std::make_unique<SysCodeDlg>();
        dlg->m_strSpec = kSpec;
        dlg->OnInitDialog();
        CTreeListCtrl& grid = *qobject_cast<CTreeListCtrl*>(GetDlgItem(dlg.get(), IDC_TREE_SYSCODE));
        grid.SetItemBackColor(grid.GetItemFromRow(0), COLORREF(++round & 0xFF), kColColor);
        dlg->m_bModified = true;
        auto* ok = qobject_cast<QAbstractButton*>(GetDlgItem(dlg.get(), IDC_BTN_OK));
        state.ResumeTiming();
        ok->click();
        benchmark::DoNotOptimize(dlg->result());
        state.PauseTiming();
        dlg.reset();
        state.ResumeTiming();
    }
    state.counters["codes"] = kBenchCodes;
}
BENCHMARK(BM_OkWithOneColourChanged)->Unit(benchmark::kMillisecond);

// The anchor: the same tree handed to the store as it was read.
void BM_StoreBareSave(benchmark::State& state)
{
    project();
    CSysCodeData root;
    CISysCode::GetSpecCodeInfos(root, kSpec);
    for (auto _ : state)
        benchmark::DoNotOptimize(CISysCode::SetSpecCodeInfos(root, kSpec));
}
BENCHMARK(BM_StoreBareSave)->Unit(benchmark::kMillisecond);
} // namespace

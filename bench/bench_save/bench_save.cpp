// OK on a specialty of about 10,000 codes with one colour changed (checks, the
// save, the refresh of grid, bar and display window) against the store's bare
// save of the same tree.
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
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <memory>

namespace {
constexpr int kTop = 10;
constexpr int kMiddle = 30; // per top code
constexpr int kLeaves = 32; // per middle code: 10 + 300 + 9,600 = 9,910 codes
const QString kSpec = QStringLiteral("电气");

void addCodes(CSysCodeData& parent, const QString& prefix, int count, int& n, int depth)
{
    for (int i = 0; i < count; ++i) {
        auto* node = new CSysCodeData;
        node->SetNodeName(prefix + QString::number(i));
        node->SetMfcColor(COLORREF(++n * 2654435761u) & 0xFFFFFF);
        node->SetLineWidth(30);
        node->SetLineStyle(QStringLiteral("按字符"));
        node->SetLineString(QStringLiteral("WL"));
        node->SetDescribe(QStringLiteral("备注%1").arg(n));
        int counter = 0;
        parent.AddDataToChild(counter, node, false);
        if (depth == 0)
            addCodes(*node, QStringLiteral("WL"), kMiddle, n, 1);
        else if (depth == 1)
            addCodes(*node, QStringLiteral("回路"), kLeaves, n, 2);
    }
}

struct BenchProject
{
    QTemporaryDir dir;

    BenchProject()
    {
        QvKsDataMng::CreateProject(dir.path(), QStringLiteral("基准"));
        QvKsDataMng::RunScript(QStringLiteral("INSERT INTO spec(spec_id, name, ord) VALUES (3, '电气', 1);"
                                              "UPDATE meta SET value = '电气' WHERE key = 'current_spec';"));
        CProj().SetColorShowType(1);
        CSysCodeData root;
        int n = 0;
        addCodes(root, QStringLiteral("系统"), kTop, n, 0);
        CISysCode::SetSpecCodeInfos(root, kSpec);
    }
};

BenchProject& project()
{
    static BenchProject p;
    return p;
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
    state.counters["codes"] = kTop + kTop * kMiddle + kTop * kMiddle * kLeaves;
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

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "default.warning=false");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    QvKsDataMng::CloseProject();
    return 0;
}

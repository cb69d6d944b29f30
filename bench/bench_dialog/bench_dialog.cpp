// Opening the management dialog on a specialty of about 10,000 or 50,000 codes (the
// first argument; store read, fill and first paint), refilling it as a specialty
// switch does, the fill that takes in a file of the same codes and its undo, against
// filling the bare grid with the same rows (and, for comparison, the whole import
// with its merge); the opening with a working drawing of 20 MB and of 100 MB, whose
// scan waits for the first question about a code's use, and that opening with its
// first question; and the usage scan of ten other floors' drawings of about 20 MB
// each (pipes sharing forty codes, or each with its own) against reading the same
// files line by line. With --engine= the project's store is a server's
// (BenchStoreEngine.h).
#include "BenchBareGrid.h"
#include "BenchProject.h"
#include "BenchStoreEngine.h"
#include "CISysCode.h"
#include "CSysCodeData.h"
#include "CTreeListCtrl.h"
#include "CtrlId.h"
#include "DxfWriter.h"
#include "QvKsDataMng.h"
#include "Resource.h"
#include "SysCodeColumns.h"
#include "SysCodeDlg.h"
#include "SysCodeUndoGroup.h"
#include "ZcDbDatabase.h"
#include "ZcDbHostApplicationServices.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <vector>

namespace {
constexpr int kFloors = 10;
constexpr qint64 kFloorBytes = 20LL * 1024 * 1024;

// The project every benchmark works on, made once.
struct DialogBenchProject
{
    QTemporaryDir dir;
    std::map<int, CSysCodeData> trees;
    qint64 floorBytes = 0;
    bool floorsOwnCodes = false;

    DialogBenchProject()
    {
        // On a server that cannot be had there is nothing to measure: the run ends
        // saying why, as a skipped run.
        if (QString why; !CreateBenchProject(dir.path(), QStringLiteral("基准"), why)) {
            std::fprintf(stderr, "bench_dialog: skipped: %s\n", qPrintable(why));
            std::exit(0);
        }
        QString sql = BenchProjectSql();
        for (int f = 1; f <= kFloors; ++f)
            sql += QStringLiteral(
                "INSERT INTO floor(floor_id, name, ord, dwg_file) VALUES (%1, 'F%1', %1, 'F%1.dxf');")
                       .arg(f);
        QvKsDataMng::RunScript(sql);
    }

    // The specialty of a size, stored on first use.
    QString spec(int size)
    {
        tree(size);
        return BenchSpec(size);
    }

    // The tree of a size as the store gives it back.
    const CSysCodeData& tree(int size)
    {
        auto [it, added] = trees.try_emplace(size);
        if (added) {
            StoreBenchSpec(size);
            CISysCode::GetSpecCodeInfos(it->second, BenchSpec(size));
        }
        return it->second;
    }

    // The other floors' drawings, about 20 MB each: with `ownCodes` every pipe
    // carries a code of its own, else the pipes share forty codes as on a real floor.
    // Written again when the other kind is asked for.
    void writeFloors(bool ownCodes)
    {
        if (floorBytes > 0 && floorsOwnCodes == ownCodes)
            return;
        floorBytes = 0;
        floorsOwnCodes = ownCodes;
        for (int f = 1; f <= kFloors; ++f) {
            QFile file(dir.filePath(QStringLiteral("F%1.dxf").arg(f)));
            file.open(QIODevice::WriteOnly | QIODevice::Truncate);
            DxfWriter writer(&file);
            writer.registerApp(QStringLiteral("QVKS"));
            for (int i = 0; file.size() < kFloorBytes; ++i) {
                const double y = i * 10.0;
                writer.addProductEntity(QStringLiteral("3\\%1").arg(ownCodes ? f * 100000 + i : 1 + i % 40),
                    { ZcGePoint3d(0, y, 0), ZcGePoint3d(500, y, 0), ZcGePoint3d(500, y + 5, 0) });
            }
            writer.finish();
            file.close();
            floorBytes += QFileInfo(file.fileName()).size();
        }
    }
};

DialogBenchProject& project()
{
    static DialogBenchProject p;
    return p;
}

// Opens the dialog on the specialty of `size`, shows it and paints it once; with
// `firstLookUp`, then asks whether a code is used, as a delete does first. The
// dialog is hidden before it goes, as closing it does; like the bare grid, it goes
// with its rows inside the timed loop.
void openDialog(benchmark::State& state, int size, bool firstLookUp)
{
    const QString spec = project().spec(size);
    for (auto _ : state) {
        SysCodeDlg dlg;
        dlg.m_strSpec = spec;
        dlg.OnInitDialog();
        dlg.show();
        QApplication::processEvents();
        dlg.grab();
        benchmark::DoNotOptimize(dlg.m_tree.GetItemCount());
        if (firstLookUp)
            benchmark::DoNotOptimize(dlg.IsCodeIndexUsed(QStringLiteral("3\\1")));
        dlg.hide();
    }
    state.counters["codes"] = BenchCodeCount(size);
}

void BM_OpenDialog(benchmark::State& state)
{
    openDialog(state, int(state.range(0)), false);
}
BENCHMARK(BM_OpenDialog)->Arg(kBenchSmall)->Arg(kBenchLarge)->Unit(benchmark::kMillisecond);

// A working drawing of about `megabytes` MB whose pipes use the specialty's codes,
// read once and kept for the runs.
ZcDbDatabase* workingDrawing(int megabytes)
{
    static std::map<int, std::unique_ptr<ZcDbDatabase>> drawings;
    std::unique_ptr<ZcDbDatabase>& db = drawings[megabytes];
    if (db)
        return db.get();
    const QString path = project().dir.filePath(QStringLiteral("working%1.dxf").arg(megabytes));
    {
        QFile file(path);
        file.open(QIODevice::WriteOnly | QIODevice::Truncate);
        DxfWriter writer(&file);
        writer.registerApp(QStringLiteral("QVKS"));
        for (int i = 0; file.size() < qint64(megabytes) * 1024 * 1024; ++i) {
            const double y = i * 10.0;
            writer.addProductEntity(QStringLiteral("3\\%1").arg(i % 9910 + 1),
                { ZcGePoint3d(0, y, 0), ZcGePoint3d(500, y, 0), ZcGePoint3d(500, y + 5, 0) });
        }
        writer.finish();
    }
    db = std::make_unique<ZcDbDatabase>(false, true);
    db->readDwgFile(path);
    QFile::remove(path);
    return db.get();
}

// Opening as a drafter does it: with a working drawing, whose model space the
// dialog scans for the codes in use when it is first asked.
void openWithDrawing(benchmark::State& state, bool firstLookUp)
{
    project();
    zcdbHostApplicationServices()->setWorkingDatabase(workingDrawing(int(state.range(0))));
    openDialog(state, kBenchSmall, firstLookUp);
    zcdbHostApplicationServices()->setWorkingDatabase(nullptr);
    state.counters["MB"] = double(state.range(0));
}

void BM_OpenDialogWithDrawing(benchmark::State& state)
{
    openWithDrawing(state, false);
}
BENCHMARK(BM_OpenDialogWithDrawing)->Arg(20)->Arg(100)->Unit(benchmark::kMillisecond);

// The same opening followed by the first question about a code's use: the working
// drawing's scan, left out of the opening, is here.
void BM_OpenDialogWithDrawingFirstLookUp(benchmark::State& state)
{
    openWithDrawing(state, true);
}
BENCHMARK(BM_OpenDialogWithDrawingFirstLookUp)->Arg(100)->Unit(benchmark::kMillisecond);

void BM_BareGridSameRows(benchmark::State& state)
{
    const CSysCodeData& tree = project().tree(int(state.range(0)));
    QSize gridSize;
    {
        SysCodeDlg probe;
        gridSize = GetDlgItem(&probe, IDC_TREE_SYSCODE)->size();
    }
    for (auto _ : state) {
        CTreeListCtrl grid;
        grid.resize(gridSize);
        InsertBareColumns(grid);
        FillBareGrid(grid, tree, TVI_ROOT);
        grid.show();
        QApplication::processEvents();
        grid.grab();
        benchmark::DoNotOptimize(grid.GetItemCount());
    }
    state.counters["codes"] = BenchCodeCount(int(state.range(0)));
}
BENCHMARK(BM_BareGridSameRows)->Arg(kBenchSmall)->Arg(kBenchLarge)->Unit(benchmark::kMillisecond);

// The dialog open and shown on the specialty of a size; the import's steps reached.
struct ShownDialog : SysCodeDlg
{
    using SysCodeDlg::FillRowsFromRoot;
    using SysCodeDlg::MergeImported;
    using SysCodeDlg::PreSaveForExchange;

    explicit ShownDialog(const QString& spec)
    {
        m_strSpec = spec;
        OnInitDialog();
        show();
        QApplication::processEvents();
    }
    // What the event loop does next, and the grid's picture as the bare fill takes it.
    void repaint()
    {
        QApplication::processEvents();
        m_tree.grab();
    }
};

// Refilling the grid of an open dialog as a specialty switch does (store read,
// rows, repaint).
void BM_DialogRefill(benchmark::State& state)
{
    const int size = int(state.range(0));
    ShownDialog dlg(project().spec(size));
    for (auto _ : state) {
        dlg.FillSysCodeTree(dlg.m_strSpec);
        dlg.repaint();
    }
    state.counters["codes"] = BenchCodeCount(size);
}
BENCHMARK(BM_DialogRefill)->Arg(kBenchSmall)->Arg(kBenchLarge)->Unit(benchmark::kMillisecond);

// The fill an import ends with: the grid's rows replaced by the merged codes as one
// step to undo, and the repaint.
void BM_ImportFill(benchmark::State& state)
{
    const int size = int(state.range(0));
    ShownDialog dlg(project().spec(size));
    const CSysCodeData& merged = project().tree(size);
    for (auto _ : state) {
        {
            const SysCodeUndoGroup step(dlg);
            dlg.FillRowsFromRoot(merged);
        }
        dlg.repaint();
        state.PauseTiming();
        dlg.m_tree.ClearUndo();
        state.ResumeTiming();
    }
    state.counters["codes"] = BenchCodeCount(size);
}
BENCHMARK(BM_ImportFill)->Arg(kBenchSmall)->Arg(kBenchLarge)->Unit(benchmark::kMillisecond);

// The whole import of a file that holds the specialty's own codes, after it was
// read: the grid's codes as records, the merge, then that fill.
void BM_ImportMergeAndFill(benchmark::State& state)
{
    const int size = int(state.range(0));
    ShownDialog dlg(project().spec(size));
    CSysCodeData imported;
    MakeBenchCodeTree(imported, size);
    for (auto _ : state) {
        CSysCodeData root;
        dlg.PreSaveForExchange(root);
        dlg.MergeImported(root, imported);
        dlg.repaint();
        state.PauseTiming();
        dlg.m_tree.ClearUndo();
        state.ResumeTiming();
    }
    state.counters["codes"] = BenchCodeCount(size);
}
BENCHMARK(BM_ImportMergeAndFill)->Arg(kBenchSmall)->Arg(kBenchLarge)->Unit(benchmark::kMillisecond);

// Ctrl+Z and Ctrl+Y in turn after such an import: every row goes back and comes
// again, each time with the repaint.
void BM_UndoRedoImport(benchmark::State& state)
{
    const int size = int(state.range(0));
    ShownDialog dlg(project().spec(size));
    CSysCodeData imported;
    MakeBenchCodeTree(imported, size);
    CSysCodeData root;
    dlg.PreSaveForExchange(root);
    dlg.MergeImported(root, imported);
    dlg.repaint();
    bool undo = true;
    for (auto _ : state) {
        if (!dlg.ReplayUndo(undo)) {
            state.SkipWithError("nothing to replay");
            break;
        }
        dlg.repaint();
        undo = !undo;
    }
    state.counters["codes"] = BenchCodeCount(size);
}
BENCHMARK(BM_UndoRedoImport)->Arg(kBenchSmall)->Arg(kBenchLarge)->Unit(benchmark::kMillisecond);

// The store read alone, part of every opening.
void BM_StoreRead(benchmark::State& state)
{
    const QString spec = project().spec(int(state.range(0)));
    for (auto _ : state) {
        CSysCodeData root;
        benchmark::DoNotOptimize(CISysCode::GetSpecCodeInfos(root, spec));
    }
}
BENCHMARK(BM_StoreRead)->Arg(kBenchSmall)->Arg(kBenchLarge)->Unit(benchmark::kMillisecond);

// Argument 0: the floors' pipes share forty codes; 1: every pipe has its own.
void BM_ScanOtherFloors(benchmark::State& state)
{
    project().writeFloors(state.range(0) != 0);
    for (auto _ : state) {
        SysCodeDlg dlg;
        dlg.m_bOtherFloorsScanned = false;
        dlg.ScanOtherFloors();
        benchmark::DoNotOptimize(dlg.m_usedCodeIndexes.size());
    }
    state.SetBytesProcessed(state.iterations() * project().floorBytes);
    state.counters["MB"] = double(project().floorBytes) / (1024 * 1024);
}
BENCHMARK(BM_ScanOtherFloors)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(2);

// The honest bare operation on the same ten files: each read once, line by line,
// keeping nothing.
void BM_LineScanOtherFloors(benchmark::State& state)
{
    project().writeFloors(state.range(0) != 0);
    std::vector<char> buffer(1 << 20);
    for (auto _ : state) {
        std::size_t lines = 0;
        for (int f = 1; f <= kFloors; ++f) {
            QFile file(project().dir.filePath(QStringLiteral("F%1.dxf").arg(f)));
            if (!file.open(QIODevice::ReadOnly))
                continue;
            for (qint64 got; (got = file.read(buffer.data(), qint64(buffer.size()))) > 0;) {
                for (const char *p = buffer.data(), *end = p + got;
                     (p = static_cast<const char*>(std::memchr(p, '\n', std::size_t(end - p)))); ++p)
                    ++lines;
            }
        }
        benchmark::DoNotOptimize(lines);
    }
    state.SetBytesProcessed(state.iterations() * project().floorBytes);
}
BENCHMARK(BM_LineScanOtherFloors)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(3);
} // namespace

// Opening the management dialog on a specialty of about 10,000 codes (store read,
// fill and first paint) against filling the bare grid with the same rows; the same
// opening with a working drawing of 20 MB and of 100 MB, whose scan waits for the
// first question about a code's use, and that opening with its first question;
// and the usage scan of ten other floors' drawings of about 20 MB each (pipes sharing
// forty codes, or each with its own) against reading the same files line by line.
#include "BenchProject.h"
#include "CISysCode.h"
#include "CSysCodeData.h"
#include "CTreeListCtrl.h"
#include "CtrlId.h"
#include "DxfWriter.h"
#include "QvKsDataMng.h"
#include "Resource.h"
#include "SysCodeColumns.h"
#include "SysCodeDlg.h"
#include "ZcDbDatabase.h"
#include "ZcDbHostApplicationServices.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

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
    CSysCodeData tree;
    qint64 floorBytes = 0;
    bool floorsOwnCodes = false;

    DialogBenchProject()
    {
        QvKsDataMng::CreateProject(dir.path(), QStringLiteral("基准"));
        QString sql = QStringLiteral("INSERT INTO spec(spec_id, name, ord) VALUES (3, '电气', 1);"
                                     "UPDATE meta SET value = '电气' WHERE key = 'current_spec';"
                                     "UPDATE meta SET value = 'F0' WHERE key = 'current_floor';");
        for (int f = 0; f <= kFloors; ++f)
            sql += QStringLiteral(
                "INSERT INTO floor(floor_id, name, ord, dwg_file) VALUES (%1, 'F%1', %1, 'F%1.dxf');")
                       .arg(f);
        QvKsDataMng::RunScript(sql);
        CSysCodeData root;
        MakeBenchCodeTree(root);
        CISysCode::SetSpecCodeInfos(root, QStringLiteral("电气"));
        CISysCode::GetSpecCodeInfos(tree, QStringLiteral("电气"));
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

void fillBareGrid(CTreeListCtrl& grid, const CSysCodeData& node, HTREEITEM parent)
{
    for (const CSysCodeData* child : node.GetChildren()) {
        const QStringList texts = SysCodeCellTexts(*child, true);
        HTREEITEM row = grid.InsertItem(texts.at(0), parent);
        for (int c = 0; c < kSysCodeColumnCount; ++c) {
            if (c > 0)
                grid.SetItemText(row, texts.at(c), c);
            grid.SetItemBackColor(row, c == kColColor ? child->GetMfcColor() : kSysCodeGridBkColor, c);
        }
        grid.SetItemColor(row, child->GetMfcColor(), kColColor);
        fillBareGrid(grid, *child, row);
    }
}

// Opens the dialog, shows it and paints it once; with `firstLookUp`, then asks
// whether a code is used, as a delete does first.
void openDialog(benchmark::State& state, bool firstLookUp)
{
    for (auto _ : state) {
        SysCodeDlg dlg;
        dlg.m_strSpec = QStringLiteral("电气");
        dlg.OnInitDialog();
        dlg.show();
        QApplication::processEvents();
        dlg.grab();
        benchmark::DoNotOptimize(dlg.m_tree.GetItemCount());
        if (firstLookUp)
            benchmark::DoNotOptimize(dlg.IsCodeIndexUsed(QStringLiteral("3\\1")));
    }
    state.counters["codes"] = 9910;
}

void BM_OpenDialog(benchmark::State& state)
{
    project();
    openDialog(state, false);
}
BENCHMARK(BM_OpenDialog)->Unit(benchmark::kMillisecond);

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
    openDialog(state, firstLookUp);
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
    const CSysCodeData& tree = project().tree;
    QSize gridSize;
    {
        SysCodeDlg probe;
        gridSize = GetDlgItem(&probe, IDC_TREE_SYSCODE)->size();
    }
    for (auto _ : state) {
        CTreeListCtrl grid;
        grid.resize(gridSize);
        for (const SysCodeColumnInfo& c : SysCodeColumnSet(true))
            grid.InsertColumn(c.logical, c.title, c.format, c.width);
        fillBareGrid(grid, tree, TVI_ROOT);
        grid.show();
        QApplication::processEvents();
        grid.grab();
        benchmark::DoNotOptimize(grid.GetItemCount());
    }
}
BENCHMARK(BM_BareGridSameRows)->Unit(benchmark::kMillisecond);

// Refilling the grid of an open dialog (store read and rows).
void BM_DialogRefill(benchmark::State& state)
{
    project();
    SysCodeDlg dlg;
    dlg.m_strSpec = QStringLiteral("电气");
    dlg.OnInitDialog();
    for (auto _ : state)
        dlg.FillSysCodeTree(QStringLiteral("电气"));
}
BENCHMARK(BM_DialogRefill)->Unit(benchmark::kMillisecond);

// The store read alone, part of every opening.
void BM_StoreRead(benchmark::State& state)
{
    project();
    for (auto _ : state) {
        CSysCodeData root;
        benchmark::DoNotOptimize(CISysCode::GetSpecCodeInfos(root, QStringLiteral("电气")));
    }
}
BENCHMARK(BM_StoreRead)->Unit(benchmark::kMillisecond);

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

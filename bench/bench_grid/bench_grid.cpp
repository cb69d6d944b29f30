// The grid filled with 10,000 items in three levels and ten columns and shown,
// against a plain QTreeView over a QStandardItemModel with the same texts; and the
// row look-ups on that tree.
#include "CTreeListCtrl.h"

#include <QApplication>
#include <QStandardItemModel>
#include <QTreeView>
#include <benchmark/benchmark.h>

#include <memory>

namespace {
constexpr int kColumns = 10;
constexpr int kTop = 10;
constexpr int kMiddle = 30; // per top item
constexpr int kLeaves = 32; // per middle item: 10 + 300 + 9,600 = 9,910 items ≈ 10,000

QString cellText(int id, int column)
{
    return QStringLiteral("项%1-%2").arg(id).arg(column);
}

void fillGrid(CTreeListCtrl& grid)
{
    for (int c = 0; c < kColumns; ++c)
        grid.InsertColumn(c, QStringLiteral("列%1").arg(c), c == 0 ? LVCFMT_LEFT : LVCFMT_CENTER, 80);
    int id = 0;
    const auto fillRow = [&](HTREEITEM item) {
        for (int c = 1; c < kColumns; ++c)
            grid.SetItemText(item, cellText(id, c), c);
        ++id;
    };
    for (int t = 0; t < kTop; ++t) {
        HTREEITEM top = grid.InsertItem(cellText(id, 0));
        fillRow(top);
        for (int m = 0; m < kMiddle; ++m) {
            HTREEITEM middle = grid.InsertItem(cellText(id, 0), top);
            fillRow(middle);
            for (int l = 0; l < kLeaves; ++l)
                fillRow(grid.InsertItem(cellText(id, 0), middle));
            grid.Expand(middle, TVE_EXPAND);
        }
        grid.Expand(top, TVE_EXPAND);
    }
}

void fillStandardModel(QStandardItemModel& model)
{
    model.setColumnCount(kColumns);
    int id = 0;
    const auto row = [&]() {
        QList<QStandardItem*> items;
        for (int c = 0; c < kColumns; ++c)
            items << new QStandardItem(cellText(id, c));
        ++id;
        return items;
    };
    for (int t = 0; t < kTop; ++t) {
        QList<QStandardItem*> top = row();
        for (int m = 0; m < kMiddle; ++m) {
            QList<QStandardItem*> middle = row();
            for (int l = 0; l < kLeaves; ++l)
                middle.first()->appendRow(row());
            top.first()->appendRow(middle);
        }
        model.appendRow(top);
    }
}

void BM_GridFillAndShow(benchmark::State& state)
{
    for (auto _ : state) {
        CTreeListCtrl grid;
        grid.resize(900, 600);
        fillGrid(grid);
        grid.show();
        QApplication::processEvents();
        grid.grab(); // the first paint
        benchmark::DoNotOptimize(grid.GetItemCount());
    }
}
BENCHMARK(BM_GridFillAndShow)->Unit(benchmark::kMillisecond);

void BM_QTreeViewFillAndShow(benchmark::State& state)
{
    for (auto _ : state) {
        QStandardItemModel model;
        fillStandardModel(model);
        QTreeView view;
        view.resize(900, 600);
        view.setUniformRowHeights(true);
        view.setModel(&model);
        view.expandAll();
        view.show();
        QApplication::processEvents();
        view.grab();
        benchmark::DoNotOptimize(model.rowCount());
    }
}
BENCHMARK(BM_QTreeViewFillAndShow)->Unit(benchmark::kMillisecond);

CTreeListCtrl& filledGrid()
{
    static std::unique_ptr<CTreeListCtrl> grid = [] {
        auto g = std::make_unique<CTreeListCtrl>();
        fillGrid(*g);
        return g;
    }();
    return *grid;
}

void BM_GetRowFromItem(benchmark::State& state)
{
    CTreeListCtrl& grid = filledGrid();
    std::vector<HTREEITEM> items;
    const int rows = grid.GetItemCount();
    for (int i = 0; i < 10000; ++i)
        items.push_back(grid.GetItemFromRow(int((i * 7919LL) % rows)));
    for (auto _ : state) {
        for (HTREEITEM item : items)
            benchmark::DoNotOptimize(grid.GetRowFromItem(item));
    }
    state.SetItemsProcessed(state.iterations() * 10000);
}
BENCHMARK(BM_GetRowFromItem);

void BM_GetItemFromRow(benchmark::State& state)
{
    CTreeListCtrl& grid = filledGrid();
    const int rows = grid.GetItemCount();
    for (auto _ : state) {
        for (int i = 0; i < 10000; ++i)
            benchmark::DoNotOptimize(grid.GetItemFromRow(int((i * 7919LL) % rows)));
    }
    state.SetItemsProcessed(state.iterations() * 10000);
}
BENCHMARK(BM_GetItemFromRow);

// Look-ups right after a change: the first one pays for the rebuild of the row order.
void BM_GetRowFromItemAfterExpand(benchmark::State& state)
{
    CTreeListCtrl& grid = filledGrid();
    HTREEITEM top = grid.GetChildItem(grid.GetRootItem());
    HTREEITEM last = grid.GetItemFromRow(grid.GetItemCount() - 1);
    for (auto _ : state) {
        grid.Expand(top, TVE_TOGGLE);
        benchmark::DoNotOptimize(grid.GetRowFromItem(last));
    }
}
BENCHMARK(BM_GetRowFromItemAfterExpand)->Unit(benchmark::kMicrosecond);
} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

// The store and ".scn" files at 10,000 codes, each against the bare library doing
// the same work in the same run:
//   SaveTree   (SetSpecCodeInfos, every code changed since the last save)
//                                        vs BareReplace (DELETE + 10,000 INSERTs, one transaction)
//   SaveTreeTenthChanged (1,000 of the codes changed), SaveTreeUnchanged (the same
//              codes again)               vs SaveTree
//   LoadTree   (GetSpecCodeInfos)        vs BareSelect  (SELECT in key order, numbers and text read out)
//   ImportScn  (ImportData + merge)      vs BareXmlRead (QXmlStreamReader over the file, attributes read)
//   ImportScnIntoFullSpec (the same into a specialty holding those codes) vs BareXmlRead
//   SaveTreeChecked (SaveTree that first checks nobody changed the codes) vs SaveTree
//   ThreeWayMerge (10,000 codes, 1,000 changed on each side) vs LoadTree
//
// The engine (BenchStoreEngine.h): the store file (default), --engine=server for a
// server started for the run, or --engine=postgresql://USER@HOST:PORT/DB for an
// empty database of one. The bare-library rows always use SQLite.
#include "BenchStoreEngine.h"
#include "CISysCode.h"
#include "CSysCodeData.h"
#include "QvKsDataMng.h"
#include "SysCodeMerge.h"
#include "SysCodeThreeWayMerge.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

namespace {

const QString kSpec = QStringLiteral("电气");

// 16 top-level codes, 24 under each, 25 under each of those: 10,000 codes.
void buildTree(CSysCodeData& root)
{
    int unused = 0;
    for (int a = 0; a < 16; ++a) {
        auto* top = new CSysCodeData;
        top->SetNodeName(QStringLiteral("系统%1").arg(a));
        root.AddDataToChild(unused, top, false);
        for (int b = 0; b < 24; ++b) {
            auto* mid = new CSysCodeData;
            mid->SetNodeName(QStringLiteral("回路%1").arg(b));
            top->AddDataToChild(unused, mid, false);
            for (int c = 0; c < 25; ++c) {
                auto* leaf = new CSysCodeData;
                leaf->SetNodeName(QStringLiteral("WL%1-%2").arg(b).arg(c));
                leaf->SetMfcColor(COLORREF(c * 40503));
                leaf->SetLineWidth(0.25 * c);
                leaf->SetAlpha(c);
                leaf->SetLineStyle(QStringLiteral("QVDash __ __ __ __"));
                leaf->SetHorLayingMode(QStringLiteral("沿顶板暗敷"));
                leaf->SetVerLayingMode(QStringLiteral("暗敷在墙内"));
                leaf->SetAddedMsg(QStringLiteral("电气\\管线\\导线·导管\\BV-2.5"));
                leaf->SetDescribe(QStringLiteral("支路"));
                mid->AddDataToChild(unused, leaf, false);
            }
        }
    }
}

// A copy of `tree` whose every `step`-th code has a description of its own.
CSysCodeData describedAnew(const CSysCodeData& tree, int step)
{
    CSysCodeData copy = tree;
    std::vector<CSysCodeData*> stack(copy.GetChildren().begin(), copy.GetChildren().end());
    for (int n = 0; !stack.empty(); ++n) {
        CSysCodeData* node = stack.back();
        stack.pop_back();
        if (n % step == 0)
            node->SetDescribe(QStringLiteral("改%1").arg(n));
        stack.insert(stack.end(), node->GetChildren().begin(), node->GetChildren().end());
    }
    return copy;
}

struct Fixture
{
    QTemporaryDir dir;
    CSysCodeData tree;
    CSysCodeData allChanged; // every code's description differs from the tree's
    CSysCodeData tenthChanged; // every tenth code's does
    QString scn;
    sqlite3* bare = nullptr;

    Fixture()
    {
        if (QString why; !CreateBenchProject(dir.path() + QStringLiteral("/p"), QStringLiteral("bench"), why))
            qFatal("bench_store: %s", qPrintable(why));
        QvKsDataMng::RunScript(
            QStringLiteral("INSERT INTO spec(spec_id, name, ord) VALUES(3, '电气', 1), (6, '弱电', 2)"));
        buildTree(tree);
        CISysCode::SetSpecCodeInfos(tree, kSpec); // numbers the codes
        allChanged = describedAnew(tree, 1);
        tenthChanged = describedAnew(tree, 10);
        scn = dir.path() + QStringLiteral("/tree.scn");
        tree.ExportData(scn, kSpec);
        // The same table, indices and pragmas as the store's.
        sqlite3_open((dir.path() + QStringLiteral("/bare.db")).toUtf8().constData(), &bare);
        sqlite3_exec(bare,
            "PRAGMA foreign_keys=ON; CREATE TABLE sys_code(spec_id INTEGER NOT NULL, node_index INTEGER NOT "
            "NULL, parent_index INTEGER NOT NULL, ord INTEGER NOT NULL, name TEXT NOT NULL, color INTEGER "
            "NOT "
            "NULL, line_width REAL NOT NULL, alpha INTEGER NOT NULL, line_style TEXT NOT NULL, line_string "
            "TEXT NOT NULL, hor_laying TEXT NOT NULL, ver_laying TEXT NOT NULL, added_msg TEXT NOT NULL, "
            "describe TEXT NOT NULL, PRIMARY KEY(spec_id, node_index), UNIQUE(spec_id, parent_index, "
            "name)) WITHOUT ROWID;",
            nullptr, nullptr, nullptr);
    }
    ~Fixture()
    {
        sqlite3_close(bare);
        QvKsDataMng::CloseProject();
    }
};

Fixture& fixture()
{
    static Fixture f;
    return f;
}

void bindText(sqlite3_stmt* stmt, int i, const QString& text)
{
    const QByteArray utf8 = text.toUtf8();
    sqlite3_bind_text(stmt, i, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
}

void bareReplace(sqlite3* db, const CSysCodeData& root)
{
    sqlite3_exec(db, "BEGIN IMMEDIATE; DELETE FROM sys_code WHERE spec_id = 3;", nullptr, nullptr, nullptr);
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v2(db, "INSERT INTO sys_code VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?)", -1, &stmt, nullptr);
    std::vector<std::pair<const CSysCodeData*, int>> stack { { &root, 0 } };
    while (!stack.empty()) {
        auto [node, parent] = stack.back();
        stack.pop_back();
        int ord = 0;
        for (const CSysCodeData* c : node->GetChildren()) {
            sqlite3_bind_int(stmt, 1, 3);
            sqlite3_bind_int(stmt, 2, c->GetNodeIndex());
            sqlite3_bind_int(stmt, 3, parent);
            sqlite3_bind_int(stmt, 4, ord++);
            bindText(stmt, 5, c->GetNodeName());
            sqlite3_bind_int64(stmt, 6, c->GetMfcColor());
            sqlite3_bind_double(stmt, 7, c->GetLineWidth());
            sqlite3_bind_int(stmt, 8, c->GetAlpha());
            bindText(stmt, 9, c->GetLineStyle());
            bindText(stmt, 10, c->GetLineString());
            bindText(stmt, 11, c->GetHorLayingMode());
            bindText(stmt, 12, c->GetVerLayingMode());
            bindText(stmt, 13, c->GetAddedMsg());
            bindText(stmt, 14, c->GetDescribe());
            sqlite3_step(stmt);
            sqlite3_reset(stmt);
            stack.emplace_back(c, c->GetNodeIndex());
        }
    }
    sqlite3_finalize(stmt);
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
}

// Saves alternately the tree and `other`, so that every save stores what `other`
// changes against the tree; the store starts with the tree.
void saveAlternately(benchmark::State& state, CSysCodeData& other)
{
    Fixture& f = fixture();
    if (!CISysCode::SetSpecCodeInfos(f.tree, kSpec))
        state.SkipWithError("save failed");
    bool toOther = true;
    for (auto _ : state) {
        if (!CISysCode::SetSpecCodeInfos(toOther ? other : f.tree, kSpec))
            state.SkipWithError("save failed");
        toOther = !toOther;
    }
    state.SetItemsProcessed(state.iterations() * 10000);
}

void BM_SaveTree(benchmark::State& state)
{
    saveAlternately(state, fixture().allChanged);
}

// A dialog's usual save: some of the codes edited.
void BM_SaveTreeTenthChanged(benchmark::State& state)
{
    saveAlternately(state, fixture().tenthChanged);
}

void BM_SaveTreeUnchanged(benchmark::State& state)
{
    saveAlternately(state, fixture().tree);
}

// What a dialog's OK pays for knowing that nobody stored the codes since it read them.
void BM_SaveTreeChecked(benchmark::State& state)
{
    Fixture& f = fixture();
    quint64 stamp = 0;
    CSysCodeData read;
    CISysCode::SetSpecCodeInfos(f.tree, kSpec);
    CISysCode::GetSpecCodeInfos(read, kSpec, stamp);
    bool toOther = true;
    for (auto _ : state) {
        if (CISysCode::SetSpecCodeInfos(toOther ? f.allChanged : f.tree, kSpec, stamp)
            != CISysCode::SaveResult::Saved)
            state.SkipWithError("save failed");
        toOther = !toOther;
    }
    state.SetItemsProcessed(state.iterations() * 10000);
}

void BM_ThreeWayMerge(benchmark::State& state)
{
    Fixture& f = fixture();
    CSysCodeData base;
    CISysCode::GetSpecCodeInfos(base, kSpec);
    CSysCodeData theirs = base;
    CSysCodeData mine = base;
    int changed = 0;
    for (CSysCodeData* top : theirs.GetChildren())
        for (CSysCodeData* mid : top->GetChildren())
            for (int i = 0; i < mid->GetChildCount() && changed < 1000; i += 3, ++changed)
                mid->GetChild(i)->SetDescribe(QStringLiteral("乙"));
    changed = 0;
    for (CSysCodeData* top : mine.GetChildren())
        for (CSysCodeData* mid : top->GetChildren())
            for (int i = 1; i < mid->GetChildCount() && changed < 1000; i += 3, ++changed)
                mid->GetChild(i)->SetMfcColor(255);
    for (auto _ : state) {
        SysCodeThreeWayMerge merge = MergeSysCodeThreeWay(base, theirs, mine);
        if (merge.HasUndecided() || merge.fromTheirs.size() != 1000)
            state.SkipWithError("merge failed");
        benchmark::DoNotOptimize(merge);
    }
    benchmark::DoNotOptimize(f);
    state.SetItemsProcessed(state.iterations() * 10000);
}

void BM_BareReplace(benchmark::State& state)
{
    Fixture& f = fixture();
    for (auto _ : state)
        bareReplace(f.bare, f.tree);
    state.SetItemsProcessed(state.iterations() * 10000);
}

void BM_LoadTree(benchmark::State& state)
{
    for (auto _ : state) {
        CSysCodeData root;
        if (!CISysCode::GetSpecCodeInfos(root, kSpec) || root.GetChildCount() != 16)
            state.SkipWithError("load failed");
        benchmark::DoNotOptimize(root);
    }
    state.SetItemsProcessed(state.iterations() * 10000);
}

void BM_BareSelect(benchmark::State& state)
{
    Fixture& f = fixture();
    bareReplace(f.bare, f.tree);
    sqlite3_stmt* stmt = nullptr;
    // In primary-key order, the cheapest for the table; numbers read as numbers.
    sqlite3_prepare_v2(
        f.bare, "SELECT * FROM sys_code WHERE spec_id = 3 ORDER BY node_index", -1, &stmt, nullptr);
    for (auto _ : state) {
        qint64 sum = 0;
        double widths = 0.0;
        while (sqlite3_step(stmt) == SQLITE_ROW) {
            for (int col = 0; col < 14; ++col) {
                if (col <= 3 || col == 5 || col == 7) {
                    sum += sqlite3_column_int64(stmt, col);
                } else if (col == 6) {
                    widths += sqlite3_column_double(stmt, col);
                } else {
                    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt, col));
                    sum += QString::fromUtf8(text, sqlite3_column_bytes(stmt, col)).size();
                }
            }
        }
        benchmark::DoNotOptimize(widths);
        sqlite3_reset(stmt);
        benchmark::DoNotOptimize(sum);
    }
    sqlite3_finalize(stmt);
    state.SetItemsProcessed(state.iterations() * 10000);
}

void BM_ImportScn(benchmark::State& state)
{
    Fixture& f = fixture();
    for (auto _ : state) {
        CSysCodeData imported;
        CSysCodeData target;
        if (!imported.ImportData(f.scn))
            state.SkipWithError("import failed");
        int counter = 0;
        MergeSysCodeTree(counter, &target, &imported, true);
        benchmark::DoNotOptimize(target);
    }
    state.SetItemsProcessed(state.iterations() * 10000);
}

// The usual import: into a specialty that already holds the same codes, so every
// imported code meets its own.
void BM_ImportScnIntoFullSpec(benchmark::State& state)
{
    Fixture& f = fixture();
    for (auto _ : state) {
        state.PauseTiming();
        CSysCodeData target;
        if (!CISysCode::GetSpecCodeInfos(target, kSpec))
            state.SkipWithError("load failed");
        state.ResumeTiming();
        CSysCodeData imported;
        if (!imported.ImportData(f.scn))
            state.SkipWithError("import failed");
        int counter = 0;
        MergeSysCodeTree(counter, &target, &imported, true);
        benchmark::DoNotOptimize(target);
    }
    state.SetItemsProcessed(state.iterations() * 10000);
}

void BM_BareXmlRead(benchmark::State& state)
{
    Fixture& f = fixture();
    for (auto _ : state) {
        QFile file(f.scn);
        file.open(QIODevice::ReadOnly);
        QXmlStreamReader xml(&file);
        qint64 sum = 0;
        while (!xml.atEnd()) {
            if (xml.readNext() == QXmlStreamReader::StartElement) {
                for (const QXmlStreamAttribute& a : xml.attributes())
                    sum += a.value().toString().size();
            }
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * 10000);
}

BENCHMARK(BM_SaveTree)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveTreeTenthChanged)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveTreeUnchanged)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveTreeChecked)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ThreeWayMerge)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BareReplace)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadTree)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BareSelect)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ImportScn)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ImportScnIntoFullSpec)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BareXmlRead)->Unit(benchmark::kMillisecond);

} // namespace

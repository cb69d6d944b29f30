// A specialty of 9,910 codes exchanged as a spreadsheet against the same codes as
// a system-code file: writing each, and reading each back for an import into the
// specialty that already holds them.
#include "BenchProject.h"
#include "CSysCodeData.h"
#include "QvKsDataMng.h"
#include "SysCodeCsv.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {
struct Exchange
{
    QTemporaryDir dir;
    CSysCodeData tree;
    QString scn = dir.filePath(QStringLiteral("codes.scn"));
    QString csv = dir.filePath(QStringLiteral("codes.csv"));

    Exchange()
    {
        MakeBenchCodeTree(tree);
        tree.ExportData(scn, QString());
        QFile file(csv);
        file.open(QIODevice::WriteOnly);
        file.write(WriteSysCodeCsv(tree, {}));
    }
};

Exchange& exchange()
{
    static Exchange e;
    return e;
}

void BM_ExportCsv(benchmark::State& state)
{
    const CSysCodeData& tree = exchange().tree;
    for (auto _ : state) {
        QFile file(exchange().csv);
        file.open(QIODevice::WriteOnly | QIODevice::Truncate);
        benchmark::DoNotOptimize(file.write(WriteSysCodeCsv(tree, {})));
    }
    state.counters["codes"] = kBenchCodes;
}
BENCHMARK(BM_ExportCsv)->Unit(benchmark::kMillisecond);

void BM_ExportScn(benchmark::State& state)
{
    const CSysCodeData& tree = exchange().tree;
    for (auto _ : state)
        benchmark::DoNotOptimize(tree.ExportData(exchange().scn, QString()));
    state.counters["codes"] = kBenchCodes;
}
BENCHMARK(BM_ExportScn)->Unit(benchmark::kMillisecond);

// Reading the sheet against the specialty holding every one of its codes.
void BM_ReadCsvIntoFullSpecialty(benchmark::State& state)
{
    const CSysCodeData& tree = exchange().tree;
    for (auto _ : state) {
        QFile file(exchange().csv);
        file.open(QIODevice::ReadOnly);
        CSysCodeData imported;
        QList<SysCodeCsvRefusal> refused;
        QString error;
        benchmark::DoNotOptimize(ReadSysCodeCsv(file.readAll(), tree, {}, imported, refused, error));
    }
    state.counters["codes"] = kBenchCodes;
}
BENCHMARK(BM_ReadCsvIntoFullSpecialty)->Unit(benchmark::kMillisecond);

void BM_ReadScn(benchmark::State& state)
{
    for (auto _ : state) {
        CSysCodeData imported;
        benchmark::DoNotOptimize(imported.ImportData(exchange().scn));
    }
    state.counters["codes"] = kBenchCodes;
}
BENCHMARK(BM_ReadScn)->Unit(benchmark::kMillisecond);
} // namespace

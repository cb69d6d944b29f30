// Reading a 100 MB floor drawing (mostly product entities) and walking its model
// space, against only reading the same bytes and splitting them into lines.
#include "DxfWriter.h"
#include "QvKsEntity.h"
#include "ZcSdk.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {
QString g_path;
qint64 g_size = 0;

constexpr qint64 kTargetSize = 100LL * 1024 * 1024;

bool generateFloor(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    DxfWriter writer(&file, DxfWriter::Version::R2000);
    writer.addLayer(QStringLiteral("QV_管线"), 1);
    writer.addLayer(QStringLiteral("房间名称"), 3);
    for (int n = 0; file.pos() < kTargetSize; ++n) {
        const double x = (n % 1000) * 10.0;
        const double y = (n / 1000) * 10.0;
        const QString index = QStringLiteral("%1\\%2").arg(n % 7 == 0 ? 6 : 3).arg(n % 40);
        const DxfWriter::Style style { QStringLiteral("QV_管线"), 1 + n % 6 };
        if (n % 3 == 0)
            writer.addProductEntity(index, { { x, y, 0 }, { x + 8, y, 0 } }, style);
        else
            writer.addProductEntity(
                index, { { x, y, 0 }, { x + 4, y + 2.5, 0 }, { x + 8, y + 2.5, 0 } }, style);
        if (n % 50 == 0)
            writer.addText({ x, y + 5, 0 }, QStringLiteral("卫生间 %1").arg(n), 2.5,
                { QStringLiteral("房间名称"), 256 });
    }
    return writer.finish();
}

void BM_ReadDxfAndWalkModelSpace(benchmark::State& state)
{
    QvKsEntity::rxInit();
    qint64 products = 0;
    for (auto _ : state) {
        ZcDbDatabase db(false, true);
        if (db.readDwgFile(g_path) != Zcad::eOk) {
            state.SkipWithError(db.readError().toUtf8().constData());
            return;
        }
        ZcDbBlockTable* table = nullptr;
        ZcDbBlockTableRecord* model = nullptr;
        db.getBlockTable(table, ZcDb::kForRead);
        table->getAt(ZCDB_MODEL_SPACE, model, ZcDb::kForRead);
        table->close();
        ZcDbBlockTableRecordIterator* it = nullptr;
        model->newIterator(it, true, false);
        model->close();
        products = 0;
        for (; !it->done(); it->step(true, false)) {
            ZcDbEntity* entity = nullptr;
            if (it->getEntity(entity, ZcDb::kForRead, true) != Zcad::eOk)
                continue;
            if (const auto* product = QvKsEntity::cast(entity))
                products += product->GetSysCodeIndex().size() > 0;
            entity->close();
        }
        delete it;
    }
    state.counters["entities"] = double(products);
    state.SetBytesProcessed(state.iterations() * g_size);
}

void BM_ReadBytesAndSplitLines(benchmark::State& state)
{
    size_t count = 0;
    for (auto _ : state) {
        QFile file(g_path);
        file.open(QIODevice::ReadOnly);
        const QByteArray bytes = file.readAll();
        std::vector<std::string_view> lines;
        const char* p = bytes.constData();
        const char* end = p + bytes.size();
        while (p < end) {
            const char* nl = static_cast<const char*>(std::memchr(p, '\n', size_t(end - p)));
            const char* lineEnd = nl ? nl : end;
            std::string_view line(p, size_t(lineEnd - p));
            if (!line.empty() && line.back() == '\r')
                line.remove_suffix(1);
            lines.push_back(line);
            p = nl ? nl + 1 : end;
        }
        count = lines.size();
        benchmark::DoNotOptimize(lines.data());
    }
    state.counters["lines"] = double(count);
    state.SetBytesProcessed(state.iterations() * g_size);
}

BENCHMARK(BM_ReadDxfAndWalkModelSpace)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_ReadBytesAndSplitLines)->Unit(benchmark::kMillisecond)->Iterations(5);

// Keeps each run's time per iteration so the ratio can be printed at the end.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs)
            seconds[run.benchmark_name()] = run.GetAdjustedRealTime() / 1000.0;
        ConsoleReporter::ReportRuns(runs);
    }
    std::map<std::string, double> seconds;
};
} // namespace

int main(int argc, char** argv)
{
    QTemporaryDir folder;
    g_path = folder.filePath(QStringLiteral("floor.dxf"));
    if (!generateFloor(g_path)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(g_path));
        return 1;
    }
    g_size = QFile(g_path).size();
    std::printf("floor drawing: %.1f MB\n", double(g_size) / 1e6);
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const double reader = reporter.seconds["BM_ReadDxfAndWalkModelSpace/iterations:3"];
    const double lines = reporter.seconds["BM_ReadBytesAndSplitLines/iterations:5"];
    if (reader > 0 && lines > 0)
        std::printf("reader %.0f MB/s, lines %.0f MB/s, ratio %.2fx (target <= 3x)\n",
            double(g_size) / 1e6 / reader, double(g_size) / 1e6 / lines, reader / lines);
    benchmark::Shutdown();
    return 0;
}

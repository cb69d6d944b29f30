// Reading a 100 MB floor drawing (mostly product entities) and walking its model
// space, against the bare operation on the same file: reading it once and visiting
// each line, keeping nothing. Both sides report MB/s and the rise of peak memory.
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

#include <sys/wait.h>
#include <unistd.h>

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

// Reads the floor and walks its model space the way the usage scan does; the
// count of product entities with a code, or -1 when the drawing cannot be read.
qint64 readAndWalk(const QString& path)
{
    ZcDbDatabase db(false, true);
    if (db.readDwgFile(path) != Zcad::eOk)
        return -1;
    ZcDbBlockTable* table = nullptr;
    ZcDbBlockTableRecord* model = nullptr;
    db.getBlockTable(table, ZcDb::kForRead);
    table->getAt(ZCDB_MODEL_SPACE, model, ZcDb::kForRead);
    table->close();
    ZcDbBlockTableRecordIterator* it = nullptr;
    model->newIterator(it, true, false);
    model->close();
    qint64 products = 0;
    for (; !it->done(); it->step(true, false)) {
        ZcDbEntity* entity = nullptr;
        if (it->getEntity(entity, ZcDb::kForRead, true) != Zcad::eOk)
            continue;
        if (const auto* product = QvKsEntity::cast(entity))
            products += product->GetSysCodeIndex().size() > 0;
        entity->close();
    }
    delete it;
    return products;
}

void BM_ReadDxfAndWalkModelSpace(benchmark::State& state)
{
    QvKsEntity::rxInit();
    qint64 products = 0;
    for (auto _ : state) {
        products = readAndWalk(g_path);
        if (products < 0) {
            state.SkipWithError("the floor drawing cannot be read");
            return;
        }
    }
    state.counters["entities"] = double(products);
    state.SetBytesProcessed(state.iterations() * g_size);
}

// The honest bare operation: read the file once through a fixed buffer and visit
// each line (find its end, look at its last byte), keeping nothing.
size_t scanLines(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    std::vector<char> buffer(1 << 20);
    size_t lines = 0;
    size_t carriageReturns = 0;
    for (;;) {
        const qint64 got = file.read(buffer.data(), qint64(buffer.size()));
        if (got <= 0)
            break;
        const char* p = buffer.data();
        const char* end = p + got;
        while (p < end) {
            const char* nl = static_cast<const char*>(std::memchr(p, '\n', size_t(end - p)));
            if (!nl)
                break;
            carriageReturns += nl > p && nl[-1] == '\r';
            ++lines;
            p = nl + 1;
        }
    }
    benchmark::DoNotOptimize(carriageReturns);
    return lines;
}

void BM_ScanLines(benchmark::State& state)
{
    size_t count = 0;
    for (auto _ : state)
        count = scanLines(g_path);
    state.counters["lines"] = double(count);
    state.SetBytesProcessed(state.iterations() * g_size);
}

BENCHMARK(BM_ReadDxfAndWalkModelSpace)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_ScanLines)->Unit(benchmark::kMillisecond)->Iterations(5);

// Keeps each benchmark's time per iteration (the median when repeated) so the
// ratio can be printed at the end.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            const std::string name = run.run_name.function_name;
            const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            if (run.run_type == Run::RT_Iteration && medians.count(name))
                continue;
            if (run.run_type == Run::RT_Iteration || median) {
                seconds[name] = run.GetAdjustedRealTime() / 1000.0;
                cpuSeconds[name] = run.GetAdjustedCPUTime() / 1000.0;
                if (median)
                    medians[name] = true;
            }
        }
        ConsoleReporter::ReportRuns(runs);
    }
    std::map<std::string, double> seconds;
    std::map<std::string, double> cpuSeconds;
    std::map<std::string, bool> medians;
};

// One "Vm…:  N kB" line of /proc/self/status, in bytes.
qint64 statusBytes(const char* key)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith(key))
            return line.mid(qsizetype(std::strlen(key))).trimmed().split(' ').value(0).toLongLong() * 1024;
    return -1;
}

// Peak memory of an operation: a child process of its own runs it once and
// answers how far its high-water mark (VmHWM) rose above its resident size
// before the operation. A child starts from the parent's pages, but its
// high-water mark is its own and freed heap of earlier runs cannot hide a peak.
qint64 peakRise(qint64 (*operation)(const QString&))
{
    int fds[2];
    if (pipe(fds) != 0)
        return -1;
    const pid_t child = fork();
    if (child == 0) {
        close(fds[0]);
        const qint64 before = statusBytes("VmRSS:");
        const qint64 result = operation(g_path);
        const qint64 rise = result < 0 ? -1 : statusBytes("VmHWM:") - before;
        const ssize_t written = write(fds[1], &rise, sizeof rise);
        _exit(written == ssize_t(sizeof rise) ? 0 : 1);
    }
    close(fds[1]);
    qint64 rise = -1;
    if (child < 0 || read(fds[0], &rise, sizeof rise) != ssize_t(sizeof rise))
        rise = -1;
    close(fds[0]);
    if (child > 0)
        waitpid(child, nullptr, 0);
    return rise;
}
} // namespace

int main(int argc, char** argv)
{
    QTemporaryDir folder(QStringLiteral("/tmp/bench_dxf-XXXXXX"));
    g_path = folder.filePath(QStringLiteral("floor.dxf"));
    if (!generateFloor(g_path)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(g_path));
        return 1;
    }
    g_size = QFile(g_path).size();
    std::printf("floor drawing: %.1f MB\n", double(g_size) / 1e6);
    QvKsEntity::rxInit();
    const qint64 readerPeak = peakRise(&readAndWalk);
    const qint64 linesPeak = peakRise([](const QString& path) { return qint64(scanLines(path)); });
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const double reader = reporter.seconds["BM_ReadDxfAndWalkModelSpace"];
    const double lines = reporter.seconds["BM_ScanLines"];
    const double mb = double(g_size) / 1e6;
    // On a shared machine the wall time waits for other work; the CPU time does not.
    const double readerCpu = reporter.cpuSeconds["BM_ReadDxfAndWalkModelSpace"];
    const double linesCpu = reporter.cpuSeconds["BM_ScanLines"];
    if (readerCpu > 0 && linesCpu > 0)
        std::printf("cpu: read+walk %.0f MB/s, line scan %.0f MB/s, ratio %.2fx\n", mb / readerCpu,
            mb / linesCpu, readerCpu / linesCpu);
    if (reader > 0 && lines > 0)
        std::printf("read+walk %.0f MB/s, line scan %.0f MB/s, ratio %.2fx (target <= 3x)\n", mb / reader,
            mb / lines, reader / lines);
    std::printf("peak memory rise: read+walk %.0f MB (%.2fx the file, target <= 2x), line scan %.1f MB\n",
        double(readerPeak) / 1e6, double(readerPeak) / double(g_size), double(linesPeak) / 1e6);
    benchmark::Shutdown();
    return 0;
}

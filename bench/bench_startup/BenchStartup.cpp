// Starting qvhost on a project of 1,000, 10,000 and 50,000 codes: a process of its
// own opens the project and its current floor, loads the module, fills the
// attribute bar and "显示控制", runs an empty script and exits. The anchor is the
// same start on a project without codes; growth should be linear in the codes.
// Then 10,000 codes with a small floor against a floor drawing of 100 MB: the time
// and the peak memory (the child's own high-water mark, from wait4) it adds. What
// the host adds around the drawing is that difference less the reader's own cost,
// timed here on the same file, beside the honest line scan of that file.
#include "CISysCode.h"
#include "CSysCodeData.h"
#include "DxfWriter.h"
#include "QvKsDataMng.h"
#include "ZcDbDatabase.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstring>
#include <map>
#include <memory>
#include <tuple>
#include <utility>
#include <vector>

#include <malloc.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

extern char** environ;

namespace {
const QString kSpec = QStringLiteral("电气");

void addCode(CSysCodeData& parent, CSysCodeData*& added, const QString& name, int n)
{
    added = new CSysCodeData;
    added->SetNodeName(name);
    added->SetMfcColor(COLORREF(n * 2654435761u) & 0xFFFFFF);
    added->SetLineWidth(30);
    added->SetAddedMsg(QStringLiteral("电气\\配管\\SC%1").arg(n % 50));
    int counter = 0;
    parent.AddDataToChild(counter, added, false);
}

// Ten systems of ten circuits each, the leaves shared out evenly.
CSysCodeData makeTree(int codes)
{
    CSysCodeData root;
    int n = 0;
    for (int t = 0; t < 10 && n < codes; ++t) {
        CSysCodeData* top = nullptr;
        addCode(root, top, QStringLiteral("系统%1").arg(t), ++n);
        for (int m = 0; m < 10 && n < codes; ++m) {
            CSysCodeData* middle = nullptr;
            addCode(*top, middle, QStringLiteral("WL%1").arg(m), ++n);
            for (int l = 0; l < (codes - 110) / 100 + 1 && n < codes; ++l) {
                CSysCodeData* leaf = nullptr;
                addCode(*middle, leaf, QStringLiteral("回路%1").arg(l), ++n);
            }
        }
    }
    return root;
}

struct Project
{
    QTemporaryDir dir;
    QString script;
    QString paintScript; // saves the main window: the drawing painted once
};

// The project of `codes` codes and a current floor of about `floorMegabytes` MB
// (100 pipes when 0), made once. With more than one layer the pipes lie on
// `layers` layers of their own, in turn; with one, on layer "0".
Project& project(int codes, int floorMegabytes, int layers = 1)
{
    static std::map<std::tuple<int, int, int>, std::unique_ptr<Project>> projects;
    std::unique_ptr<Project>& p = projects[{ codes, floorMegabytes, layers }];
    if (p)
        return *p;
    p = std::make_unique<Project>();
    QvKsDataMng::CreateProject(p->dir.path(), QStringLiteral("启动"));
    QvKsDataMng::RunScript(
        QStringLiteral("INSERT INTO spec(spec_id, name, ord) VALUES (3, '电气', 1);"
                       "UPDATE meta SET value = '电气' WHERE key = 'current_spec';"
                       "UPDATE meta SET value = 'F0' WHERE key = 'current_floor';"
                       "INSERT INTO floor(floor_id, name, ord, dwg_file) VALUES (0, 'F0', 0, 'F0.dxf');"));
    CSysCodeData root = makeTree(codes);
    if (codes > 0)
        CISysCode::SetSpecCodeInfos(root, kSpec);
    QvKsDataMng::CloseProject();
    QFile drawing(p->dir.filePath(QStringLiteral("F0.dxf")));
    drawing.open(QIODevice::WriteOnly);
    DxfWriter writer(&drawing);
    writer.registerApp(QStringLiteral("QVKS"));
    for (int l = 0; layers > 1 && l < layers; ++l)
        writer.addLayer(QStringLiteral("SYS-%1").arg(l), l % 255 + 1);
    for (int i = 0; i < 100 || drawing.size() < qint64(floorMegabytes) * 1024 * 1024; ++i) {
        const DxfStyle style { layers > 1 ? QStringLiteral("SYS-%1").arg(i % layers) : QStringLiteral("0") };
        writer.addProductEntity(
            QStringLiteral("3\\%1").arg(i % 9000 + 1), { { 0, i * 10.0, 0 }, { 500, i * 10.0, 0 } }, style);
    }
    writer.finish();
    p->script = p->dir.filePath(QStringLiteral("empty.qvs"));
    QFile script(p->script);
    script.open(QIODevice::WriteOnly);
    script.write("# nothing: the start is what is timed\n");
    p->paintScript = p->dir.filePath(QStringLiteral("paint.qvs"));
    QFile paint(p->paintScript);
    paint.open(QIODevice::WriteOnly);
    paint.write(QStringLiteral("screenshot %1\n").arg(p->dir.filePath(QStringLiteral("shown.png"))).toUtf8());
    return *p;
}

struct HostRun
{
    qint64 peakBytes = -1; // -1 when it did not start or failed
    double cpuSeconds = 0.0; // user and system
};

// Runs qvhost on the project to its end: its peak resident size and the processor
// time it took (steadier than the wall clock on a machine others share).
HostRun startHost(const Project& p, bool painted)
{
    const QByteArray program(QV_HOST_PROGRAM);
    const QByteArray folder = p.dir.path().toLocal8Bit();
    const QByteArray script = (painted ? p.paintScript : p.script).toLocal8Bit();
    char* argv[] = { const_cast<char*>(program.constData()), const_cast<char*>("--project"),
        const_cast<char*>(folder.constData()), const_cast<char*>("--script"),
        const_cast<char*>(script.constData()), nullptr };
    pid_t pid = 0;
    if (posix_spawn(&pid, argv[0], nullptr, nullptr, argv, environ) != 0)
        return {};
    int status = 0;
    rusage usage {};
    if (wait4(pid, &status, 0, &usage) != pid || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return {};
    const auto seconds = [](const timeval& t) { return double(t.tv_sec) + double(t.tv_usec) / 1e6; };
    return { qint64(usage.ru_maxrss) * 1024, seconds(usage.ru_utime) + seconds(usage.ru_stime) };
}

void runHost(benchmark::State& state, const Project& p, bool painted = false)
{
    HostRun run;
    double cpu = 0.0;
    for (auto _ : state) {
        run = startHost(p, painted);
        if (run.peakBytes < 0) {
            state.SkipWithError("qvhost did not start on the project");
            return;
        }
        cpu += run.cpuSeconds;
    }
    state.counters["peakMB"] = double(run.peakBytes) / 1e6;
    state.counters["hostCpuMs"] = cpu * 1e3 / double(state.iterations());
}

void BM_HostStart(benchmark::State& state)
{
    runHost(state, project(int(state.range(0)), int(state.range(1))));
    state.counters["codes"] = double(state.range(0));
}
BENCHMARK(BM_HostStart)
    ->Args({ 0, 0 })
    ->Args({ 1000, 0 })
    ->Args({ 10000, 0 })
    ->Args({ 50000, 0 })
    ->Args({ 10000, 100 })
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(3);

// The same starts with the drawing painted once (the window saved as an image, as
// a script does): what a drafter waits for before seeing the floor.
void BM_HostStartPainted(benchmark::State& state)
{
    runHost(state, project(int(state.range(0)), int(state.range(1))), true);
}
BENCHMARK(BM_HostStartPainted)
    ->Args({ 10000, 0 })
    ->Args({ 10000, 100 })
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(3);

// A floor of 20 MB whose pipes lie on 2,000 layers against the same floor on one
// layer: what the drawing's layers add to the start.
void BM_HostStartLayers(benchmark::State& state)
{
    runHost(state, project(10000, 20, int(state.range(0))));
    state.counters["layers"] = double(state.range(0));
}
BENCHMARK(BM_HostStartLayers)->Arg(1)->Arg(2000)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

QString floorFile(const Project& p)
{
    return p.dir.filePath(QStringLiteral("F0.dxf"));
}

// Bytes the allocator has handed out and not had back.
qint64 heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return qint64(info.uordblks + info.hblkhd);
}

// The reader alone on the floor's drawing: the time, and the heap the read database
// holds (the host's start holds it too, and adds what it builds around it).
void BM_ReadFloor(benchmark::State& state)
{
    const Project& p = project(10000, int(state.range(0)));
    qint64 held = 0;
    for (auto _ : state) {
        const qint64 before = heapInUse();
        ZcDbDatabase database(false, false);
        if (database.readDwgFile(floorFile(p)) != Zcad::eOk) {
            state.SkipWithError("the floor cannot be read");
            return;
        }
        held = heapInUse() - before;
    }
    state.counters["heldMB"] = double(held) / 1e6;
}
BENCHMARK(BM_ReadFloor)->Arg(100)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

// The honest bare operation on the same file: read it once through a fixed buffer
// and find each line's end, keeping nothing.
void BM_FloorLineScan(benchmark::State& state)
{
    const Project& p = project(10000, int(state.range(0)));
    QFile file(floorFile(p));
    std::vector<char> buffer(1 << 20);
    qint64 lines = 0;
    for (auto _ : state) {
        if (!file.open(QIODevice::ReadOnly)) {
            state.SkipWithError("the floor cannot be opened");
            return;
        }
        lines = 0;
        for (qint64 got; (got = file.read(buffer.data(), qint64(buffer.size()))) > 0;) {
            const char* at = buffer.data();
            const char* const end = at + got;
            while ((at = static_cast<const char*>(std::memchr(at, '\n', size_t(end - at))))) {
                ++lines;
                ++at;
            }
        }
        file.close();
    }
    state.counters["lines"] = double(lines);
    state.counters["MB"] = double(QFile(floorFile(p)).size()) / 1e6;
}
BENCHMARK(BM_FloorLineScan)->Arg(100)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
} // namespace

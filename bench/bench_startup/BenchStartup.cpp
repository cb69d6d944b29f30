// Starting qvhost on a project of 1,000, 10,000 and 50,000 codes: a process of its
// own opens the project and its current floor, loads the module, fills the
// attribute bar and "显示控制", runs an empty script and exits. The anchor is the
// same start on a project without codes; growth should be linear in the codes.
// Then 10,000 codes with a small floor against a floor drawing of 100 MB: the time
// and the peak memory (the child's own high-water mark, from wait4) it adds.
#include "CISysCode.h"
#include "CSysCodeData.h"
#include "DxfWriter.h"
#include "QvKsDataMng.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <utility>

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
};

// The project of `codes` codes and a current floor of about `floorMegabytes` MB
// (100 pipes when 0), made once.
Project& project(int codes, int floorMegabytes)
{
    static std::map<std::pair<int, int>, std::unique_ptr<Project>> projects;
    std::unique_ptr<Project>& p = projects[{ codes, floorMegabytes }];
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
    for (int i = 0; i < 100 || drawing.size() < qint64(floorMegabytes) * 1024 * 1024; ++i)
        writer.addProductEntity(
            QStringLiteral("3\\%1").arg(i % 9000 + 1), { { 0, i * 10.0, 0 }, { 500, i * 10.0, 0 } });
    writer.finish();
    p->script = p->dir.filePath(QStringLiteral("empty.qvs"));
    QFile script(p->script);
    script.open(QIODevice::WriteOnly);
    script.write("# nothing: the start is what is timed\n");
    return *p;
}

// Runs qvhost on the project to its end; its peak resident size in bytes, or -1
// when it did not start or failed.
qint64 startHost(const Project& p)
{
    const QByteArray program(QV_HOST_PROGRAM);
    const QByteArray folder = p.dir.path().toLocal8Bit();
    const QByteArray script = p.script.toLocal8Bit();
    char* argv[] = { const_cast<char*>(program.constData()), const_cast<char*>("--project"),
        const_cast<char*>(folder.constData()), const_cast<char*>("--script"),
        const_cast<char*>(script.constData()), nullptr };
    pid_t pid = 0;
    if (posix_spawn(&pid, argv[0], nullptr, nullptr, argv, environ) != 0)
        return -1;
    int status = 0;
    rusage usage {};
    if (wait4(pid, &status, 0, &usage) != pid || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return -1;
    return qint64(usage.ru_maxrss) * 1024;
}

void BM_HostStart(benchmark::State& state)
{
    const Project& p = project(int(state.range(0)), int(state.range(1)));
    qint64 peak = 0;
    for (auto _ : state) {
        peak = startHost(p);
        if (peak < 0) {
            state.SkipWithError("qvhost did not start on the project");
            return;
        }
    }
    state.counters["codes"] = double(state.range(0));
    state.counters["peakMB"] = double(peak) / 1e6;
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
} // namespace

// Starting qvhost on a project of 1,000, 10,000 and 50,000 codes: a process of its
// own opens the project and its small current floor, loads the module, fills the
// attribute bar and "显示控制", runs an empty script and exits. The anchor is the
// same start on a project without codes; growth should be linear in the codes.
#include "CISysCode.h"
#include "CSysCodeData.h"
#include "DxfWriter.h"
#include "QvKsDataMng.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>

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

// The project of `codes` codes, made once.
Project& project(int codes)
{
    static std::map<int, std::unique_ptr<Project>> projects;
    std::unique_ptr<Project>& p = projects[codes];
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
    for (int i = 0; i < 100; ++i)
        writer.addProductEntity(
            QStringLiteral("3\\%1").arg(i + 1), { { 0, i * 10.0, 0 }, { 500, i * 10.0, 0 } });
    writer.finish();
    p->script = p->dir.filePath(QStringLiteral("empty.qvs"));
    QFile script(p->script);
    script.open(QIODevice::WriteOnly);
    script.write("# nothing: the start is what is timed\n");
    return *p;
}

void BM_HostStart(benchmark::State& state)
{
    Project& p = project(int(state.range(0)));
    for (auto _ : state) {
        QProcess host;
        host.start(QStringLiteral(QV_HOST_PROGRAM),
            { QStringLiteral("--project"), p.dir.path(), QStringLiteral("--script"), p.script });
        if (!host.waitForFinished(120000) || host.exitCode() != 0) {
            state.SkipWithError(host.readAllStandardError().constData());
            return;
        }
    }
    state.counters["codes"] = double(state.range(0));
}
BENCHMARK(BM_HostStart)
    ->Arg(0)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(50000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

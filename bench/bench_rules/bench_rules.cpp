// Speed of the rules that run over whole trees and sibling lists: the import merge
// against building the same tree from nothing, and the sibling order against plain
// string order. Prints each ratio after the table.
#include "CSysCodeData.h"
#include "SysCodeMerge.h"
#include "SysCodeOrder.h"

#include <benchmark/benchmark.h>

#include <QString>
#include <QStringList>

#include <algorithm>
#include <cstdio>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr int kTopCodes = 20;
constexpr int kZonesPerTop = 20;
constexpr int kCircuitsPerZone = 24; // 20 + 400 + 9600 = 10,020 codes

CSysCodeData* NewCode(const QString& name, int seed)
{
    auto* node = new CSysCodeData;
    node->SetNodeName(name);
    node->SetMfcColor(COLORREF(seed * 2654435761u) & 0xFFFFFF);
    node->SetLineWidth(0.25 * (seed % 8));
    node->SetAlpha(seed % 90);
    node->SetLineStyle(QStringLiteral("DASHED"));
    node->SetLineString(QStringLiteral("J"));
    node->SetHorLayingMode(QStringLiteral("沿墙明敷"));
    node->SetVerLayingMode(QStringLiteral("暗敷"));
    node->SetAddedMsg(QStringLiteral("管材\\PPR管"));
    node->SetDescribe(QStringLiteral("备注%1").arg(seed));
    return node;
}

// Three levels; the second level's names start at `firstZone`, so two trees built
// with first zones 0 and 10 share half their codes.
void FillTree(CSysCodeData& root, int firstZone, int seed)
{
    int counter = 0;
    for (int t = 0; t < kTopCodes; ++t) {
        CSysCodeData* top = NewCode(QStringLiteral("系统%1").arg(t), seed++);
        root.AddDataToChild(counter, top, true);
        for (int z = firstZone; z < firstZone + kZonesPerTop; ++z) {
            CSysCodeData* zone = NewCode(QStringLiteral("分区%1").arg(z), seed++);
            top->AddDataToChild(counter, zone, true);
            for (int c = 0; c < kCircuitsPerZone; ++c)
                zone->AddDataToChild(counter, NewCode(QStringLiteral("回路%1").arg(c), seed++), true);
        }
    }
}

void BM_BuildTarget(benchmark::State& state)
{
    for (auto _ : state) {
        auto* root = new CSysCodeData;
        FillTree(*root, 0, 1);
        benchmark::DoNotOptimize(root);
        state.PauseTiming();
        delete root;
        state.ResumeTiming();
    }
}
BENCHMARK(BM_BuildTarget)->Unit(benchmark::kMillisecond);

void BM_MergeImport(benchmark::State& state)
{
    CSysCodeData target;
    FillTree(target, 0, 1);
    CSysCodeData imported;
    FillTree(imported, kZonesPerTop / 2, 7);
    for (auto _ : state) {
        state.PauseTiming();
        auto* copy = new CSysCodeData(target); // the store's tree, freshly read
        state.ResumeTiming();
        int counter = 0;
        benchmark::DoNotOptimize(MergeSysCodeTree(counter, copy, &imported, true));
        state.PauseTiming();
        delete copy;
        state.ResumeTiming();
    }
}
BENCHMARK(BM_MergeImport)->Unit(benchmark::kMillisecond);

// Sibling names as drafters give them: words with and without numbers, some padded.
std::vector<QString> SiblingNames()
{
    const QStringList words = { QStringLiteral("生活给水"), QStringLiteral("回路"), QStringLiteral("WL"),
        QStringLiteral("P"), QStringLiteral("照明"), QStringLiteral("AL-"), QStringLiteral("消防水"),
        QStringLiteral("ZP"), QStringLiteral("空调冷凝水") };
    std::mt19937 random(42);
    std::vector<QString> names;
    names.reserve(10000);
    while (names.size() < 10000) {
        const QString& word = words[int(random() % words.size())];
        const unsigned number = random() % 2000;
        switch (random() % 4) {
        case 0:
            names.push_back(word);
            break;
        case 1:
            names.push_back(word + QString::number(number).rightJustified(3, u'0'));
            break;
        default:
            names.push_back(word + QString::number(number));
        }
    }
    return names;
}

template <typename Less> void SortNames(benchmark::State& state, Less less)
{
    const std::vector<QString> names = SiblingNames();
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<QString> sorted = names;
        state.ResumeTiming();
        std::sort(sorted.begin(), sorted.end(), less);
        benchmark::DoNotOptimize(sorted.data());
    }
}

void BM_SortPlainString(benchmark::State& state)
{
    SortNames(state, std::less<QString>());
}
BENCHMARK(BM_SortPlainString)->Unit(benchmark::kMicrosecond);

void BM_SortSiblingOrder(benchmark::State& state)
{
    SortNames(state, SysCodeNameLess());
}
BENCHMARK(BM_SortSiblingOrder)->Unit(benchmark::kMicrosecond);

class RatioReporter : public benchmark::ConsoleReporter
{
public:
    // CPU time, so that other work on a shared machine does not skew the ratios; with
    // repetitions the median stands for the benchmark.
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration || run.aggregate_name == "median")
                m_times[run.run_name.function_name] = run.GetAdjustedCPUTime();
        }
        ConsoleReporter::ReportRuns(runs);
    }
    void Finalize() override
    {
        ConsoleReporter::Finalize();
        PrintRatio("merge / build", "BM_MergeImport", "BM_BuildTarget", 3.0);
        PrintRatio("sibling sort / plain sort", "BM_SortSiblingOrder", "BM_SortPlainString", 4.0);
        std::fflush(stdout);
    }

private:
    void PrintRatio(const char* label, const std::string& measured, const std::string& base, double target)
    {
        if (!m_times.count(measured) || !m_times.count(base) || m_times[base] <= 0)
            return;
        const double ratio = m_times[measured] / m_times[base];
        std::printf(
            "%-28s %.2fx (target <= %.0fx) %s\n", label, ratio, target, ratio <= target ? "ok" : "MISSED");
    }
    std::map<std::string, double> m_times; // per pair in the same unit
};

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}

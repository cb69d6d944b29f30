// The main of the benchmarks without widgets; the store, if one was opened, closed
// at the end.
#include "QvKsDataMng.h"

#include <QCoreApplication>
#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    QvKsDataMng::CloseProject();
    return 0;
}

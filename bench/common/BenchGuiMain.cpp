// The main of the benchmarks that open widgets: offscreen unless a platform is
// named, the store closed at the end.
#include "QvKsDataMng.h"

#include <QApplication>
#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "default.warning=false");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    QvKsDataMng::CloseProject();
    return 0;
}

// Benchmark entry point: starts the toolkit (no display needed) before running the benchmarks.
#include <benchmark/benchmark.h>

#include <wx/image.h>
#include <wx/init.h>

int main(int argc, char** argv) {
    wxInitializer toolkit;
    if (!toolkit.IsOk())
        return 2;
    wxInitAllImageHandlers();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

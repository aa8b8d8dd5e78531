// Recording rows as they arrive against importing the same table as a file. A table "t;U;I" of n
// rows is fed to VyrLiveTable in pieces of 64 KiB, what one read of a pipe gives
// (BM_RecordLiveTable), against VyrTableImport of the same bytes (BM_RecordImportYardstick);
// 10^6 rows are meant to take well under 3 s. BM_RecordPipeEndToEnd and BM_RecordImportEndToEnd
// run the tools themselves, `cat TABLE | vyr record - -o OUT` against `vyr import TABLE -o OUT`,
// saving included (only where the build gives the path of vyr). BM_RecordPeakMemory: the peak
// resident memory a recording adds against the data it holds, meant to stay a small constant
// whatever n: the rows are never kept as text.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "BenchMemory.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/file/VyrLiveTable.h"
#include "vyrbase/file/VyrTableImport.h"

namespace {

using vyrbench::TempPath;

const size_t kPipeRead = 65536;

size_t Rows(const benchmark::State& state) {
    return static_cast<size_t>(state.range(0));
}

// A logger's table: a time base of 1 ms and two measured columns of six significant digits.
std::string Table(size_t rows) {
    std::string text = "t (s);U (V);I (mA)\n";
    text.reserve(rows * 32);
    char line[96];
    for (size_t i = 0; i < rows; ++i) {
        const int n = std::snprintf(line, sizeof line, "%.3f;%.6g;%.6g\n", i * 1e-3,
                                    2.5 + 1e-6 * static_cast<double>(i % 1000003),
                                    -12.5 + 1e-4 * static_cast<double>(i % 9973));
        text.append(line, static_cast<size_t>(n));
    }
    return text;
}

bool Record(VyrBaseData& doc, const std::string& text, size_t rows) {
    VyrTableImport settings;
    VyrLiveTable live(doc, settings);
    live.Start(L"bench");
    for (size_t at = 0; at < text.size(); at += kPipeRead)
        live.Feed(text.data() + at, std::min(kPipeRead, text.size() - at));
    live.Finish();
    return live.GetRowCount() == rows && live.GetError() == VyrTableImport::kErrorNone;
}

void BM_RecordLiveTable(benchmark::State& state) {
    const std::string text = Table(Rows(state));
    for (auto _ : state) {
        VyrBaseData doc(nullptr);
        if (!Record(doc, text, Rows(state)))
            state.SkipWithError("recording failed");
        state.PauseTiming();
        doc.Delete();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(Rows(state)));
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}

void BM_RecordImportYardstick(benchmark::State& state) {
    const std::string text = Table(Rows(state));
    for (auto _ : state) {
        VyrBaseData doc(nullptr);
        VyrTableImport import;
        if (!import.ImportMemory(doc, text.data(), text.size()) ||
            import.GetRowCount() != Rows(state))
            state.SkipWithError("import failed");
        state.PauseTiming();
        doc.Delete();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(Rows(state)));
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}

void BM_RecordPeakMemory(benchmark::State& state) {
    const std::string text = Table(Rows(state));
    const std::string path = TempPath("record.csv");
    std::ofstream(path, std::ios::binary) << text;
    vyrbench::MeasureReadingPeak(state, path,
                                 [&](VyrBaseData& doc) { return Record(doc, text, Rows(state)); });
    std::remove(path.c_str());
}

#ifdef VYR_CLI
// Runs `command` through the shell once per iteration; the table is written first.
void RunTool(benchmark::State& state, const char* format) {
    const std::string table = TempPath("tool.csv"), out = TempPath("tool.vyr");
    std::ofstream(table, std::ios::binary) << Table(Rows(state));
    char command[1024];
    std::snprintf(command, sizeof command, format, table.c_str(), VYR_CLI, out.c_str());
    for (auto _ : state)
        if (std::system(command) != 0)
            state.SkipWithError("the tool failed");
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(Rows(state)));
    std::remove(table.c_str());
    std::remove(out.c_str());
}

void BM_RecordPipeEndToEnd(benchmark::State& state) {
    RunTool(state, "cat %1$s | %2$s record - -o %3$s > /dev/null");
}

void BM_RecordImportEndToEnd(benchmark::State& state) {
    RunTool(state, "%2$s import %1$s -o %3$s > /dev/null");
}
#endif

}  // namespace

BENCHMARK(BM_RecordLiveTable)
    ->Arg(10000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(BM_RecordImportYardstick)
    ->Arg(10000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(BM_RecordPeakMemory)
    ->Arg(100000)
    ->Arg(1000000)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
#ifdef VYR_CLI
BENCHMARK(BM_RecordPipeEndToEnd)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_RecordImportEndToEnd)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();
#endif

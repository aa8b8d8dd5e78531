// Importing a text table against exporting it: a document of one experiment whose curves share
// one time base of n points is exported as CSV (BM_TableCsvExport), and that CSV is imported
// into a new document (BM_TableImport); the import is meant to take less than twice the
// export's time. BM_TableImportPeakMemory: in a run of one iteration, the peak resident memory
// that one import adds, as a multiple of the imported document's data (the vectors' storage
// and masks), meant to stay below 3.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <string>

#include "BenchMemory.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrBitMask.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/file/VyrTableImport.h"

namespace {

using vyrbench::FileSize;
using vyrbench::TempPath;

int Curves(const benchmark::State& state) {
    return static_cast<int>(state.range(0));
}

int Points(const benchmark::State& state) {
    return static_cast<int>(state.range(1));
}

// `curves` curves of `points` points on one time base, values of six significant digits as a
// measurement gives them.
void BuildDocument(VyrBaseData& doc, int curves, int points) {
    VyrExperienceParam ep(L"Bench");
    VyrExperience* e = doc.CreateExperience(ep);
    for (int k = 0; k < curves; ++k) {
        VyrCourbeParam p;
        p.m_sNom = wxString::Format(L"U%d", k);
        p.m_sGrdX = L"t";
        p.m_sUniteX = L"s";
        p.m_sGrdY = p.m_sNom;
        p.m_sUniteY = L"V";
        VyrCourbe* c = doc.CreateCourbe(e, p, nullptr, false);
        c->SetSize(points);
        for (int i = 0; i < points; ++i) {
            c->GetVx()->SetVal(i, i * 1e-4);
            c->GetVy()->SetVal(i, 5.0 * std::sin(i * 1e-3 + k) * std::exp(-i * 1e-7));
        }
    }
}

// The CSV of a built document, written to `path`.
bool WriteTable(benchmark::State& state, const std::string& path) {
    VyrBaseData doc(nullptr);
    BuildDocument(doc, Curves(state), Points(state));
    return doc.SaveAsCsvUTF8(wxString(path));
}

void SetCounters(benchmark::State& state, const std::string& path) {
    const long size = FileSize(path);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * size);
    state.counters["file_MB"] = size / 1e6;
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(Points(state)));
}

void BM_TableCsvExport(benchmark::State& state) {
    const std::string path = TempPath("export.csv");
    VyrBaseData doc(nullptr);
    BuildDocument(doc, Curves(state), Points(state));
    for (auto _ : state)
        if (!doc.SaveAsCsvUTF8(wxString(path)))
            state.SkipWithError("export failed");
    SetCounters(state, path);
    std::remove(path.c_str());
}

void BM_TableImport(benchmark::State& state) {
    const std::string path = TempPath("import.csv");
    if (!WriteTable(state, path))
        state.SkipWithError("export failed");
    for (auto _ : state) {
        VyrBaseData doc(nullptr);
        VyrTableImport import;
        if (!import.ImportFile(doc, wxString(path)) ||
            import.GetRowCount() != static_cast<size_t>(Points(state)))
            state.SkipWithError("import failed");
        // The document's teardown is not the import's time.
        state.PauseTiming();
        doc.Delete();
        state.ResumeTiming();
    }
    SetCounters(state, path);
    std::remove(path.c_str());
}

void BM_TableImportPeakMemory(benchmark::State& state) {
    const std::string path = TempPath("peak.csv");
    if (!WriteTable(state, path))
        state.SkipWithError("export failed");
    vyrbench::MeasureReadingPeak(state, path, [&](VyrBaseData& doc) {
        VyrTableImport import;
        return import.ImportFile(doc, wxString(path));
    });
    std::remove(path.c_str());
}

// Arguments: curves and points: 10^6 rows of one and of three curves, and 10^4 rows.
void Sizes(benchmark::internal::Benchmark* b) {
    b->Args({1, 1000000})->Args({3, 1000000})->Args({3, 10000})->ArgNames({"curves", "points"});
}

}  // namespace

BENCHMARK(BM_TableCsvExport)->Apply(Sizes)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_TableImport)->Apply(Sizes)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_TableImportPeakMemory)
    ->Apply(Sizes)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

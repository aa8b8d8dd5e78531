// CSV export of large documents: one curve of 10^4 to 10^7 points, and 10 experiments of 10
// curves of 10^4 points each; and, as the floor to measure it against, the bare formatting of
// the same numbers ("%g" by to_chars into memory, no file, no separators); and the lossless
// table of the same documents.
#include <benchmark/benchmark.h>

#include <charconv>
#include <cmath>
#include <vector>

#include <wx/filename.h>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/file/VyrTableExport.h"

namespace {

void FillDocument(VyrBaseData& doc, int experiences, int curves, int points) {
    for (int e = 0; e < experiences; ++e) {
        VyrExperienceParam ep(wxString::Format("E%d", e));
        VyrExperience* experience = doc.CreateExperience(ep);
        for (int c = 0; c < curves; ++c) {
            VyrCourbeParam p;
            p.m_sGrdX = "t";
            p.m_sUniteX = "s";
            p.m_sGrdY = wxString::Format("U%d", c);
            p.m_sUniteY = "V";
            VyrCourbe* curve = doc.CreateCourbe(experience, p, nullptr, false);
            curve->SetSize(points);
            for (int i = 0; i < points; ++i) {
                curve->GetVx()->SetVal(i, i * 1e-3);
                curve->GetVy()->SetVal(i, std::sin(i * 0.01 + c) * (e + 1) * 1234.5);
            }
        }
    }
}

void BM_SaveAsCsvUTF8(benchmark::State& state) {
    VyrBaseData doc(nullptr);
    FillDocument(doc, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)),
                 static_cast<int>(state.range(2)));
    const wxString path = wxFileName::CreateTempFileName("vyrbenchcsv");
    wxULongLong size = 0;
    for (auto _ : state) {
        if (!doc.SaveAsCsvUTF8(path))
            state.SkipWithError("export failed");
        state.PauseTiming();
        size = wxFileName::GetSize(path);
        state.ResumeTiming();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                            static_cast<int64_t>(size.GetValue()));
    state.counters["file_MB"] = static_cast<double>(size.GetValue()) / 1e6;
    // Numbers written: per experiment one x column and one y column per curve.
    state.SetItemsProcessed(state.iterations() * state.range(0) * (state.range(1) + 1) *
                            state.range(2));
    wxRemoveFile(path);
}

// The lossless table of the same documents (VyrTableExport): the curves of one experiment share
// their X column, every number in its shortest exact text.
void BM_TableExport(benchmark::State& state) {
    VyrBaseData doc(nullptr);
    FillDocument(doc, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)),
                 static_cast<int>(state.range(2)));
    const wxString path = wxFileName::CreateTempFileName("vyrbenchtable");
    wxULongLong size = 0;
    for (auto _ : state) {
        if (!VyrTableExport().SaveFile(doc, path))
            state.SkipWithError("export failed");
        state.PauseTiming();
        size = wxFileName::GetSize(path);
        state.ResumeTiming();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                            static_cast<int64_t>(size.GetValue()));
    state.counters["file_MB"] = static_cast<double>(size.GetValue()) / 1e6;
    wxRemoveFile(path);
}

// to_chars ("%g") of the numbers the export of one experiment of one curve writes, into one
// buffer: what the export costs at the very least.
void BM_BareCsvNumbers(benchmark::State& state) {
    VyrBaseData doc(nullptr);
    FillDocument(doc, 1, 1, static_cast<int>(state.range(0)));
    VyrCourbe* curve = doc.FindFirstCourbeByGrdY("U0");
    const double* xs = curve->GetVx()->GetArea();
    const double* ys = curve->GetVy()->GetArea();
    const int n = curve->GetVx()->GetSize();
    std::vector<char> text(size_t(n) * 2 * 32);
    size_t length = 0;
    for (auto _ : state) {
        char* out = text.data();
        char* const end = out + text.size();
        for (int i = 0; i < n; ++i) {
            out = std::to_chars(out, end, xs[i], std::chars_format::general, 6).ptr;
            out = std::to_chars(out, end, ys[i], std::chars_format::general, 6).ptr;
        }
        length = size_t(out - text.data());
        benchmark::DoNotOptimize(text.data());
    }
    state.SetItemsProcessed(state.iterations() * 2 * state.range(0));
    state.counters["text_MB"] = static_cast<double>(length) / 1e6;
}

}  // namespace

BENCHMARK(BM_BareCsvNumbers)
    ->Arg(1000000)
    ->ArgName("points")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

// Arguments: experiments, curves per experiment, points per curve.
BENCHMARK(BM_SaveAsCsvUTF8)
    ->Args({1, 1, 10000})
    ->Args({1, 1, 100000})
    ->Args({1, 1, 1000000})
    ->Args({1, 1, 10000000})
    ->Args({10, 10, 10000})
    ->ArgNames({"experiments", "curves", "points"})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

BENCHMARK(BM_TableExport)
    ->Args({1, 1, 1000000})
    ->Args({10, 10, 10000})
    ->ArgNames({"experiments", "curves", "points"})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

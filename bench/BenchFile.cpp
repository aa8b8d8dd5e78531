// Load and Save of large documents: one curve of 10^6 points (two vectors) and 100 curves of
// 10^4 points. Reports the file size, the throughput in bytes of file per second and, in a
// run of one iteration each, the peak memory reached during the operation as a multiple of
// the file size (peak resident set, reset through /proc/self/clear_refs before the run).
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>

#include <unistd.h>

#include <wx/filefn.h>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

// Fills `doc` with `curves` curves of `points` points: X a time base, Y a noisy signal whose
// "%g" text has the usual six significant digits.
void BuildDocument(VyrBaseData& doc, int curves, int points) {
    VyrExperienceParam ep(L"Bench");
    VyrExperience* e = doc.CreateExperience(ep);
    for (int k = 0; k < curves; ++k) {
        VyrCourbeParam p;
        p.m_sNom = wxString::Format(L"U%d(t)", k);
        p.m_sGrdX = L"t";
        p.m_sUniteX = L"s";
        p.m_sGrdY = wxString::Format(L"U%d", k);
        p.m_sUniteY = L"V";
        VyrCourbe* c = doc.CreateCourbe(e, p, nullptr, false);
        c->SetSize(points);
        double* x = c->GetVx()->GetArea();
        double* y = c->GetVy()->GetArea();
        for (int i = 0; i < points; ++i) {
            x[i] = i * 0.001;
            y[i] = 3.3 * std::sin(i * 0.0123 + k) + 0.01 * ((i * 7919) % 101);
        }
        c->SetShownInDiagram(0, true);
    }
}

std::string TempPath(const char* name) {
    return std::string("/tmp/vyr_bench_") + std::to_string(getpid()) + "_" + name;
}

long FileSize(const std::string& path) {
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    return static_cast<long>(in.tellg());
}

// Peak resident set (VmHWM) and current resident set (VmRSS), in bytes.
long StatusKb(const char* key) {
    std::ifstream status("/proc/self/status");
    std::string line;
    const size_t n = std::char_traits<char>::length(key);
    while (std::getline(status, line))
        if (line.compare(0, n, key) == 0)
            return std::stol(line.substr(n + 1)) * 1024;
    return -1;
}

// Resets the peak resident set to the current one; false where the kernel does not allow it.
bool ResetPeak() {
    std::ofstream clear("/proc/self/clear_refs");
    clear << "5";
    clear.close();
    return static_cast<bool>(clear);
}

void SetFileCounters(benchmark::State& state, long fileSize) {
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * fileSize);
    state.counters["file_MB"] = fileSize / 1e6;
}

void BM_Save(benchmark::State& state) {
    VyrBaseData doc(nullptr);
    BuildDocument(doc, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    const std::string path = TempPath("save.vyr");
    for (auto _ : state) {
        if (!doc.Save(wxString(path)))
            state.SkipWithError("save failed");
    }
    SetFileCounters(state, FileSize(path));
    std::remove(path.c_str());
}

void BM_Load(benchmark::State& state) {
    const std::string path = TempPath("load.vyr");
    {
        VyrBaseData doc(nullptr);
        BuildDocument(doc, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
        doc.Save(wxString(path));
    }
    VyrBaseData doc(nullptr);
    for (auto _ : state) {
        if (!doc.Load(wxString(path)))
            state.SkipWithError("load failed");
    }
    SetFileCounters(state, FileSize(path));
    std::remove(path.c_str());
}

// One load and one save, each preceded by a reset of the peak: the peak above the resident set
// before the operation, divided by the file size.
void BM_PeakMemory(benchmark::State& state) {
    const std::string path = TempPath("peak.vyr");
    double loadPeak = 0, savePeak = 0;
    long size = 0;
    for (auto _ : state) {
        VyrBaseData built(nullptr);
        BuildDocument(built, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
        built.Save(wxString(path));
        size = FileSize(path);
        if (!ResetPeak()) {
            state.SkipWithError("cannot reset the peak resident set");
            break;
        }
        long before = StatusKb("VmRSS:");
        built.Save(wxString(path));
        savePeak = static_cast<double>(StatusKb("VmHWM:") - before) / size;

        VyrBaseData loaded(nullptr);
        ResetPeak();
        before = StatusKb("VmRSS:");
        loaded.Load(wxString(path));
        loadPeak = static_cast<double>(StatusKb("VmHWM:") - before) / size;
    }
    state.counters["file_MB"] = size / 1e6;
    state.counters["load_peak_x_file"] = loadPeak;
    state.counters["save_peak_x_file"] = savePeak;
    std::remove(path.c_str());
}

}  // namespace

// Arguments: curves, points per curve.
// Wall-clock time, so that the throughput includes the file system's share.
BENCHMARK(BM_Save)
    ->Args({1, 1000000})
    ->Args({100, 10000})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Load)
    ->Args({1, 1000000})
    ->Args({100, 10000})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PeakMemory)
    ->Args({1, 1000000})
    ->Args({100, 10000})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

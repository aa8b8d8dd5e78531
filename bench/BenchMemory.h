// Peak-memory measurement shared by the benchmarks: the kernel's own figures for this process,
// the data a document holds, and the benchmark files those figures are taken from.
#ifndef VYRBASE_BENCH_BENCHMEMORY_H
#define VYRBASE_BENCH_BENCHMEMORY_H

#include <benchmark/benchmark.h>

#include <fstream>
#include <string>

#include <malloc.h>
#include <unistd.h>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrBitMask.h"
#include "vyrbase/data/VyrVecteur.h"

namespace vyrbench {

// A value of /proc/self/status (VmHWM: peak resident set, VmRSS: resident set), in bytes; -1
// when it is not there.
inline long StatusBytes(const char* key) {
    std::ifstream status("/proc/self/status");
    std::string line;
    const size_t n = std::char_traits<char>::length(key);
    while (std::getline(status, line))
        if (line.compare(0, n, key) == 0)
            return std::stol(line.substr(n + 1)) * 1024;
    return -1;
}

// Resets the peak resident set to the current one; false where the kernel does not allow it.
inline bool ResetPeak() {
    std::ofstream clear("/proc/self/clear_refs");
    clear << "5";
    clear.close();
    return static_cast<bool>(clear);
}

// A file of this process in /tmp, named after `name`.
inline std::string TempPath(const char* name) {
    return std::string("/tmp/vyr_bench_") + std::to_string(getpid()) + "_" + name;
}

inline long FileSize(const std::string& path) {
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    return static_cast<long>(in.tellg());
}

// The document's data in memory: the vectors' storage and validity bytes.
inline double DataBytes(VyrBaseData& doc) {
    double bytes = 0;
    wxVyrListEntityNode* node = doc.GetFirstEntityNode(VYR_KIND_VECTEUR);
    while (node) {
        VyrVecteur* v = static_cast<VyrVecteur*>(doc.GetNextEntity(&node, VYR_KIND_VECTEUR));
        bytes += 8.0 * v->GetCapacity() + v->GetValidity()->GetSize();
    }
    return bytes;
}

// The peak resident memory that `fill` (reading `path` into the empty document it is given,
// false on failure) adds, against the data of the document it fills: each iteration gives the
// memory freed by earlier ones back to the system first, so that the reading's own needs show
// in the peak rather than being met from the heap's free blocks. Sets the counters file_MB,
// data_MB, peak_MB and peak_x_data.
template <class Fill>
void MeasureReadingPeak(benchmark::State& state, const std::string& path, Fill fill) {
    double peak = 0, data = 0;
    for (auto _ : state) {
        VyrBaseData doc(nullptr);
        malloc_trim(0);
        if (!ResetPeak()) {
            state.SkipWithError("cannot reset the peak resident set");
            break;
        }
        const long before = StatusBytes("VmRSS:");
        if (!fill(doc))
            state.SkipWithError("reading failed");
        peak = static_cast<double>(StatusBytes("VmHWM:") - before);
        data = DataBytes(doc);
    }
    state.counters["file_MB"] = FileSize(path) / 1e6;
    state.counters["data_MB"] = data / 1e6;
    state.counters["peak_MB"] = peak / 1e6;
    state.counters["peak_x_data"] = data > 0 ? peak / data : 0;
}

}  // namespace vyrbench

#endif

// A document of many entities: N experiments of one curve each (four entities per experiment),
// loaded from memory, walked as a description walks it (every experiment and its curves, every
// curve looked up by its oid) and closed, for N from 1000 to 20000. Every step is linear in the
// entities, so the time per experiment ("per_experiment") stays flat as N grows. The same
// document saved: every section writer names the experiment of each curve and vector it writes.
#include <unistd.h>

#include <cstdlib>
#include <string>

#include <benchmark/benchmark.h>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"

namespace {

void AppendUtf16(std::string& out, const std::wstring& text) {
    for (wchar_t c : text) {
        out.push_back(static_cast<char>(c & 0xFF));
        out.push_back(static_cast<char>((c >> 8) & 0xFF));
    }
}

// The document file of `count` experiments, each with one curve of two points, UTF-16LE with
// its mark.
std::string ManyExperiments(int count) {
    std::string bytes("\xFF\xFE", 2);
    AppendUtf16(bytes, L"[unit\u00e9]\r\n\toid = 1\r\n\tsymbole = \"s\"\r\n\r\n");
    for (int e = 0; e < count; ++e) {
        const int oid = 2 + 4 * e;
        for (int v = 2; v <= 3; ++v)
            AppendUtf16(bytes, L"[vecteur]\r\n\toid = " + std::to_wstring(oid + v) +
                                   L"\r\n\tnom = \"U\"\r\n\texperience = " + std::to_wstring(oid) +
                                   L"\r\n\tunit\u00e9 = 1\r\n\tpoints = table 2 {\r\n\t0\t1\t\r\n"
                                   L"\t}\r\n\r\n");
        AppendUtf16(bytes, L"[courbe]\r\n\toid = " + std::to_wstring(oid + 1) +
                               L"\r\n\tnom = \"U(t)\"\r\n\tvx = " + std::to_wstring(oid + 2) +
                               L"\r\n\tvy = " + std::to_wstring(oid + 3) +
                               L"\r\n\tstyle_ex = \"1|0|1|0|0|0\"\r\n\tdiagramme = 0\r\n\r\n");
        AppendUtf16(bytes, L"[manipulation]\r\n\toid = " + std::to_wstring(oid) +
                               L"\r\n\tnom = \"E" + std::to_wstring(e) +
                               L"\"\r\n\tcourbes = table 1 {\r\n\t" + std::to_wstring(oid + 1) +
                               L"\t\r\n\t}\r\n\r\n");
    }
    return bytes;
}

void BM_ManyExperiments(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const std::string bytes = ManyExperiments(count);
    for (auto _ : state) {
        VyrBaseData doc(nullptr);
        if (!doc.LoadFromMemory(bytes.data(), bytes.size())) {
            state.SkipWithError("load failed");
            break;
        }
        int curves = 0;
        wxVyrListEntityNode* node = doc.GetFirstExperienceNode();
        while (node) {
            VyrExperience* e = doc.GetNextExperience(&node);
            wxVyrListCourbeNode* c = e->GetFirstCourbeNode();
            while (c) {
                VyrCourbe* curve = e->GetNextCourbe(&c);
                curves += doc.FindEntity(curve->GetOid()) == curve;
            }
        }
        if (curves != count) {
            state.SkipWithError("curves missing");
            break;
        }
    }
    state.counters["per_experiment"] = benchmark::Counter(
        count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_SaveManyExperiments(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const std::string bytes = ManyExperiments(count);
    VyrBaseData doc(nullptr);
    char path[] = "/tmp/vyrbenchXXXXXX";
    const int fd = mkstemp(path);
    if (fd < 0 || !doc.LoadFromMemory(bytes.data(), bytes.size())) {
        state.SkipWithError("no document or no file");
        return;
    }
    close(fd);
    for (auto _ : state) {
        if (!doc.Save(path)) {
            state.SkipWithError("save failed");
            break;
        }
    }
    unlink(path);
    state.counters["per_experiment"] = benchmark::Counter(
        count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

}  // namespace

BENCHMARK(BM_SaveManyExperiments)
    ->Arg(1000)
    ->Arg(4000)
    ->Arg(20000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

BENCHMARK(BM_ManyExperiments)
    ->Arg(1000)
    ->Arg(2000)
    ->Arg(4000)
    ->Arg(8000)
    ->Arg(20000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

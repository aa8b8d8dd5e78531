// Load and Save of large documents, each beside the bare work it cannot do without:
//
// - BM_Load/n and BM_BareParse/n: loading a document of one curve of n points (two vectors,
//   2n numbers) against std::from_chars over the same 2n numbers as UTF-16 text, laid out as
//   the file lays them out (four to a line, tabs and line breaks), narrowed on the fly. The
//   ratio of the two is what the reader costs beyond converting numbers.
// - BM_Save/n and BM_BareFormat/n: saving that document against std::to_chars ("%g") of the
//   same 2n numbers into UTF-16 text in memory, with the same separators and no file.
//   BM_SaveExact/n saves it with every number in its shortest exact text, as the tools do.
// - BM_LoadPeakMemory/n: in a run of one iteration, the peak resident memory that one Load adds,
//   as a multiple of the document's own data in memory (the vectors' storage and masks).
//
// The same with 100 curves of 10^4 points (BM_Load/100/10000...), where the per-curve work of
// emptying the document and creating entities shows.
#include <benchmark/benchmark.h>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <string>
#include <vector>

#include <wx/filefn.h>

#include "BenchMemory.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrBitMask.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

using vyrbench::FileSize;
using vyrbench::TempPath;

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

// Every value of the document's vectors, in the order the file holds them.
std::vector<double> AllValues(VyrBaseData& doc) {
    std::vector<double> values;
    wxVyrListEntityNode* node = doc.GetFirstEntityNode(VYR_KIND_VECTEUR);
    while (node) {
        VyrVecteur* v = static_cast<VyrVecteur*>(doc.GetNextEntity(&node, VYR_KIND_VECTEUR));
        values.insert(values.end(), v->GetArea(), v->GetArea() + v->GetSize());
    }
    return values;
}

void SetFileCounters(benchmark::State& state, long fileSize, int64_t numbers) {
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * fileSize);
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()) * numbers);
    state.counters["file_MB"] = fileSize / 1e6;
}

int Curves(const benchmark::State& state) {
    return static_cast<int>(state.range(0));
}

int Points(const benchmark::State& state) {
    return static_cast<int>(state.range(1));
}

// ---- The bare work ---------------------------------------------------------------------------

void AppendUnit(std::string& out, char c) {
    out.push_back(c);
    out.push_back('\0');
}

// The numbers as the vector tables lay them out, in UTF-16LE: "%g", a line break after every
// fourth, a tab after each.
std::string NumbersAsUtf16(const std::vector<double>& values) {
    std::string text;
    text.reserve(values.size() * 20);
    char digits[64];
    for (size_t i = 0; i < values.size(); ++i) {
        const char* end =
            std::to_chars(digits, digits + sizeof digits, values[i], std::chars_format::general, 6)
                .ptr;
        for (const char* p = digits; p < end; ++p)
            AppendUnit(text, *p);
        if (i > 0 && (i + 1) % 4 == 0) {
            AppendUnit(text, '\r');
            AppendUnit(text, '\n');
        }
        AppendUnit(text, '\t');
    }
    return text;
}

bool IsSeparator(unsigned unit) {
    return unit == '\t' || unit == '\r' || unit == '\n';
}

// from_chars over every token of the UTF-16 text, narrowed on the fly into a small buffer.
size_t BareParse(const std::string& text, double* out) {
    const unsigned char* p = reinterpret_cast<const unsigned char*>(text.data());
    const size_t units = text.size() / 2;
    size_t count = 0;
    size_t i = 0;
    char narrow[64];
    while (i < units) {
        while (i < units && IsSeparator(p[2 * i] | (p[2 * i + 1] << 8)))
            ++i;
        size_t n = 0;
        while (i < units) {
            const unsigned unit = p[2 * i] | (p[2 * i + 1] << 8);
            if (IsSeparator(unit))
                break;
            if (n < sizeof narrow)
                narrow[n++] = static_cast<char>(unit);
            ++i;
        }
        if (n > 0 && std::from_chars(narrow, narrow + n, out[count]).ec == std::errc())
            ++count;
    }
    return count;
}

// to_chars ("%g") of every number, widened into a UTF-16 buffer with the table separators.
size_t BareFormat(const std::vector<double>& values, std::string& text) {
    text.clear();
    char digits[64];
    size_t size = 0;
    // Grown in large steps and written through a pointer, as a buffered writer does.
    for (size_t i = 0; i < values.size(); ++i) {
        if (text.size() < size + 128)
            text.resize(text.size() + (1 << 20));
        char* out = &text[size];
        const char* end =
            std::to_chars(digits, digits + sizeof digits, values[i], std::chars_format::general, 6)
                .ptr;
        for (const char* p = digits; p < end; ++p) {
            *out++ = *p;
            *out++ = '\0';
        }
        if (i > 0 && (i + 1) % 4 == 0) {
            *out++ = '\r';
            *out++ = '\0';
            *out++ = '\n';
            *out++ = '\0';
        }
        *out++ = '\t';
        *out++ = '\0';
        size = static_cast<size_t>(out - text.data());
    }
    text.resize(size);
    return size;
}

// ---- Benchmarks ------------------------------------------------------------------------------

void BM_Save(benchmark::State& state) {
    VyrBaseData doc(nullptr);
    BuildDocument(doc, Curves(state), Points(state));
    const std::string path = TempPath("save.vyr");
    for (auto _ : state) {
        if (!doc.Save(wxString(path)))
            state.SkipWithError("save failed");
    }
    SetFileCounters(state, FileSize(path), 2LL * Curves(state) * Points(state));
    std::remove(path.c_str());
}

// The same save with every number in its shortest exact text (SetExactNumbers), as the tools
// save: the values of BuildDocument need up to 17 digits where "%g" writes 6.
void BM_SaveExact(benchmark::State& state) {
    VyrBaseData doc(nullptr);
    doc.SetExactNumbers(true);
    BuildDocument(doc, Curves(state), Points(state));
    const std::string path = TempPath("save-exact.vyr");
    for (auto _ : state) {
        if (!doc.Save(wxString(path)))
            state.SkipWithError("save failed");
    }
    SetFileCounters(state, FileSize(path), 2LL * Curves(state) * Points(state));
    std::remove(path.c_str());
}

void BM_BareFormat(benchmark::State& state) {
    VyrBaseData doc(nullptr);
    BuildDocument(doc, Curves(state), Points(state));
    const std::vector<double> values = AllValues(doc);
    std::string text;
    size_t size = 0;
    for (auto _ : state) {
        size = BareFormat(values, text);
        benchmark::DoNotOptimize(text.data());
    }
    SetFileCounters(state, static_cast<long>(size), static_cast<int64_t>(values.size()));
}

void BM_Load(benchmark::State& state) {
    const std::string path = TempPath("load.vyr");
    {
        VyrBaseData doc(nullptr);
        BuildDocument(doc, Curves(state), Points(state));
        doc.Save(wxString(path));
    }
    VyrBaseData doc(nullptr);
    // One load before the timing, so that every size is timed in the same state: loads that
    // follow loads, as in a session. Without it the large sizes, one timed iteration each, were
    // timed on memory the process had never touched, which a virtual machine backs only at the
    // first touch (nearly half of a 10^7-point load here), while the small sizes averaged over many
    // iterations on memory already in use.
    if (!doc.Load(wxString(path)))
        state.SkipWithError("load failed");
    for (auto _ : state) {
        if (!doc.Load(wxString(path)))
            state.SkipWithError("load failed");
    }
    SetFileCounters(state, FileSize(path), 2LL * Curves(state) * Points(state));
    std::remove(path.c_str());
}

void BM_BareParse(benchmark::State& state) {
    std::string text;
    size_t count = 0;
    {
        VyrBaseData doc(nullptr);
        BuildDocument(doc, Curves(state), Points(state));
        const std::vector<double> values = AllValues(doc);
        count = values.size();
        text = NumbersAsUtf16(values);
    }
    std::vector<double> out(count);
    for (auto _ : state) {
        if (BareParse(text, out.data()) != count)
            state.SkipWithError("parse failed");
        benchmark::DoNotOptimize(out.data());
    }
    SetFileCounters(state, static_cast<long>(text.size()), static_cast<int64_t>(count));
}

// One Load into an empty document after a reset of the peak: the peak above the resident set
// before the Load, divided by the data of the loaded document.
void BM_LoadPeakMemory(benchmark::State& state) {
    const std::string path = TempPath("peak.vyr");
    {
        VyrBaseData built(nullptr);
        BuildDocument(built, Curves(state), Points(state));
        built.Save(wxString(path));
    }
    vyrbench::MeasureReadingPeak(state, path,
                                 [&](VyrBaseData& doc) { return doc.Load(wxString(path)); });
    std::remove(path.c_str());
}

// Arguments: curves and points per curve: one curve of 10^4 to 10^7 points, and 100 curves of
// 10^4 points.
void Sizes(benchmark::internal::Benchmark* b) {
    for (int n : {10000, 100000, 1000000, 10000000})
        b->Args({1, n});
    b->Args({100, 10000});
    b->ArgNames({"curves", "points"});
}

}  // namespace

// Wall-clock time, so that the throughput includes the file system's share.
BENCHMARK(BM_Save)->Apply(Sizes)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveExact)->Apply(Sizes)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BareFormat)->Apply(Sizes)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Load)->Apply(Sizes)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BareParse)->Apply(Sizes)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadPeakMemory)->Apply(Sizes)->Iterations(1)->Unit(benchmark::kMillisecond);

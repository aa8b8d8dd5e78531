// Hostile and huge inputs of the document reader: each is answered (true or false) quickly and
// without a large allocation. Reported per input: the time of one LoadFromMemory, its answer,
// the input's size, and the peak memory reached above the resident set before the load (peak
// resident set reset through /proc/self/clear_refs), in MB. The last case is a genuine document
// of 10^7 points, which must still load (its own data then dominates the peak).
#include <benchmark/benchmark.h>

#include <cstdio>
#include <fstream>
#include <random>
#include <string>

#include <unistd.h>

#include "BenchMemory.h"
#include "vyrbase/VyrBase.h"

namespace {

using vyrbench::ResetPeak;
using vyrbench::StatusBytes;

std::string Utf16(const std::wstring& text) {
    std::string bytes("\xFF\xFE", 2);
    bytes.reserve(2 + 2 * text.size());
    for (wchar_t c : text) {
        bytes.push_back(static_cast<char>(c & 0xFF));
        bytes.push_back(static_cast<char>((c >> 8) & 0xFF));
    }
    return bytes;
}

// A report whose packed data declares 99 999 999 bytes for a stream of a few bytes.
std::string DeclaredLengthBomb() {
    return Utf16(L"[compte_rendu]\r\n\toid = 1\r\n\tdata = \"U99999999 " + std::wstring(64, L'A') +
                 L"\"\r\n");
}

// A picture whose JPEG declares 20000 x 20000 pixels in a few hundred bytes.
std::string HugePictureBomb() {
    std::string jpeg = "\xFF\xD8";
    // Frame header: 8-bit samples, height 20000, width 20000, one component.
    jpeg += std::string("\xFF\xC0\x00\x0B\x08\x4E\x20\x4E\x20\x01\x01\x11\x00", 13);
    // Scan header and a little entropy-coded data, then the end marker.
    jpeg += std::string("\xFF\xDA\x00\x08\x01\x01\x00\x00\x3F\x00", 10);
    jpeg += std::string(500, '\x55');
    jpeg += "\xFF\xD9";
    std::string base64(VyrEncodeBase64::GetSizeEncode64(76, static_cast<int>(jpeg.size())), '\0');
    int length = 0;
    VyrEncodeBase64::EncodeBinaryToBase64(reinterpret_cast<unsigned char*>(&jpeg[0]),
                                          reinterpret_cast<unsigned char*>(&base64[0]), 76,
                                          static_cast<int>(jpeg.size()), &length);
    base64.resize(static_cast<size_t>(length));
    return Utf16(L"[image_Redy]\r\n\toid = 1\r\n\tdata = \"" +
                 std::wstring(base64.begin(), base64.end()) + L"\"\r\n");
}

// 100 MB of random bytes; `nonZero` leaves out the zero byte that would end the text early.
std::string Garbage(bool nonZero, const std::string& prefix) {
    std::mt19937_64 random(42);
    std::string bytes = prefix;
    const size_t size = 100u << 20;
    bytes.reserve(size);
    while (bytes.size() < size) {
        uint64_t word = random();
        for (int i = 0; i < 8 && bytes.size() < size; ++i, word >>= 8) {
            char c = static_cast<char>(word & 0xFF);
            if (nonZero && c == 0)
                c = 'z';
            bytes.push_back(c);
        }
    }
    return bytes;
}

// A curve comment whose quote is never closed, over a million lines.
std::string UnclosedQuote() {
    std::string text = "[courbe]\r\n\toid = 2\r\n\tcommentaire = \"the quote opens here\r\n";
    for (int i = 0; i < 1000000; ++i)
        text += "\tline of a comment that never ends\r\n";
    return text;
}

// A genuine document of one curve of 10^7 points, as Save writes it.
std::string TenMillionPoints() {
    VyrBaseData doc(nullptr);
    VyrExperienceParam ep(L"Long recording");
    VyrExperience* e = doc.CreateExperience(ep);
    VyrCourbeParam p;
    p.m_sGrdX = L"t";
    p.m_sUniteX = L"s";
    p.m_sGrdY = L"U";
    p.m_sUniteY = L"V";
    VyrCourbe* c = doc.CreateCourbe(e, p, nullptr, false);
    const int n = 10000000;
    c->SetSize(n);
    for (int i = 0; i < n; ++i) {
        c->GetVx()->GetArea()[i] = i * 1e-4;
        c->GetVy()->GetArea()[i] = (i % 1000) * 0.001;
    }
    const std::string path = "/tmp/vyr_bench_bombs_" + std::to_string(getpid()) + ".vyr";
    std::string bytes;
    if (doc.Save(path)) {
        std::ifstream in(path, std::ios::binary);
        bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    std::remove(path.c_str());
    return bytes;
}

template <class Make>
void RunBomb(benchmark::State& state, Make make) {
    const std::string bytes = make();
    if (bytes.empty()) {
        state.SkipWithError("no input");
        return;
    }
    double peak = 0;
    bool loaded = false;
    int entities = 0;
    for (auto _ : state) {
        VyrBaseData doc(nullptr);
        state.PauseTiming();
        ResetPeak();
        const long before = StatusBytes("VmRSS:");
        state.ResumeTiming();
        loaded = doc.LoadFromMemory(bytes.data(), bytes.size());
        state.PauseTiming();
        peak = std::max(peak, static_cast<double>(StatusBytes("VmHWM:") - before));
        entities = static_cast<int>(doc.GetEntityList().GetCount());
        state.ResumeTiming();
    }
    state.counters["input_MB"] = bytes.size() / 1e6;
    state.counters["peak_MB"] = peak / 1e6;
    state.counters["loaded"] = loaded;
    state.counters["entities"] = entities;
}

void BM_Bomb_DeclaredLength(benchmark::State& state) {
    RunBomb(state, DeclaredLengthBomb);
}
void BM_Bomb_HugePicture(benchmark::State& state) {
    RunBomb(state, HugePictureBomb);
}
void BM_Bomb_Garbage(benchmark::State& state) {
    RunBomb(state, [] { return Garbage(false, ""); });
}
void BM_Bomb_GarbageWithoutZero(benchmark::State& state) {
    RunBomb(state, [] { return Garbage(true, ""); });
}
void BM_Bomb_GarbageUtf16WithoutZero(benchmark::State& state) {
    RunBomb(state, [] { return Garbage(true, "\xFF\xFE"); });
}
// Garbage behind a header: kept as an unknown section, which is the document's own data.
void BM_Bomb_GarbageAfterAHeader(benchmark::State& state) {
    RunBomb(state, [] { return Garbage(true, "[x]\r\n"); });
}
void BM_Bomb_UnclosedQuote(benchmark::State& state) {
    RunBomb(state, UnclosedQuote);
}
void BM_Load_TenMillionPoints(benchmark::State& state) {
    RunBomb(state, TenMillionPoints);
}

}  // namespace

BENCHMARK(BM_Bomb_DeclaredLength)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bomb_HugePicture)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bomb_Garbage)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bomb_GarbageWithoutZero)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bomb_GarbageUtf16WithoutZero)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bomb_GarbageAfterAHeader)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bomb_UnclosedQuote)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Load_TenMillionPoints)->Iterations(1)->Unit(benchmark::kMillisecond);

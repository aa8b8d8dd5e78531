// Painting a whole diagram of one dense curve into a 1200 x 800 picture (wxGCDC on a cairo
// image context, antialiased as vyr render draws), with 10^4 to 10^7 points: as a joined line
// (line style 1) and as markers (marker style 2, and 4 on the noisy one; no line), of a smooth
// recording and of a noisy one. The counter "per_column" is the time per visible pixel column;
// since a pixel column of a line costs a few primitives whatever the number of its points, the time
// of a line grows with the points only through the pass over them.
#include <cmath>
#include <memory>

#include <benchmark/benchmark.h>

#include <wx/dc.h>
#include <wx/dcgraph.h>
#include <wx/graphics.h>
#include <wx/image.h>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace {

const int kWidth = 1200;
const int kHeight = 800;

// A document with one curve of `count` points: a few periods of a sine, as a recording would
// give, spread over the whole plot.
struct DenseDiagram {
    VyrBaseData doc{nullptr};
    VyrDiagram* diagram = nullptr;

    DenseDiagram(int count, int stylePoint, int styleLiaison, bool noisy) {
        VyrExperienceParam e("E1");
        VyrCourbeParam p;
        p.m_sNom = "U(t)";
        p.m_sGrdX = "t";
        p.m_sUniteX = "s";
        p.m_sGrdY = "U";
        p.m_sUniteY = "V";
        p.m_iWidth = 1;
        p.m_iStylePoint = stylePoint;
        p.m_iStyleLiaison = styleLiaison;
        VyrCourbe* c = doc.CreateCourbe(doc.CreateExperience(e), p, nullptr, false);
        // A sine, with a little noise as a sensor gives it when `noisy`.
        c->SetSize(count);
        double* x = c->GetVx()->GetArea();
        double* y = c->GetVy()->GetArea();
        for (int i = 0; i < count; ++i) {
            const double t = 10.0 * i / count;
            x[i] = t;
            y[i] = std::sin(2.0 * M_PI * 0.5 * t) + (noisy ? 0.05 * std::sin(i * 1.7) : 0.0);
        }
        c->SetShownInDiagram(0, true);
        diagram = doc.GetDiagram(0);
        diagram->Fill();
        wxRect plot(0, 0, kWidth, kHeight);
        diagram->Move(plot);
        diagram->SetAutoScale();
    }
};

void Run(benchmark::State& state, int stylePoint, int styleLiaison, bool noisy) {
    DenseDiagram scene(static_cast<int>(state.range(0)), stylePoint, styleLiaison, noisy);
    wxImage image(kWidth, kHeight);
    std::unique_ptr<wxGCDC> dc(
        new wxGCDC(wxGraphicsRenderer::GetCairoRenderer()->CreateContextFromImage(image)));
    for (auto _ : state)
        scene.diagram->Paint(dc.get(), false, false, false, 1.0, nullptr, false);
    state.counters["per_column"] = benchmark::Counter(
        kWidth, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// The noisy recording as a line: each pixel column costs a few primitives.
void BM_PaintLine(benchmark::State& state) {
    Run(state, 0, 1, true);
}

// The smooth recording as markers: one marker per change of pixel from one point to the next.
void BM_PaintMarkers(benchmark::State& state) {
    Run(state, 2, 0, false);
}

// The noisy recording as markers: consecutive points land on different pixels, but the same
// few pixels of each column again and again; each pixel position is drawn once, so past the
// plot's own number of distinct positions the cost follows the pixels, not the points.
void BM_PaintMarkersNoisy(benchmark::State& state) {
    Run(state, 2, 0, true);
}

// The same with hollow squares (marker style 4), the figure of the widest strokes.
void BM_PaintSquaresNoisy(benchmark::State& state) {
    Run(state, 4, 0, true);
}

}  // namespace

BENCHMARK(BM_PaintLine)->RangeMultiplier(10)->Range(10000, 10000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PaintMarkers)
    ->RangeMultiplier(10)
    ->Range(10000, 10000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PaintMarkersNoisy)
    ->RangeMultiplier(10)
    ->Range(10000, 10000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PaintSquaresNoisy)
    ->RangeMultiplier(10)
    ->Range(100000, 10000000)
    ->Unit(benchmark::kMillisecond);

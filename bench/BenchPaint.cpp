// Painting a whole diagram of one dense curve into a 1200 x 800 picture (wxGCDC on a cairo
// image context), with 10^4 and 10^6 points: as a joined line (line style 1) and as markers
// (marker style 2, no line). The counter "per_column" is the time per visible pixel column;
// for markers it should not grow with the point count, since repeated pixels are skipped.
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

    DenseDiagram(int count, int stylePoint, int styleLiaison) {
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
        c->PreAlloc(count);
        for (int i = 0; i < count; ++i) {
            const double t = 10.0 * i / count;
            doc.AddPoint(c, t, std::sin(2.0 * M_PI * 0.5 * t), false);
        }
        c->SetShownInDiagram(0, true);
        diagram = doc.GetDiagram(0);
        diagram->Fill();
        wxRect plot(0, 0, kWidth, kHeight);
        diagram->Move(plot);
        diagram->SetAutoScale();
    }
};

void Run(benchmark::State& state, int stylePoint, int styleLiaison) {
    DenseDiagram scene(static_cast<int>(state.range(0)), stylePoint, styleLiaison);
    wxImage image(kWidth, kHeight);
    std::unique_ptr<wxGCDC> dc(
        new wxGCDC(wxGraphicsRenderer::GetCairoRenderer()->CreateContextFromImage(image)));
    for (auto _ : state)
        scene.diagram->Paint(dc.get(), false, false, false, 1.0, nullptr, false);
    state.counters["per_column"] = benchmark::Counter(
        kWidth, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_PaintLine(benchmark::State& state) {
    Run(state, 0, 1);
}

void BM_PaintMarkers(benchmark::State& state) {
    Run(state, 2, 0);
}

}  // namespace

BENCHMARK(BM_PaintLine)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PaintMarkers)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond);

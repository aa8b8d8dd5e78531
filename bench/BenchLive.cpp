// The live acquisition flow: points appended one at a time with notification while diagram 0
// observes and a 1200 x 800 picture is repainted every 10,000 points (AddPoint in order, and
// AddSortPoint fed slightly out of order), a 10^7-point recording painted zoomed to 10 %, 1 % and
// 0.1 % of its X range at its start and in its middle, and a growing 10^7-point recording whose
// frame is appended to and repainted at full view and zoomed onto its newest points, and one
// full-view paint of a recording of 10^4 and 10^6 points.
#include <climits>
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
#include "vyrbase/data/VyrScale.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace {

const int kWidth = 1200;
const int kHeight = 800;
const int kRepaintEvery = 10000;

// One document, one experiment, one curve U(t) shown in diagram 0, which observes the document.
struct LiveScene {
    VyrBaseData doc{nullptr};
    VyrCourbe* courbe = nullptr;
    VyrDiagram* diagram = nullptr;
    wxImage image{kWidth, kHeight};
    std::unique_ptr<wxGCDC> dc;

    LiveScene(int stylePoint, int styleLiaison) {
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
        courbe = doc.CreateCourbe(doc.CreateExperience(e), p, nullptr, false);
        courbe->SetShownInDiagram(0, true);
        diagram = doc.GetDiagram(0);
        diagram->Fill();
        wxRect plot(0, 0, kWidth, kHeight);
        diagram->Move(plot);
        diagram->SetAutoScale();
        dc.reset(new wxGCDC(wxGraphicsRenderer::GetCairoRenderer()->CreateContextFromImage(image)));
    }

    void Paint() { diagram->Paint(dc.get(), false, false, false, 1.0, nullptr, false); }

    // A recording of `count` points written at once (as a file load gives it), then the diagram
    // told once.
    void Record(int count) {
        courbe->SetSize(count);
        double* x = courbe->GetVx()->GetArea();
        double* y = courbe->GetVy()->GetArea();
        for (int i = 0; i < count; ++i) {
            x[i] = Time(i);
            y[i] = Signal(i);
        }
        // Written through the storage and done with it, as the file reader does.
        courbe->GetVx()->ValuesChanged();
        courbe->GetVy()->ValuesChanged();
        diagram->Fill();
        diagram->SetAutoScale();
    }

    static double Time(int i) { return 1e-3 * i; }
    static double Signal(int i) {
        return std::sin(2.0 * M_PI * 1e-5 * i) + 0.05 * std::sin(i * 1.7);
    }
};

// Appends state.range(0) points with notification, repainting every 10,000 points (range(1)
// 1) or never (0: what the document and the diagrams cost, without the pictures).
void BM_AppendNotified(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const int repaintEvery = state.range(1) ? kRepaintEvery : INT_MAX;
    for (auto _ : state) {
        state.PauseTiming();
        LiveScene scene(0, 1);
        state.ResumeTiming();
        for (int i = 0; i < count; ++i) {
            scene.doc.AddPoint(scene.courbe, LiveScene::Time(i), LiveScene::Signal(i), true);
            if ((i + 1) % repaintEvery == 0)
                scene.Paint();
        }
        benchmark::DoNotOptimize(scene.diagram->GetScale()->GetYmax());
    }
    state.counters["per_point"] = benchmark::Counter(
        static_cast<double>(count),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// The same through AddSortPoint, the X values slightly out of order: each point of a pair of
// consecutive points arrives second, so that every other point is inserted one place before
// the end.
void BM_AppendSortNotified(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const int repaintEvery = state.range(1) ? kRepaintEvery : INT_MAX;
    for (auto _ : state) {
        state.PauseTiming();
        LiveScene scene(0, 1);
        state.ResumeTiming();
        for (int i = 0; i < count; ++i) {
            const int k = (i % 2 == 0) ? i + 1 : i - 1;
            scene.doc.AddSortPoint(scene.courbe, LiveScene::Time(k), LiveScene::Signal(k), false,
                                   true);
            if ((i + 1) % repaintEvery == 0)
                scene.Paint();
        }
        benchmark::DoNotOptimize(scene.diagram->GetScale()->GetYmax());
    }
    state.counters["per_point"] = benchmark::Counter(
        static_cast<double>(count),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// Zooms the diagram's X range onto `permille` thousandths of the base range, from its start
// (where 0) or around its middle (where 1); Y stays whole.
void ZoomX(VyrDiagram* diagram, double fraction, bool middle) {
    VyrScale base = *diagram->GetScale();
    const double span = base.GetXmax() - base.GetXmin();
    const double from =
        middle ? base.GetXmin() + 0.5 * span - 0.5 * fraction * span : base.GetXmin();
    VyrScale zoom;
    zoom.Set(from, from + fraction * span, base.GetYmin(), base.GetYmax());
    diagram->SetZoom(&zoom);
}

// One paint of a 10^7-point line zoomed to range(0) per mille of its X range, at its start
// (range(1) 0) or in its middle (1). Markers with range(2) 1.
void BM_PaintZoomed(benchmark::State& state) {
    LiveScene scene(state.range(2) ? 2 : 0, state.range(2) ? 0 : 1);
    scene.Record(10000000);
    ZoomX(scene.diagram, state.range(0) / 1000.0, state.range(1) != 0);
    for (auto _ : state)
        scene.Paint();
}

// The frame of a live view onto a 10^7-point recording: 1,000 points appended with
// notification, then one paint, at full view (range(0) 0) or zoomed onto the newest 1 % of the
// X range (1, the view following the acquisition).
void BM_PaintGrowing(benchmark::State& state) {
    const int start = 10000000;
    const int frame = 1000;
    LiveScene scene(0, 1);
    scene.Record(start);
    int next = start;
    for (auto _ : state) {
        for (int i = 0; i < frame; ++i, ++next)
            scene.doc.AddPoint(scene.courbe, LiveScene::Time(next), LiveScene::Signal(next), true);
        if (state.range(0)) {
            const VyrScale& base = *scene.diagram->GetScale();
            VyrScale zoom;
            const double span = base.GetXmax() - base.GetXmin();
            zoom.Set(base.GetXmax() - 0.01 * span, base.GetXmax(), base.GetYmin(), base.GetYmax());
            scene.diagram->SetZoom(&zoom);
        }
        scene.Paint();
    }
}

// One paint at full view of a recording of range(0) points: what each repaint of the live flow
// costs once the recording has reached that size.
void BM_PaintFull(benchmark::State& state) {
    LiveScene scene(0, 1);
    scene.Record(static_cast<int>(state.range(0)));
    for (auto _ : state)
        scene.Paint();
}

}  // namespace

BENCHMARK(BM_AppendNotified)
    ->ArgsProduct({{10000, 100000, 1000000}, {1, 0}})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_AppendSortNotified)
    ->ArgsProduct({{10000, 100000, 1000000}, {1, 0}})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PaintZoomed)
    ->ArgsProduct({{100, 10, 1}, {0, 1}, {0}})
    ->Args({1, 1, 1})
    ->Args({10, 1, 1})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PaintGrowing)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PaintFull)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond);

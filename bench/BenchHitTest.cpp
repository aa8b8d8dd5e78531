// Hit testing a dense recording (one curve of n points on an 800 x 600 plot) and building the
// XY curve of two recordings of n points sampled at interleaved times.
#include <benchmark/benchmark.h>

#include <cmath>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"
#include "vyrbase/diagram/VyrDiagramViewAccess.h"

namespace {

VyrCourbe* AddCurve(VyrBaseData& doc, VyrExperience* e, const wxString& grdY, int n,
                    double offset) {
    VyrCourbeParam p;
    p.m_sNom = grdY;
    p.m_sGrdX = "t";
    p.m_sUniteX = "s";
    p.m_sGrdY = grdY;
    p.m_sUniteY = "V";
    VyrCourbe* c = doc.CreateCourbe(e, p, nullptr, false);
    c->SetSize(n);
    for (int i = 0; i < n; ++i) {
        const double t = i + offset;
        c->GetVx()->SetVal(i, t);
        c->GetVy()->SetVal(i, std::sin(t * 0.001) * 10.0);
    }
    return c;
}

void BM_HitTestCurvePlusProche(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    VyrBaseData doc(nullptr);
    VyrExperienceParam ep("E");
    VyrExperience* e = doc.CreateExperience(ep);
    VyrCourbe* c = AddCurve(doc, e, "U", n, 0.0);
    VyrDiagram* d = doc.GetDiagram(0);
    d->ShowData(c, true);
    wxRect plot(40, 20, 800, 600);
    d->Move(plot);
    int index = -1;
    for (auto _ : state) {
        VyrCourbe* hit =
            VyrDiagramViewAccess::HitTestCurvePlusProche(d, wxPoint(440, 320), 25, &index);
        benchmark::DoNotOptimize(hit);
    }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_HitTestCurvePlusProche)->Arg(10000)->Arg(1000000);

void BM_CreateCurvesForXY(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    VyrBaseData doc(nullptr);
    VyrExperienceParam ep("E");
    VyrExperience* e = doc.CreateExperience(ep);
    VyrCourbe* c = AddCurve(doc, e, "U", n, 0.0);
    AddCurve(doc, e, "W", n, 0.5);
    VyrDiagram* d = doc.GetDiagram(0);
    for (auto _ : state)
        d->CreateCurvesForXY(c);  // the XY curve is reused and refilled every time
    state.SetItemsProcessed(state.iterations() * 2 * n);
}
BENCHMARK(BM_CreateCurvesForXY)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace

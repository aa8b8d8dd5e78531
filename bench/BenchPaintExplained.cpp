// What the explained picture (VyrDiagramOption) costs over the classic one: a diagram of two
// dense curves in two units (a voltage and a current, as a recording of a circuit gives), painted
// into a 1200 x 800 picture with 10^4 to 10^6 points a curve, with no option and with every
// option. The layout passes once over the points of every curve to find where the legend covers
// the fewest drawn pixels; the scale of the second unit and the heading are a few texts.
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

struct TwoUnitDiagram {
    VyrBaseData doc{nullptr};
    VyrDiagram* diagram = nullptr;

    explicit TwoUnitDiagram(int count) {
        VyrExperienceParam e("E1");
        VyrExperience* experience = doc.CreateExperience(e);
        for (int k = 0; k < 2; ++k) {
            VyrCourbeParam p;
            p.m_sNom = k == 0 ? "U(t)" : "I(t)";
            p.m_sGrdX = "t";
            p.m_sUniteX = "s";
            p.m_sGrdY = k == 0 ? "U" : "I";
            p.m_sUniteY = k == 0 ? "V" : "mA";
            p.m_iWidth = 1;
            p.m_iStyleLiaison = 1;
            VyrCourbe* c = doc.CreateCourbe(experience, p, nullptr, false);
            c->SetSize(count);
            double* x = c->GetVx()->GetArea();
            double* y = c->GetVy()->GetArea();
            for (int i = 0; i < count; ++i) {
                const double t = 0.02 * i / count;
                x[i] = t;
                y[i] = (k == 0 ? 5.0 : 25.0) * std::exp(-t / 0.005) *
                       std::cos(2.0 * M_PI * 400.0 * t + k);
            }
            c->SetShownInDiagram(0, true);
        }
        diagram = doc.GetDiagram(0);
        diagram->Fill();
        wxRect plot(10, 10, kWidth - 20, kHeight - 20);
        diagram->Move(plot);
        diagram->SetAutoScale();
    }
};

void Run(benchmark::State& state, int options) {
    TwoUnitDiagram scene(static_cast<int>(state.range(0)));
    scene.diagram->SetOptions(options);
    wxImage image(kWidth, kHeight);
    std::unique_ptr<wxGCDC> dc(
        new wxGCDC(wxGraphicsRenderer::GetCairoRenderer()->CreateContextFromImage(image)));
    for (auto _ : state)
        scene.diagram->Paint(dc.get(), false, false, false, 1.0, nullptr, false);
}

void BM_PaintTwoUnitsClassic(benchmark::State& state) {
    Run(state, 0);
}

void BM_PaintTwoUnitsExplained(benchmark::State& state) {
    Run(state, VYR_OPTIONS_EXPLAINED);
}

}  // namespace

BENCHMARK(BM_PaintTwoUnitsClassic)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PaintTwoUnitsExplained)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);

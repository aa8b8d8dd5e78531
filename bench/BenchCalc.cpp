// The calculator on large curves: the amplitude spectrum of 2^20 points and a calculated curve
// of two operands over 10^7 points.
#include <benchmark/benchmark.h>

#include <cmath>

#include "vyrbase/calc/VyrAmplitudeSpectrum.h"
#include "vyrbase/calc/VyrCurveCalculator.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

// A document with one experiment holding U(t) and I(t) of n points sampled every 10 µs.
struct Circuit {
    VyrBaseData doc{nullptr};
    VyrExperience* e = nullptr;
    VyrCourbe* u = nullptr;
    VyrCourbe* i = nullptr;

    explicit Circuit(int n) {
        VyrExperienceParam ep("E");
        e = doc.CreateExperience(ep);
        u = Make("U", "V", n, [](double t) { return 3 * std::sin(2 * M_PI * 440 * t) + 0.5; });
        i = Make("I", "A", n, [](double t) { return 0.01 * std::cos(2 * M_PI * 50 * t); });
    }

    template <class F>
    VyrCourbe* Make(const char* quantity, const char* unit, int n, F value) {
        VyrCourbeParam p;
        p.m_sNom = quantity;
        p.m_sNomVx = p.m_sNom + "VX";
        p.m_sNomVy = p.m_sNom + "VY";
        p.m_sGrdX = "t";
        p.m_sUniteX = "s";
        p.m_sGrdY = quantity;
        p.m_sUniteY = unit;
        VyrCourbe* c = doc.CreateCourbe(e, p, nullptr, false);
        c->SetSize(n);
        double* x = c->GetVx()->GetArea();
        double* y = c->GetVy()->GetArea();
        for (int k = 0; k < n; ++k) {
            x[k] = k * 1e-5;
            y[k] = value(x[k]);
            c->GetVx()->ValidateAt(k, true);
            c->GetVy()->ValidateAt(k, true);
        }
        return c;
    }
};

void BM_Spectrum(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    Circuit circuit(n);
    VyrAmplitudeSpectrum spectrum;
    for (auto _ : state) {
        if (!spectrum.Compute(circuit.u))
            state.SkipWithError("spectrum refused");
        benchmark::DoNotOptimize(spectrum.GetAmplitudes().data());
    }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_Spectrum)->Arg(1 << 20)->Unit(benchmark::kMillisecond);

// P = U*I with both operands on the same abscissas, kept as a curve of the document.
void BM_CalculatedCurve(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    Circuit circuit(n);
    VyrCurveCalculator calc(circuit.e);
    for (auto _ : state) {
        VyrCourbe* p = calc.Calculate("P = U*I");
        if (!p)
            state.SkipWithError("calculation refused");
        benchmark::DoNotOptimize(p);
    }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_CalculatedCurve)->Arg(10000000)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

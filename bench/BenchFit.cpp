// Fits and formulas on large measurements: a 6-parameter nonlinear fit of 10^5 points, and a
// formula evaluated over 10^7 abscissas.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "vyrbase/calc/VyrFit.h"
#include "vyrbase/calc/VyrFormula.h"

namespace {

// A damped oscillation on a drifting base line, with noise: six parameters, all nonlinear
// together.
void BM_Fit6Parameters(benchmark::State& state) {
    const size_t n = size_t(state.range(0));
    std::mt19937 rng(5);
    std::normal_distribution<double> noise(0.0, 0.05);
    std::vector<double> x(n), y(n);
    for (size_t i = 0; i < n; ++i) {
        x[i] = 0.02 * double(i) / double(n - 1);
        y[i] = 5 * std::exp(-x[i] / 0.004) * std::sin(2 * M_PI * 500 * x[i] + 1.2) + 0.3 +
               20 * x[i] + noise(rng);
    }
    bool converged = true;
    for (auto _ : state) {
        VyrFit fit;
        fit.SetFormula("A*exp(-x/tau)*sin(2*pi*f*x+phi)+C+D*x");
        fit.SetStart("A", 4);
        fit.SetStart("tau", 0.005);
        fit.SetStart("f", 490);
        fit.SetStart("phi", 1);
        fit.SetStart("C", 0);
        fit.SetStart("D", 0);
        converged = converged && fit.Fit(x.data(), y.data(), n);
        benchmark::DoNotOptimize(fit.GetValue(0));
    }
    if (!converged)
        state.SkipWithError("the fit did not converge");
    state.SetItemsProcessed(state.iterations() * int64_t(n));
}
BENCHMARK(BM_Fit6Parameters)->Arg(100000)->Unit(benchmark::kMillisecond);

// The built-in damped model, finding its starting values (spectrum, grid of time constants).
void BM_FitDampedModel(benchmark::State& state) {
    const size_t n = size_t(state.range(0));
    std::vector<double> x(n), y(n);
    for (size_t i = 0; i < n; ++i) {
        x[i] = 0.02 * double(i) / double(n - 1);
        y[i] = 5 * std::exp(-x[i] / 0.004) * std::sin(2 * M_PI * 500 * x[i] + 1.2);
    }
    for (auto _ : state) {
        VyrFit fit;
        fit.SetModel("damped");
        if (!fit.Fit(x.data(), y.data(), n))
            state.SkipWithError("the fit did not converge");
        benchmark::DoNotOptimize(fit.GetValue(0));
    }
    state.SetItemsProcessed(state.iterations() * int64_t(n));
}
BENCHMARK(BM_FitDampedModel)->Arg(100000)->Unit(benchmark::kMillisecond);

// A kinetic energy over 10^7 speeds, with the mass an experiment variable.
void BM_FormulaArray(benchmark::State& state) {
    const size_t n = size_t(state.range(0));
    std::vector<double> v(n), e(n);
    for (size_t i = 0; i < n; ++i)
        v[i] = 1e-6 * double(i);
    VyrFormula f;
    f.DeclareVariable("v");
    f.DeclareVariable("m", 0.2);
    f.Parse("0.5*m*v^2 + sin(v)");
    for (auto _ : state) {
        f.EvaluateArray("v", v.data(), e.data(), n);
        benchmark::DoNotOptimize(e.data());
    }
    state.SetItemsProcessed(state.iterations() * int64_t(n));
}
BENCHMARK(BM_FormulaArray)->Arg(10000000)->Unit(benchmark::kMillisecond);

}  // namespace

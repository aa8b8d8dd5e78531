// Point editing, sorting and interpolation on large curves.
#include <benchmark/benchmark.h>

#include <memory>
#include <random>
#include <vector>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

// A document with one experiment and one empty curve U(t).
struct Session {
    VyrBaseData doc{nullptr};
    VyrCourbe* curve = nullptr;
    Session() {
        VyrExperienceParam ep("E");
        VyrExperience* e = doc.CreateExperience(ep);
        VyrCourbeParam p;
        p.m_sNom = "C";
        p.m_sGrdX = "t";
        p.m_sUniteX = "s";
        p.m_sGrdY = "U";
        p.m_sUniteY = "V";
        curve = doc.CreateCourbe(e, p, nullptr, false);
    }
};

std::vector<double> RandomValues(int n, unsigned seed) {
    std::mt19937_64 rng(seed);
    std::uniform_real_distribution<double> dist(0.0, 1e6);
    std::vector<double> values(n);
    for (double& v : values)
        v = dist(rng);
    return values;
}

// Reports points per second, so that runs of different sizes compare directly (the time per
// point is its inverse).
void PerPoint(benchmark::State& state, int n) {
    state.SetItemsProcessed(state.iterations() * n);
}

// Appending one point at a time: the 100-point slack must keep the cost per point flat.
void BM_AddPoint(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto session = std::make_unique<Session>();
        state.ResumeTiming();
        for (int i = 0; i < n; ++i)
            session->doc.AddPoint(session->curve, i * 1e-3, i * 0.5, false);
        benchmark::DoNotOptimize(session->curve->GetVy()->GetArea());
        state.PauseTiming();
        session.reset();
        state.ResumeTiming();
    }
    PerPoint(state, n);
}
BENCHMARK(BM_AddPoint)->RangeMultiplier(10)->Range(10000, 10000000)->Unit(benchmark::kMillisecond);

// Inserting in X order, points arriving in random order: each insertion moves the later
// points up, so the whole run is quadratic in the number of points.
void BM_AddSortPoint(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const std::vector<double> xs = RandomValues(n, 1);
    for (auto _ : state) {
        state.PauseTiming();
        auto session = std::make_unique<Session>();
        state.ResumeTiming();
        for (int i = 0; i < n; ++i)
            session->doc.AddSortPoint(session->curve, xs[i], i, false, false);
        benchmark::DoNotOptimize(session->curve->GetVx()->GetArea());
        state.PauseTiming();
        session.reset();
        state.ResumeTiming();
    }
    PerPoint(state, n);
}
BENCHMARK(BM_AddSortPoint)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// Sorting a curve of random points (duplicates removed).
void BM_SortCurve(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const std::vector<double> xs = RandomValues(n, 2);
    Session session;
    session.curve->SetSize(n);
    for (auto _ : state) {
        state.PauseTiming();
        session.curve->SetSize(n);
        for (int i = 0; i < n; ++i) {
            session.curve->GetVx()->SetVal(i, xs[i]);
            session.curve->GetVy()->SetVal(i, i);
        }
        state.ResumeTiming();
        VyrBaseData::SortCurve(session.curve, true);
        benchmark::DoNotOptimize(session.curve->GetVx()->GetArea());
    }
    PerPoint(state, n);
}
BENCHMARK(BM_SortCurve)->RangeMultiplier(10)->Range(10000, 10000000)->Unit(benchmark::kMillisecond);

// A curve of n points at X = 0, 1, 2... and the n abscissas 0.5, 1.5, ... to read.
struct Walk {
    Session session;
    std::vector<double> at;
    explicit Walk(int n) {
        session.curve->SetSize(n);
        for (int i = 0; i < n; ++i) {
            session.curve->GetVx()->SetVal(i, i);
            session.curve->GetVy()->SetVal(i, 2.0 * i);
        }
        for (int i = 0; i + 1 < n; ++i)
            at.push_back(i + 0.5);
    }
};

// Walking increasing abscissas with the bracket of the previous call: linear overall.
void BM_InterpolateReusingStart(benchmark::State& state) {
    Walk walk(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        int start = 0;
        double y = 0.0, sum = 0.0;
        bool interpolated = false;
        for (double x : walk.at) {
            walk.session.curve->InterpolateEx(x, y, interpolated, nullptr, start);
            sum += y;
        }
        benchmark::DoNotOptimize(sum);
    }
    PerPoint(state, static_cast<int>(walk.at.size()));
}
BENCHMARK(BM_InterpolateReusingStart)
    ->RangeMultiplier(10)
    ->Range(10000, 10000000)
    ->Unit(benchmark::kMillisecond);

// The same walk searching from point 0 each time: quadratic, hence the smaller sizes.
void BM_InterpolateFromZero(benchmark::State& state) {
    Walk walk(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        double y = 0.0, sum = 0.0;
        bool interpolated = false;
        for (double x : walk.at) {
            walk.session.curve->Interpolate(x, y, interpolated, nullptr);
            sum += y;
        }
        benchmark::DoNotOptimize(sum);
    }
    PerPoint(state, static_cast<int>(walk.at.size()));
}
BENCHMARK(BM_InterpolateFromZero)
    ->Arg(10000)
    ->Arg(20000)
    ->Arg(40000)
    ->Unit(benchmark::kMillisecond);

}  // namespace

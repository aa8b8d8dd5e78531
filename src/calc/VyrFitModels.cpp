#include "calc/VyrFitModels.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstring>
#include <functional>
#include <vector>

#include <Eigen/Dense>
#include <kissfft.hh>

namespace {

// Starting values need the shape of the points, not all of them: grids of candidates are tried
// on at most this many, evenly chosen.
const size_t kSearchPoints = 2000;

struct Sample {
    std::vector<double> x, y;
};

Sample Thin(const double* x, const double* y, size_t n) {
    Sample s;
    const size_t m = std::min(n, kSearchPoints);
    for (size_t k = 0; k < m; ++k) {
        const size_t i = m > 1 ? k * (n - 1) / (m - 1) : 0;
        s.x.push_back(x[i]);
        s.y.push_back(y[i]);
    }
    return s;
}

// Least squares of y on the columns that basis(x, row) fills; the coefficients and the
// residual sum of squares (infinite when the columns are not finite).
double LinearFit(const Sample& s, int columns, const std::function<void(double, double*)>& basis,
                 Eigen::VectorXd& c) {
    const Eigen::Index n = Eigen::Index(s.x.size());
    Eigen::MatrixXd a(n, columns);
    Eigen::VectorXd y(n);
    std::vector<double> row(columns);
    for (Eigen::Index i = 0; i < n; ++i) {
        basis(s.x[i], row.data());
        for (int k = 0; k < columns; ++k)
            a(i, k) = row[k];
        y(i) = s.y[i];
    }
    if (!a.allFinite())
        return INFINITY;
    c = a.colPivHouseholderQr().solve(y);
    const double rss = (a * c - y).squaredNorm();
    return std::isfinite(rss) && c.allFinite() ? rss : INFINITY;
}

void StartPolynomial(const double* x, const double* y, size_t n, double* p, int degree) {
    Sample s;
    s.x.assign(x, x + n);
    s.y.assign(y, y + n);
    Eigen::VectorXd c;
    LinearFit(
        s, degree + 1,
        [degree](double v, double* row) {
            double power = 1.0;
            for (int k = 0; k <= degree; ++k, power *= v)
                row[k] = power;
        },
        c);
    for (int k = 0; k <= degree; ++k)
        p[k] = c.size() > k && std::isfinite(c(k)) ? c(k) : 0.0;
}

void StartLinear(const double* x, const double* y, size_t n, double* p) {
    double sxy = 0, sxx = 0;
    for (size_t i = 0; i < n; ++i) {
        sxy += x[i] * y[i];
        sxx += x[i] * x[i];
    }
    p[0] = sxx > 0 ? sxy / sxx : 1.0;
}

void StartAffine(const double* x, const double* y, size_t n, double* p) {
    double c[2];
    StartPolynomial(x, y, n, c, 1);
    p[0] = c[1];
    p[1] = c[0];
}

void StartPoly2(const double* x, const double* y, size_t n, double* p) {
    StartPolynomial(x, y, n, p, 2);
}
void StartPoly3(const double* x, const double* y, size_t n, double* p) {
    StartPolynomial(x, y, n, p, 3);
}
void StartPoly4(const double* x, const double* y, size_t n, double* p) {
    StartPolynomial(x, y, n, p, 4);
}
void StartPoly5(const double* x, const double* y, size_t n, double* p) {
    StartPolynomial(x, y, n, p, 5);
}

// Candidate time constants: both signs (decay and growth), from a hundredth of the span to ten
// spans, ten a decade.
std::vector<double> TimeConstants(double span, bool growthToo) {
    std::vector<double> taus;
    for (int k = -20; k <= 10; ++k) {
        const double tau = span * std::pow(10.0, k / 10.0);
        taus.push_back(tau);
        if (growthToo)
            taus.push_back(-tau);
    }
    return taus;
}

void StartExp(const double* x, const double* y, size_t n, double* p) {
    const Sample s = Thin(x, y, n);
    const double x0 = x[0], span = std::max(x[n - 1] - x[0], 1e-300);
    double best = INFINITY;
    p[0] = y[0] - y[n - 1];
    p[1] = span / 3;
    p[2] = y[n - 1];
    // For each time constant the model is linear in A and C.
    for (double tau : TimeConstants(span, true)) {
        Eigen::VectorXd c;
        const double rss = LinearFit(
            s, 2,
            [&](double v, double* row) {
                row[0] = std::exp(-(v - x0) / tau);
                row[1] = 1.0;
            },
            c);
        const double a = c.size() ? c(0) * std::exp(x0 / tau) : NAN;
        if (rss < best && std::isfinite(a)) {
            best = rss;
            p[0] = a;
            p[1] = tau;
            p[2] = c(1);
        }
    }
}

void StartPower(const double* x, const double* y, size_t n, double* p) {
    // A line through (ln x, ln |y|) over the points where both logarithms exist.
    Sample s;
    int positive = 0;
    for (size_t i = 0; i < n; ++i)
        if (x[i] > 0 && y[i] != 0) {
            s.x.push_back(std::log(x[i]));
            s.y.push_back(std::log(std::fabs(y[i])));
            positive += y[i] > 0 ? 1 : -1;
        }
    p[0] = 1.0;
    p[1] = 1.0;
    if (s.x.size() < 2)
        return;
    Eigen::VectorXd c;
    if (std::isfinite(LinearFit(
            s, 2,
            [](double v, double* row) {
                row[0] = 1.0;
                row[1] = v;
            },
            c))) {
        p[0] = (positive >= 0 ? 1.0 : -1.0) * std::exp(c(0));
        p[1] = c(1);
    }
}

// The frequency of the highest peak of the amplitude spectrum of the points, linearly
// interpolated onto an even grid (measurements are nearly evenly sampled; the grid makes the
// others so). 0 when there are too few points.
double PeakFrequency(const double* x, const double* y, size_t n, double* resolution) {
    *resolution = 0.0;
    const double span = x[n - 1] - x[0];
    if (n < 4 || !(span > 0))
        return 0.0;
    size_t m = 64;
    while (m < n && m < (size_t(1) << 16))
        m *= 2;
    const double dt = span / double(m - 1);
    std::vector<std::complex<double>> in(m), out(m);
    double mean = 0;
    for (size_t i = 0; i < n; ++i)
        mean += y[i];
    mean /= double(n);
    size_t j = 0;
    for (size_t k = 0; k < m; ++k) {
        const double t = x[0] + double(k) * dt;
        while (j + 2 < n && x[j + 1] < t)
            ++j;
        const double x1 = x[j], x2 = x[j + 1];
        const double w = x2 > x1 ? std::clamp((t - x1) / (x2 - x1), 0.0, 1.0) : 0.0;
        in[k] = (y[j] + w * (y[j + 1] - y[j])) - mean;
    }
    kissfft<double> fft(m, false);
    fft.transform(in.data(), out.data());
    size_t peak = 1;
    for (size_t k = 2; k < m / 2; ++k)
        if (std::abs(out[k]) > std::abs(out[peak]))
            peak = k;
    *resolution = 1.0 / (double(m) * dt);
    return double(peak) * *resolution;
}

// The best of several frequencies around f0 and its linear coefficients: for each frequency,
// envelope(x) * (a*sin(2*pi*f*x) + b*cos(2*pi*f*x)) + C is linear in a, b, C.
double BestSine(const Sample& s, double f0, double resolution,
                const std::function<double(double)>& envelope, double* f, Eigen::VectorXd& best) {
    double bestRss = INFINITY;
    for (int k = -20; k <= 20; ++k) {
        const double fk = f0 + resolution * k / 20.0;
        if (!(fk > 0))
            continue;
        Eigen::VectorXd c;
        const double rss = LinearFit(
            s, 3,
            [&](double v, double* row) {
                const double e = envelope(v);
                row[0] = e * std::sin(2 * M_PI * fk * v);
                row[1] = e * std::cos(2 * M_PI * fk * v);
                row[2] = 1.0;
            },
            c);
        if (rss < bestRss) {
            bestRss = rss;
            *f = fk;
            best = c;
        }
    }
    return bestRss;
}

void StartSine(const double* x, const double* y, size_t n, double* p) {
    // A, f, phi, C
    double resolution = 0;
    const double f0 = PeakFrequency(x, y, n, &resolution);
    p[0] = 1.0;
    p[1] = f0 > 0 ? f0 : 1.0;
    p[2] = 0.0;
    p[3] = 0.0;
    if (!(f0 > 0))
        return;
    const Sample s = Thin(x, y, n);
    double f = f0;
    Eigen::VectorXd c;
    if (std::isfinite(BestSine(
            s, f0, resolution, [](double) { return 1.0; }, &f, c))) {
        // a*sin + b*cos = A*sin(. + phi) with a = A*cos(phi), b = A*sin(phi).
        p[0] = std::hypot(c(0), c(1));
        p[1] = f;
        p[2] = std::atan2(c(1), c(0));
        p[3] = c(2);
    }
}

void StartDamped(const double* x, const double* y, size_t n, double* p) {
    // A, tau, f, phi, C
    double resolution = 0;
    const double f0 = PeakFrequency(x, y, n, &resolution);
    const double x0 = x[0], span = std::max(x[n - 1] - x[0], 1e-300);
    p[0] = 1.0;
    p[1] = span / 3;
    p[2] = f0 > 0 ? f0 : 1.0;
    p[3] = 0.0;
    p[4] = 0.0;
    if (!(f0 > 0))
        return;
    const Sample s = Thin(x, y, n);
    double bestRss = INFINITY;
    for (double tau : TimeConstants(span, false)) {
        double f = f0;
        Eigen::VectorXd c;
        const double rss = BestSine(
            s, f0, resolution, [&](double v) { return std::exp(-(v - x0) / tau); }, &f, c);
        const double scale = std::exp(x0 / tau);
        if (rss < bestRss && std::isfinite(scale)) {
            bestRss = rss;
            p[0] = std::hypot(c(0), c(1)) * scale;
            p[1] = tau;
            p[2] = f;
            p[3] = std::atan2(c(1), c(0));
            p[4] = c(2);
        }
    }
}

void StartGauss(const double* x, const double* y, size_t n, double* p) {
    // A, mu, sigma, C: the background from both ends, the peak where the points stand out most,
    // the width from the area under the peak.
    const size_t edge = std::max<size_t>(1, n / 20);
    double c = 0;
    for (size_t i = 0; i < edge; ++i)
        c += y[i] + y[n - 1 - i];
    c /= double(2 * edge);
    size_t top = 0;
    for (size_t i = 1; i < n; ++i)
        if (std::fabs(y[i] - c) > std::fabs(y[top] - c))
            top = i;
    double area = 0;
    for (size_t i = 1; i < n; ++i)
        area += 0.5 * ((y[i] - c) + (y[i - 1] - c)) * (x[i] - x[i - 1]);
    const double a = y[top] - c;
    double sigma = std::fabs(area / (a * std::sqrt(2 * M_PI)));
    if (!std::isfinite(sigma) || sigma <= 0)
        sigma = (x[n - 1] - x[0]) / 10;
    p[0] = a;
    p[1] = x[top];
    p[2] = sigma;
    p[3] = c;
}

const VyrFitModel kModels[] = {
    {"linear", "a*x", {"a", nullptr}, StartLinear},
    {"affine", "a*x+b", {"a", "b", nullptr}, StartAffine},
    {"poly2", "c0+c1*x+c2*x^2", {"c0", "c1", "c2", nullptr}, StartPoly2},
    {"poly3", "c0+c1*x+c2*x^2+c3*x^3", {"c0", "c1", "c2", "c3", nullptr}, StartPoly3},
    {"poly4", "c0+c1*x+c2*x^2+c3*x^3+c4*x^4", {"c0", "c1", "c2", "c3", "c4", nullptr}, StartPoly4},
    {"poly5",
     "c0+c1*x+c2*x^2+c3*x^3+c4*x^4+c5*x^5",
     {"c0", "c1", "c2", "c3", "c4", "c5", nullptr},
     StartPoly5},
    {"exp", "A*exp(-x/tau)+C", {"A", "tau", "C", nullptr}, StartExp},
    {"power", "A*x^n", {"A", "n", nullptr}, StartPower},
    {"sine", "A*sin(2*pi*f*x+phi)+C", {"A", "f", "phi", "C", nullptr}, StartSine},
    {"damped",
     "A*exp(-x/tau)*sin(2*pi*f*x+phi)+C",
     {"A", "tau", "f", "phi", "C", nullptr},
     StartDamped},
    {"gauss", "A*exp(-(x-mu)^2/(2*sigma^2))+C", {"A", "mu", "sigma", "C", nullptr}, StartGauss},
};

}  // namespace

size_t VyrFitModelCount() {
    return sizeof(kModels) / sizeof(kModels[0]);
}

const VyrFitModel& VyrFitModelAt(size_t i) {
    return kModels[i];
}

const VyrFitModel* VyrFindFitModel(const char* name) {
    for (const VyrFitModel& m : kModels)
        if (std::strcmp(m.name, name) == 0)
            return &m;
    return nullptr;
}

size_t VyrFitModelParameterCount(const VyrFitModel& model) {
    size_t k = 0;
    while (model.parameters[k])
        ++k;
    return k;
}

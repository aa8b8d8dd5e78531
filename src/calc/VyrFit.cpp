#include "vyrbase/calc/VyrFit.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>
#include <vector>

#include <Eigen/Dense>
#include <unsupported/Eigen/NonLinearOptimization>

#include "calc/VyrFitImpl.h"
#include "calc/VyrFitModels.h"
#include "vyrbase/calc/VyrFormula.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

// A residual that cannot be computed (the model leaves its domain, as ln of a negative) is
// taken as this large one, so that Levenberg-Marquardt refuses the step that led there.
const double kUnreachable = 1e100;

// The residuals f(x_i; p) - y_i and their Jacobian, for Eigen's Levenberg-Marquardt.
struct Residuals {
    const VyrFitState& s;
    const std::vector<double>& x;
    const std::vector<double>& y;
    int evaluations = 0;

    int inputs() const { return int(s.parameterIndex.size()); }
    int values() const { return int(x.size()); }

    void Set(const Eigen::VectorXd& p) const {
        for (size_t k = 0; k < s.parameterIndex.size(); ++k)
            s.formula->SetValue(s.parameterNames[k], p(Eigen::Index(k)));
    }
    int operator()(const Eigen::VectorXd& p, Eigen::VectorXd& r) {
        ++evaluations;
        Set(p);
        s.formula->EvaluateArray(s.xIndex, x.data(), r.data(), x.size());
        for (size_t i = 0; i < x.size(); ++i) {
            r(Eigen::Index(i)) -= y[i];
            if (!std::isfinite(r(Eigen::Index(i))))
                r(Eigen::Index(i)) = kUnreachable;
        }
        return 0;
    }
    int df(const Eigen::VectorXd& p, Eigen::MatrixXd& jacobian) {
        Set(p);
        std::vector<double> values(x.size());
        s.formula->EvaluateGradientArray(s.xIndex, x.data(), x.size(), s.parameterIndex.data(),
                                         s.parameterIndex.size(), values.data(), jacobian.data());
        for (Eigen::Index k = 0; k < jacobian.size(); ++k)
            if (!std::isfinite(jacobian.data()[k]))
                jacobian.data()[k] = 0.0;
        return 0;
    }
};

bool Converged(Eigen::LevenbergMarquardtSpace::Status status) {
    using namespace Eigen::LevenbergMarquardtSpace;
    switch (status) {
        case RelativeReductionTooSmall:
        case RelativeErrorTooSmall:
        case RelativeErrorAndReductionTooSmall:
        case CosinusTooSmall:
        // The tolerances below are close to the precision of doubles: these three say that no
        // step can improve the sum any more, which is where a minimum is.
        case FtolTooSmall:
        case XtolTooSmall:
        case GtolTooSmall:
            return true;
        default:
            return false;
    }
}

}  // namespace

VyrFit::VyrFit() : m_pImpl(new Impl) {}

VyrFit::~VyrFit() = default;

wxArrayString VyrFit::GetModelNames() {
    wxArrayString names;
    for (size_t i = 0; i < VyrFitModelCount(); ++i)
        names.Add(VyrFitModelAt(i).name);
    return names;
}

void VyrFit::Impl::Reset() {
    formula.reset(new VyrFormula);
    model = nullptr;
    parameterNames.clear();
    parameterIndex.clear();
    starts.clear();
    startGiven.clear();
    xIndex = -1;
    ClearResult();
}

void VyrFit::Impl::ClearResult() {
    values.assign(parameterNames.size(), NAN);
    uncertainties.assign(parameterNames.size(), NAN);
    rss = r2 = NAN;
    points = 0;
    converged = false;
    evaluations = 0;
    xmin = xmax = NAN;
}

bool VyrFit::Impl::Compile(const wxString& text, bool declaring) {
    formula->DeclareVariable("x");
    for (const auto& b : bound)
        formula->BindVariable(b.first, b.second);
    const bool ok = declaring ? formula->ParseDeclaring(text) : formula->Parse(text);
    if (!ok) {
        error = formula->GetError();
        return false;
    }
    xIndex = formula->GetVariableIndex("x");
    const wxArrayString used = formula->GetUsedVariables();
    bool usesX = false;
    for (const wxString& name : used) {
        if (name == "x") {
            usesX = true;
            continue;
        }
        bool isBound = false;
        for (const auto& b : bound)
            isBound = isBound || b.first == name;
        if (isBound)
            continue;
        parameterNames.push_back(name);
        parameterIndex.push_back(formula->GetVariableIndex(name));
    }
    if (!usesX) {
        error = "the formula does not use x";
        return false;
    }
    if (parameterNames.empty()) {
        error = "the formula has no parameter to fit";
        return false;
    }
    starts.assign(parameterNames.size(), 1.0);
    startGiven.assign(parameterNames.size(), false);
    ClearResult();
    return true;
}

bool VyrFit::SetModel(const wxString& name) {
    Impl& d = *m_pImpl;
    d.Reset();
    d.error.clear();
    const VyrFitModel* model =
        name.IsAscii() ? VyrFindFitModel(name.ToStdString().c_str()) : nullptr;
    if (!model) {
        d.error = "unknown model \"" + name + "\"";
        return false;
    }
    // The model's own parameters, declared in their order so that the result lists them so.
    d.formula->DeclareVariable("x");
    for (size_t k = 0; model->parameters[k]; ++k)
        d.formula->DeclareVariable(model->parameters[k]);
    if (!d.Compile(model->formula, false)) {
        d.Reset();
        return false;
    }
    // Parameters in the model's order, not in order of use.
    d.parameterNames.clear();
    d.parameterIndex.clear();
    for (size_t k = 0; model->parameters[k]; ++k) {
        d.parameterNames.push_back(model->parameters[k]);
        d.parameterIndex.push_back(d.formula->GetVariableIndex(model->parameters[k]));
    }
    d.starts.assign(d.parameterNames.size(), 1.0);
    d.startGiven.assign(d.parameterNames.size(), false);
    d.ClearResult();
    d.model = model;
    return true;
}

bool VyrFit::SetFormula(const wxString& formula) {
    Impl& d = *m_pImpl;
    d.Reset();
    d.error.clear();
    if (!d.Compile(formula, true)) {
        d.Reset();
        return false;
    }
    return true;
}

bool VyrFit::BindVariable(const wxString& name, double* address) {
    VyrFormula probe;
    if (!address || !probe.DeclareVariable(name) || name == "x")
        return false;
    for (auto& b : m_pImpl->bound)
        if (b.first == name) {
            b.second = address;
            return true;
        }
    m_pImpl->bound.emplace_back(name, address);
    return true;
}

bool VyrFit::SetStart(const wxString& parameter, double value) {
    const int i = GetParameterIndex(parameter);
    if (i < 0)
        return false;
    m_pImpl->starts[i] = value;
    m_pImpl->startGiven[i] = true;
    return true;
}

void VyrFit::SetRange(double xmin, double xmax) {
    m_pImpl->ranged = true;
    m_pImpl->rangeMin = xmin;
    m_pImpl->rangeMax = xmax;
}

void VyrFit::ClearRange() {
    m_pImpl->ranged = false;
}

bool VyrFit::Fit(VyrCourbe* curve) {
    if (!curve || !curve->GetVx() || !curve->GetVy()) {
        m_pImpl->ClearResult();
        m_pImpl->error = "no curve";
        return false;
    }
    VyrVecteur* vx = curve->GetVx();
    VyrVecteur* vy = curve->GetVy();
    const unsigned n = std::min(vx->GetSize(), vy->GetSize());
    std::vector<double> x, y;
    x.reserve(n);
    y.reserve(n);
    for (unsigned i = 0; i < n; ++i)
        if (vx->IsValidAt(int(i)) && vy->IsValidAt(int(i))) {
            x.push_back(vx->GetVal(int(i)));
            y.push_back(vy->GetVal(int(i)));
        }
    return Fit(x.data(), y.data(), x.size());
}

bool VyrFit::Fit(const double* xs, const double* ys, size_t n) {
    Impl& d = *m_pImpl;
    d.ClearResult();
    d.error.clear();
    if (!d.formula->IsParsed() || d.parameterNames.empty()) {
        d.error = "no model";
        return false;
    }
    // The points that take part, sorted by x for the starting values.
    std::vector<std::pair<double, double>> pts;
    for (size_t i = 0; xs && ys && i < n; ++i)
        if (std::isfinite(xs[i]) && std::isfinite(ys[i]) &&
            (!d.ranged || (xs[i] >= d.rangeMin && xs[i] <= d.rangeMax)))
            pts.emplace_back(xs[i], ys[i]);
    std::sort(pts.begin(), pts.end());
    const size_t p = d.parameterNames.size();
    if (pts.size() < p) {
        d.error = wxString::Format("%zu points for %zu parameters: too few", pts.size(), p);
        return false;
    }
    std::vector<double> x(pts.size()), y(pts.size());
    for (size_t i = 0; i < pts.size(); ++i) {
        x[i] = pts[i].first;
        y[i] = pts[i].second;
    }

    Eigen::VectorXd b(p);
    std::vector<double> found(p, 1.0);
    if (d.model)
        d.model->start(x.data(), y.data(), x.size(), found.data());
    for (size_t k = 0; k < p; ++k)
        b(Eigen::Index(k)) = d.startGiven[k] || !d.model ? d.starts[k] : found[k];

    Residuals residuals{d, x, y};
    Eigen::VectorXd r(x.size());
    residuals(b, r);
    if (!b.allFinite() || r.cwiseAbs().maxCoeff() >= kUnreachable) {
        d.evaluations = residuals.evaluations;
        d.error = "the model cannot be evaluated at the starting values";
        return false;
    }
    // Levenberg-Marquardt to tolerances near the precision of doubles, started again from
    // where it stopped while that still lowers the sum: a fresh start resets the step bound
    // that a long descent has shrunk. A first step bounded by 100 times the scaled start may
    // jump past the basin of the minimum into a plateau; a descent whose first step is bounded
    // by the start itself is tried too, and the lower sum kept.
    const Eigen::VectorXd start = b;
    bool ok = false;
    double best = INFINITY;
    Eigen::VectorXd bestB = b;
    for (double factor : {100.0, 1.0}) {
        Eigen::VectorXd trial = start;
        Eigen::LevenbergMarquardt<Residuals> lm(residuals);
        lm.parameters.factor = factor;
        lm.parameters.ftol = 1e-15;
        lm.parameters.xtol = 1e-15;
        lm.parameters.gtol = 0.0;
        lm.parameters.maxfev = 5000;
        bool converged = false;
        double previous = INFINITY;
        for (int round = 0; round < 5; ++round) {
            converged = Converged(lm.minimize(trial));
            if (!converged)
                break;
            residuals(trial, r);
            const double sum = r.squaredNorm();
            if (!(sum < previous * (1 - 1e-14)))
                break;
            previous = sum;
        }
        if (converged && trial.allFinite() && previous < best) {
            ok = true;
            best = previous;
            bestB = trial;
        }
    }
    b = bestB;
    d.evaluations = residuals.evaluations;
    residuals(b, r);
    const double rss = r.squaredNorm();
    if (!ok || !b.allFinite() || !std::isfinite(rss) || r.cwiseAbs().maxCoeff() >= kUnreachable) {
        d.error = wxString::Format("the fit did not converge (%d evaluations)", d.evaluations);
        return false;
    }

    // Uncertainties from the Jacobian at the solution: (J'J)^-1 = V S^-2 V'.
    Eigen::MatrixXd jacobian(x.size(), p);
    residuals.df(b, jacobian);
    const Eigen::JacobiSVD<Eigen::MatrixXd> svd(jacobian, Eigen::ComputeThinV);
    const Eigen::VectorXd sv = svd.singularValues();
    const double dof = double(x.size()) - double(p);
    const bool determined =
        sv.size() == Eigen::Index(p) && sv(Eigen::Index(p) - 1) > sv(0) * 1e-14 && sv(0) > 0;
    for (size_t k = 0; k < p; ++k) {
        d.values[k] = b(Eigen::Index(k));
        double variance = 0;
        for (Eigen::Index j = 0; j < sv.size(); ++j) {
            const double v = svd.matrixV()(Eigen::Index(k), j) / sv(j);
            variance += v * v;
        }
        d.uncertainties[k] = determined && dof > 0 ? std::sqrt(variance * rss / dof) : double(NAN);
    }
    double mean = 0;
    for (double v : y)
        mean += v;
    mean /= double(y.size());
    double total = 0;
    for (double v : y)
        total += (v - mean) * (v - mean);
    d.rss = rss;
    d.r2 = total > 0 ? 1.0 - rss / total : (rss == 0 ? 1.0 : NAN);
    d.points = x.size();
    d.converged = true;
    d.xmin = x.front();
    d.xmax = x.back();
    residuals.Set(b);
    return true;
}

wxString VyrFit::GetEquation() const {
    return m_pImpl->formula->IsParsed() ? m_pImpl->formula->GetExpression() : wxString();
}

size_t VyrFit::GetParameterCount() const {
    return m_pImpl->parameterNames.size();
}

wxString VyrFit::GetParameterName(size_t i) const {
    return i < m_pImpl->parameterNames.size() ? m_pImpl->parameterNames[i] : wxString();
}

int VyrFit::GetParameterIndex(const wxString& name) const {
    for (size_t i = 0; i < m_pImpl->parameterNames.size(); ++i)
        if (m_pImpl->parameterNames[i] == name)
            return int(i);
    return -1;
}

double VyrFit::GetValue(size_t i) const {
    return i < m_pImpl->values.size() ? m_pImpl->values[i] : NAN;
}

double VyrFit::GetUncertainty(size_t i) const {
    return i < m_pImpl->uncertainties.size() ? m_pImpl->uncertainties[i] : NAN;
}

double VyrFit::GetRss() const {
    return m_pImpl->rss;
}

double VyrFit::GetR2() const {
    return m_pImpl->r2;
}

size_t VyrFit::GetPoints() const {
    return m_pImpl->points;
}

bool VyrFit::IsConverged() const {
    return m_pImpl->converged;
}

int VyrFit::GetEvaluations() const {
    return m_pImpl->evaluations;
}

const wxString& VyrFit::GetError() const {
    return m_pImpl->error;
}

double VyrFit::Evaluate(double x) const {
    const Impl& d = *m_pImpl;
    if (!d.converged)
        return NAN;
    for (size_t k = 0; k < d.parameterNames.size(); ++k)
        d.formula->SetValue(d.parameterNames[k], d.values[k]);
    double y = NAN;
    d.formula->EvaluateArray(d.xIndex, &x, &y, 1);
    return y;
}

wxString VyrFit::FormatResult(int digits, const wxString& separator) const {
    const Impl& d = *m_pImpl;
    // Numbers with a decimal point whatever the locale, as the document file writes them.
    auto number = [](double v, int significant) {
        wxString s = wxString::Format("%.*g", std::clamp(significant, 1, 15), v);
        s.Replace(",", ".");
        return s;
    };
    wxString text;
    for (size_t k = 0; k < d.parameterNames.size(); ++k) {
        const double v = d.values[k], u = d.uncertainties[k];
        int significant = digits > 0 ? std::clamp(digits, 2, 15) : 6;
        // A value is known to its uncertainty's second digit: more would be noise.
        if (digits <= 0 && std::isfinite(u) && u > 0 && std::isfinite(v) && v != 0)
            significant = int(std::floor(std::log10(std::fabs(v))) - std::floor(std::log10(u))) + 2;
        text += d.parameterNames[k] + " = " + number(v, std::max(significant, 1));
        if (std::isfinite(u))
            text += L" \u00b1 " + number(u, 2);
        text += separator;
    }
    text += L"R\u00b2 = " + number(d.r2, 6) + wxString::Format(", %zu points", d.points);
    return text;
}

#include "vyrbase/calc/VyrCurveCalculator.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <memory>
#include <new>

#include "calc/VyrCalcExpression.h"
#include "calc/VyrCalcPoints.h"
#include "vyrbase/calc/VyrCurveCalculus.h"
#include "vyrbase/calc/VyrFormula.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVariable.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

typedef VyrCurveCalculus::Values Values;
typedef VyrCurveCalculus::Validity Validity;

// The largest smoothing width: wider than any acquisition's useful window.
const long kMaxSmoothWidth = 1000000;
// Series operations nested deeper than this are refused: a third derivative is already rare.
const int kMaxSeriesDepth = 16;

// What a name of the expression stands for.
struct Operand {
    enum Kind { kVariable, kCurve, kAbscissa } kind;
    VyrVariable* variable = nullptr;
    VyrCourbe* curve = nullptr;
};

VyrVariable* FindVariable(VyrExperience* e, const wxString& name) {
    wxVyrListVariableNode* node = e->GetFirstVariableNode();
    while (node) {
        VyrVariable* v = e->GetNextVariable(&node);
        if (v && v->GetEntityName() == name)
            return v;
    }
    return nullptr;
}

// The first curve of e with both vectors whose X (x true) or Y quantity is `name`.
VyrCourbe* FindCurve(VyrExperience* e, const wxString& name, bool x) {
    wxVyrListCourbeNode* node = e->GetFirstCourbeNode();
    while (node) {
        VyrCourbe* c = e->GetNextCourbe(&node);
        if (c && c->GetVx() && c->GetVy() && (x ? c->GetVx() : c->GetVy())->GetGrandeur() == name)
            return c;
    }
    return nullptr;
}

bool Resolve(VyrExperience* e, const wxString& name, Operand& out) {
    if ((out.variable = FindVariable(e, name))) {
        out.kind = Operand::kVariable;
        return true;
    }
    if ((out.curve = FindCurve(e, name, false))) {
        out.kind = Operand::kCurve;
        return true;
    }
    if ((out.curve = FindCurve(e, name, true))) {
        out.kind = Operand::kAbscissa;
        return true;
    }
    return false;
}

// A series on the reference's abscissas.
struct Series {
    Values y;
    Validity valid;
};

// One calculation: the reference abscissas and the series read or computed on them.
class Evaluation {
public:
    Evaluation(VyrExperience* e, VyrCourbe* reference) : m_e(e), m_ref(reference) {
        vyrcalc::Points p;
        vyrcalc::CollectAllPoints(reference, p);
        m_x.swap(p.x);
        m_refY.y.swap(p.y);
        m_refY.valid.swap(p.valid);
        m_xValid.resize(m_x.size());
        vyrcalc::ReadValidity(*reference->GetVx(), static_cast<int>(m_x.size()), m_xValid.data());
    }

    const Values& X() const { return m_x; }

    // The series of `expr` on the reference abscissas; false with `error`.
    bool Evaluate(wxString expr, Series& out, wxString& error, int depth = 0) {
        if (depth > kMaxSeriesDepth) {
            error = wxString::Format("deriv, integ and smooth nested more than %d deep",
                                     kMaxSeriesDepth);
            return false;
        }
        // The series operations first, innermost last: each becomes a name bound to its result.
        vyrcalc::SeriesCall call;
        while (vyrcalc::FindSeriesCall(expr, call, error)) {
            if (!error.empty())
                return false;
            Series inner, result;
            if (!Evaluate(call.argument, inner, error, depth + 1))
                return false;
            bool done = false;
            if (call.op == "deriv")
                done =
                    VyrCurveCalculus::Derivative(m_x, inner.y, inner.valid, result.y, result.valid);
            else if (call.op == "integ")
                done =
                    VyrCurveCalculus::Integral(m_x, inner.y, inner.valid, result.y, result.valid);
            else {
                char* end = nullptr;
                const std::string text = call.width.ToStdString();
                const long width = std::strtol(text.c_str(), &end, 10);
                if (text.empty() || *end != '\0' || width < 1 || width > kMaxSmoothWidth) {
                    error = "smooth wants a whole number of points from 1 to 1000000, not \"" +
                            call.width + "\"";
                    return false;
                }
                done = VyrCurveCalculus::Smooth(inner.y, inner.valid, static_cast<int>(width),
                                                result.y, result.valid);
            }
            if (!done) {
                error = call.op + " needs the abscissas of " + m_ref->GetName() +
                        " in increasing order";
                return false;
            }
            const wxString name = wxString::Format("_series%zu", m_computed.size());
            m_computed.push_back(std::make_unique<Series>(std::move(result)));
            m_named[name] = m_computed.back().get();
            expr = expr.Left(call.begin) + name + expr.Mid(call.end);
        }
        return EvaluatePointwise(expr, out, error);
    }

private:
    // The series a curve operand gives on the reference abscissas.
    const Series* CurveSeries(VyrCourbe* c) {
        if (c == m_ref)
            return &m_refY;
        auto known = m_curves.find(c);
        if (known != m_curves.end())
            return known->second.get();
        auto s = std::make_unique<Series>();
        const size_t n = m_x.size();
        s->y.assign(n, 0.0);
        s->valid.assign(n, 0);
        const VyrVecteur& vx = *c->GetVx();
        const VyrVecteur& vy = *c->GetVy();
        bool same = c->GetVx() == m_ref->GetVx() || static_cast<size_t>(vx.GetSize()) == n;
        for (size_t i = 0; same && i < n; ++i)
            same = vx[static_cast<int>(i)] == m_x[i];
        if (same) {
            // The same abscissas: read by index.
            Validity validX(n), validY(n);
            vyrcalc::ReadValidity(vx, static_cast<int>(n), validX.data());
            vyrcalc::ReadValidity(vy, static_cast<int>(n), validY.data());
            const int stored = std::min(static_cast<int>(n), vy.GetSize());
            if (stored > 0)
                std::copy(vy.GetArea(), vy.GetArea() + stored, s->y.begin());
            for (size_t i = 0; i < n; ++i)
                s->valid[i] = m_xValid[i] && validX[i] && validY[i];
        } else {
            int start = 0;
            double previous = -std::numeric_limits<double>::infinity();
            for (size_t i = 0; i < n; ++i) {
                if (!m_xValid[i] || std::isnan(m_x[i]))
                    continue;
                // The bracket found last is where the next search starts, while X increases.
                if (m_x[i] < previous)
                    start = 0;
                previous = m_x[i];
                double y = 0.0;
                bool interpolated = false;
                int index = 0;
                if (!c->InterpolateEx(m_x[i], y, interpolated, &index, start))
                    continue;
                // The interpolation does not look at Y's validity: both points it used must
                // be valid.
                bool valid = vy.IsValidAt(index);
                if (valid && interpolated) {
                    int j = index + 1;
                    while (j < vx.GetSize() && !vx.IsValidAt(j))
                        ++j;
                    valid = vy.IsValidAt(j);
                }
                s->y[i] = y;
                s->valid[i] = valid;
            }
        }
        const Series* result = s.get();
        m_curves[c] = std::move(s);
        return result;
    }

    bool EvaluatePointwise(const wxString& expr, Series& out, wxString& error) {
        VyrFormula formula;
        std::vector<const Series*> series;
        std::vector<const Validity*> masks;
        std::vector<double> slots;
        std::vector<wxString> slotNames;
        for (const vyrcalc::NameUse& use : vyrcalc::ScanNames(expr)) {
            if (use.called || use.name == "pi" || formula.HasVariable(use.name))
                continue;
            auto computed = m_named.find(use.name);
            Operand o;
            if (computed != m_named.end()) {
                series.push_back(computed->second);
            } else if (!Resolve(m_e, use.name, o)) {
                error = "unknown name " + use.name +
                        ": no variable, no curve of that quantity in " + m_e->GetEntityName();
                return false;
            } else if (o.kind == Operand::kVariable) {
                formula.BindVariable(use.name, o.variable->GetAdressValue());
                continue;
            } else if (o.kind == Operand::kCurve) {
                series.push_back(CurveSeries(o.curve));
            } else {
                series.push_back(nullptr);  // the abscissa itself
            }
            slotNames.push_back(use.name);
        }
        slots.assign(slotNames.size(), 0.0);
        for (size_t k = 0; k < slotNames.size(); ++k)
            formula.BindVariable(slotNames[k], &slots[k]);
        if (!formula.Parse(expr)) {
            error = formula.GetError();
            return false;
        }
        const size_t n = m_x.size();
        out.y.assign(n, 0.0);
        out.valid.assign(n, 0);
        if (series.size() == 1) {
            // One series varies from point to point: the formula runs over the whole array.
            const Values& in = series[0] ? series[0]->y : m_x;
            formula.EvaluateArray(slotNames[0], in.data(), out.y.data(), n);
            for (size_t i = 0; i < n; ++i) {
                out.valid[i] =
                    m_xValid[i] && (!series[0] || series[0]->valid[i]) && std::isfinite(out.y[i]);
                if (!out.valid[i])
                    out.y[i] = 0.0;
            }
            return true;
        }
        for (size_t i = 0; i < n; ++i) {
            bool valid = m_xValid[i] != 0;
            for (size_t k = 0; valid && k < series.size(); ++k) {
                if (series[k]) {
                    slots[k] = series[k]->y[i];
                    valid = series[k]->valid[i] != 0;
                } else {
                    slots[k] = m_x[i];
                }
            }
            if (!valid)
                continue;
            const double v = formula.Evaluate();
            if (std::isfinite(v)) {
                out.y[i] = v;
                out.valid[i] = 1;
            }
        }
        return true;
    }

    VyrExperience* m_e;
    VyrCourbe* m_ref;
    Values m_x;
    Validity m_xValid;
    Series m_refY;
    std::map<VyrCourbe*, std::unique_ptr<Series>> m_curves;
    std::vector<std::unique_ptr<Series>> m_computed;
    std::map<wxString, const Series*> m_named;
};

// The reference curve of the expression: the first curve it names by its Y quantity, else the
// first whose abscissa it names. False with `error` for an unknown name.
bool FindReference(VyrExperience* e, const wxString& expr, VyrCourbe*& reference, wxString& error,
                   const wxArrayString& variables = wxArrayString()) {
    reference = nullptr;
    VyrCourbe* byAbscissa = nullptr;
    for (const vyrcalc::NameUse& use : vyrcalc::ScanNames(expr)) {
        if (use.called || use.name == "pi")
            continue;
        Operand o;
        if (variables.Index(use.name) != wxNOT_FOUND)
            continue;
        if (!Resolve(e, use.name, o)) {
            error = "unknown name " + use.name + ": no variable, no curve of that quantity in " +
                    e->GetEntityName();
            return false;
        }
        if (o.kind == Operand::kCurve && !reference)
            reference = o.curve;
        if (o.kind == Operand::kAbscissa && !byAbscissa)
            byAbscissa = o.curve;
    }
    if (!reference)
        reference = byAbscissa;
    if (!reference)
        error = "the expression names no curve of " + e->GetEntityName();
    return reference != nullptr;
}

}  // namespace

VyrCurveCalculator::VyrCurveCalculator(VyrExperience* e) : m_pExperience(e) {}

bool VyrCurveCalculator::SetVariable(const wxString& name, double value) {
    if (!m_pExperience || !m_pExperience->GetBase())
        return false;
    VyrFormula check;
    if (!check.DeclareVariable(name))
        return false;
    VyrVariable* v = m_pExperience->GetBase()->CreateVariableEntity(m_pExperience, name);
    if (!v)
        return false;
    v->SetValue(value);
    return true;
}

VyrCourbe* VyrCurveCalculator::Calculate(const wxString& assignment) {
    m_sError.clear();
    VyrExperience* e = m_pExperience;
    if (!e || !e->GetBase()) {
        m_sError = "no experiment to calculate in";
        return nullptr;
    }
    wxString name, expr;
    if (!vyrcalc::SplitAssignment(assignment, name, expr)) {
        m_sError = "not an assignment NAME = EXPR: \"" + assignment + "\"";
        return nullptr;
    }
    VyrCourbe* reference = nullptr;
    if (!FindReference(e, expr, reference, m_sError))
        return nullptr;
    const VyrVecteur& rx = *reference->GetVx();

    vyrcalc::ResultCurve want;
    want.name = "CALC_" + name;
    want.grdX = rx.GetGrandeur();
    want.uniteX = rx.GetUnite();
    want.grdY = name;
    want.text = name + " = " + expr;
    want.uniteY = m_sUnit;
    if (m_sUnit.empty()) {
        auto unitOf = [&](const wxString& n, wxString& unit) {
            Operand o;
            if (!Resolve(e, n, o) || o.kind == Operand::kVariable)
                return false;
            unit = (o.kind == Operand::kCurve ? o.curve->GetVy() : o.curve->GetVx())->GetUnite();
            return true;
        };
        if (!vyrcalc::InferUnit(expr, unitOf, rx.GetUnite(), want.uniteY))
            want.uniteY.clear();
    }
    // A curve of that quantity and those units is replaced: only one this calculator made.
    if (VyrCourbe* existing = vyrcalc::FindBlockingCurve(e, want, name + " = ")) {
        m_sError = "a curve " + existing->GetName() +
                   " already exists and was not calculated: choose another name";
        return nullptr;
    }
    try {
        Evaluation evaluation(e, reference);
        Series result;
        if (!evaluation.Evaluate(expr, result, m_sError))
            return nullptr;
        vyrcalc::Points points;
        points.x = evaluation.X();
        points.y.swap(result.y);
        points.valid.swap(result.valid);
        VyrCourbe* made = vyrcalc::StoreCurve(*e->GetBase(), e, want, points, reference);
        if (!made)
            m_sError = "not enough memory for the calculated curve";
        return made;
    } catch (const std::bad_alloc&) {
        m_sError = "not enough memory for the calculated curve";
        return nullptr;
    }
}

VyrExperience* VyrCurveCalculator::FindExperience(VyrBaseData& doc, const wxString& assignment,
                                                  const wxArrayString& variables) {
    wxString name, expr, error;
    if (!vyrcalc::SplitAssignment(assignment, name, expr))
        return nullptr;
    wxVyrListEntityNode* node = doc.GetFirstExperienceNode();
    while (node) {
        VyrExperience* e = doc.GetNextExperience(&node);
        VyrCourbe* reference = nullptr;
        if (e && FindReference(e, expr, reference, error, variables))
            return e;
    }
    return nullptr;
}

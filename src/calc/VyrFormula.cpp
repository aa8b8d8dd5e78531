#include "vyrbase/calc/VyrFormula.h"

#include <cmath>
#include <deque>
#include <string>
#include <vector>

#include "calc/VyrFormulaParser.h"
#include "calc/VyrFormulaTape.h"

struct VyrFormula::Impl {
    std::vector<std::string> names;
    std::deque<double> own;        // the values of unbound variables (stable addresses)
    std::vector<double*> address;  // where each variable's value is read
    VyrFormulaTape tape;
    std::vector<bool> used;
    bool parsed = false;
    wxString expression;
    wxString error;
    mutable std::vector<double> values;  // the variables' values gathered for one evaluation

    int Find(const std::string& name) const {
        for (size_t i = 0; i < names.size(); ++i)
            if (names[i] == name)
                return int(i);
        return -1;
    }

    const double* Gather() const {
        values.resize(address.size());
        for (size_t i = 0; i < address.size(); ++i)
            values[i] = *address[i];
        return values.data();
    }

    bool Declare(const wxString& name, double* bound, double value) {
        const std::string n = name.ToStdString();
        if (!name.IsAscii() || !VyrIsFormulaVariableName(n))
            return false;
        int i = Find(n);
        if (i < 0) {
            names.push_back(n);
            own.push_back(value);
            address.push_back(&own.back());
            i = int(names.size()) - 1;
        }
        own[i] = value;
        address[i] = bound ? bound : &own[i];
        return true;
    }
};

VyrFormula::VyrFormula() : m_pImpl(new Impl) {}

VyrFormula::~VyrFormula() = default;

bool VyrFormula::DeclareVariable(const wxString& name, double value) {
    return m_pImpl->Declare(name, nullptr, value);
}

bool VyrFormula::BindVariable(const wxString& name, double* address) {
    return address && m_pImpl->Declare(name, address, 0.0);
}

bool VyrFormula::SetValue(const wxString& name, double value) {
    const int i = GetVariableIndex(name);
    if (i < 0)
        return false;
    *m_pImpl->address[i] = value;
    return true;
}

bool VyrFormula::HasVariable(const wxString& name) const {
    return GetVariableIndex(name) >= 0;
}

int VyrFormula::GetVariableIndex(const wxString& name) const {
    return name.IsAscii() ? m_pImpl->Find(name.ToStdString()) : -1;
}

bool VyrFormula::Parse(const wxString& expression) {
    Impl& d = *m_pImpl;
    d.parsed = false;
    d.expression = expression;
    std::string error;
    // Non-ASCII text can hold no name or operator of the grammar; muParser sees its UTF-8 bytes
    // and refuses them as unknown tokens.
    const wxScopedCharBuffer utf8 = expression.utf8_str();
    const std::string text(utf8.data(), utf8.length());
    if (text.find('\0') != std::string::npos)
        error = "formula holds a zero character";
    else if (VyrCompileFormula(text, d.names, d.tape, d.used, error))
        d.parsed = true;
    d.error = d.parsed ? wxString() : wxString::FromUTF8(error.c_str());
    return d.parsed;
}

bool VyrFormula::ParseDeclaring(const wxString& expression) {
    // Each refusal for an unknown name declares it and tries again; a formula has few names.
    for (int attempt = 0; attempt < 64; ++attempt) {
        Impl& d = *m_pImpl;
        d.parsed = false;
        d.expression = expression;
        std::string error, unknown;
        const wxScopedCharBuffer utf8 = expression.utf8_str();
        const std::string text(utf8.data(), utf8.length());
        if (text.find('\0') != std::string::npos) {
            d.error = "formula holds a zero character";
            return false;
        }
        if (VyrCompileFormula(text, d.names, d.tape, d.used, error, &unknown)) {
            d.parsed = true;
            d.error.clear();
            return true;
        }
        d.error = wxString::FromUTF8(error.c_str());
        if (unknown.empty() || !DeclareVariable(wxString(unknown)))
            return false;
    }
    return false;
}

bool VyrFormula::IsParsed() const {
    return m_pImpl->parsed;
}

const wxString& VyrFormula::GetExpression() const {
    return m_pImpl->expression;
}

const wxString& VyrFormula::GetError() const {
    return m_pImpl->error;
}

wxArrayString VyrFormula::GetUsedVariables() const {
    wxArrayString out;
    if (m_pImpl->parsed)
        for (size_t i = 0; i < m_pImpl->used.size(); ++i)
            if (m_pImpl->used[i])
                out.Add(wxString(m_pImpl->names[i]));
    return out;
}

double VyrFormula::Evaluate() const {
    if (!m_pImpl->parsed)
        return NAN;
    return m_pImpl->tape.Evaluate(m_pImpl->Gather());
}

bool VyrFormula::EvaluateArray(const wxString& name, const double* in, double* out,
                               size_t n) const {
    return EvaluateArray(GetVariableIndex(name), in, out, n);
}

bool VyrFormula::EvaluateArray(int variable, const double* in, double* out, size_t n) const {
    const Impl& d = *m_pImpl;
    if (!d.parsed || variable < 0 || size_t(variable) >= d.names.size() || (n > 0 && (!in || !out)))
        return false;
    d.Gather();
    d.tape.EvaluateArray(d.values.data(), variable, in, out, n);
    return true;
}

bool VyrFormula::EvaluateGradient(const int* withRespectTo, size_t count, double* value,
                                  double* gradient) const {
    const Impl& d = *m_pImpl;
    if (!d.parsed || !value || (count > 0 && (!withRespectTo || !gradient)))
        return false;
    for (size_t k = 0; k < count; ++k)
        if (withRespectTo[k] < 0 || size_t(withRespectTo[k]) >= d.names.size())
            return false;
    d.tape.EvaluateGradient(d.Gather(), withRespectTo, count, value, gradient);
    return true;
}

bool VyrFormula::EvaluateGradientArray(int variable, const double* in, size_t n,
                                       const int* withRespectTo, size_t count, double* values,
                                       double* jacobian) const {
    const Impl& d = *m_pImpl;
    if (!d.parsed || variable < 0 || size_t(variable) >= d.names.size() ||
        (n > 0 && (!in || !values || (count > 0 && (!withRespectTo || !jacobian)))))
        return false;
    for (size_t k = 0; k < count; ++k)
        if (withRespectTo[k] < 0 || size_t(withRespectTo[k]) >= d.names.size())
            return false;
    d.Gather();
    d.tape.EvaluateGradientArray(d.values.data(), variable, in, n, withRespectTo, count, values,
                                 jacobian);
    return true;
}

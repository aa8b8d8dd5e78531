// A formula over named variables, as a class types it: "A*exp(-x/tau)+C", "0.5*m*v^2".
//
//     VyrFormula f;
//     f.DeclareVariable(L"x");
//     f.DeclareVariable(L"tau", 2.0);
//     if (!f.Parse(L"exp(-x/tau)"))
//         report(f.GetError());
//     f.EvaluateArray(L"x", xs, ys, n);  // every x at once
//
// Grammar: numbers with a decimal point ("1.5", "2e-3"); names of declared variables; + - * /
// and ^ with the usual precedence, ^ right-associative and tighter than a sign, so that
// -(x-b)^2 is -((x-b)^2) and 2^3^2 is 2^9; comparisons (< <= > >= == !=), && and || giving 1
// or 0, and c ? a : b; parentheses; the functions sin cos tan asin acos atan exp ln log10 sqrt
// abs of one argument and the constant pi. Angles are in radians. Names are case-sensitive and
// made of letters, digits and "_", not beginning with a digit.
//
// Variables hold their own value (DeclareVariable, SetValue) or are bound to the caller's
// storage (BindVariable), such as an experiment variable's value (VyrVariable::GetAdressValue),
// which must then outlive the formula's evaluations. A name that the formula uses but that was
// not declared makes Parse refuse it.
//
// Evaluation follows IEEE arithmetic: sqrt(-1), ln(0), 1/0 give NaN or an infinity, never an
// error. Derivatives with respect to any of the variables are exact to rounding (forward-mode
// automatic differentiation of the parsed formula), not difference quotients.
//
// Errors: no exceptions; Parse answers false and GetError says why in one line; evaluating an
// unparsed formula gives NaN (Evaluate) or false. Threads: a formula is used by one thread at a
// time; distinct formulas are independent.
#ifndef VYRBASE_CALC_VYRFORMULA_H
#define VYRBASE_CALC_VYRFORMULA_H

#include <cstddef>
#include <memory>

#include <wx/arrstr.h>
#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrFormula {
public:
    VyrFormula();
    ~VyrFormula();
    VyrFormula(const VyrFormula&) = delete;
    VyrFormula& operator=(const VyrFormula&) = delete;

    // Declares a variable that the formula may use, holding `value`; false for a name that is not
    // a valid name, or one of the functions or pi. Declaring an existing name sets its value and
    // unbinds it. Declarations after Parse take effect at the next Parse.
    bool DeclareVariable(const wxString& name, double value = 0.0);
    // Declares a variable whose value is read at `address` at every evaluation; false for an
    // invalid name or a null address.
    bool BindVariable(const wxString& name, double* address);
    // Sets a declared variable's value (through its binding, if bound); false for an unknown name.
    bool SetValue(const wxString& name, double value);
    bool HasVariable(const wxString& name) const;
    // The variable's index for the fast forms below, -1 for an unknown name.
    int GetVariableIndex(const wxString& name) const;

    // Parses and compiles; false, with GetError, for a syntax error, an unknown name or an empty
    // text. A refused text leaves the formula unparsed.
    bool Parse(const wxString& expression);
    // As Parse, but every unknown name that may name a variable is declared (value 0) instead of
    // refused: the way to learn a model's parameters from its text. GetUsedVariables then
    // lists them.
    bool ParseDeclaring(const wxString& expression);
    bool IsParsed() const;
    const wxString& GetExpression() const;
    const wxString& GetError() const;
    // The declared variables that the parsed formula uses, in order of declaration.
    wxArrayString GetUsedVariables() const;

    // The value with the variables' current values; NaN when the formula is not parsed.
    double Evaluate() const;
    // out[i] = the value with the variable `name` set to in[i]; the variable keeps its value
    // after the call. False (nothing written) when unparsed or `name` is unknown. `in` and `out`
    // may be the same array.
    bool EvaluateArray(const wxString& name, const double* in, double* out, size_t n) const;
    bool EvaluateArray(int variable, const double* in, double* out, size_t n) const;
    // The value, and in gradient[k] its partial derivative with respect to the variable
    // withRespectTo[k], k < count. False (nothing written) when unparsed or an index is unknown.
    bool EvaluateGradient(const int* withRespectTo, size_t count, double* value,
                          double* gradient) const;
    // Both over an array: with `variable` taking in[i], values[i] is the value and
    // jacobian[k * n + i] its derivative with respect to withRespectTo[k] (one column of n
    // after the other). False (nothing written) as EvaluateArray and EvaluateGradient.
    bool EvaluateGradientArray(int variable, const double* in, size_t n, const int* withRespectTo,
                               size_t count, double* values, double* jacobian) const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_pImpl;
};

#endif

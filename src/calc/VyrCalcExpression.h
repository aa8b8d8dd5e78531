// The reading of a calculation's text that the formula parser does not do: the assignment, the
// names it uses, the operations on whole series (deriv, integ, smooth) and the unit that follows
// from the expression.
#ifndef VYRBASE_SRC_CALC_VYRCALCEXPRESSION_H
#define VYRBASE_SRC_CALC_VYRCALCEXPRESSION_H

#include <functional>
#include <vector>

#include <wx/string.h>

namespace vyrcalc {

// Splits "NAME = EXPR" at its one assignment sign (not part of ==, <=, >= or !=), both sides
// trimmed; false when there is none or a side is empty.
bool SplitAssignment(const wxString& text, wxString& name, wxString& expr);

// A name in an expression: letters, digits and "_", not beginning with a digit.
struct NameUse {
    wxString name;
    bool called;  // followed by "(": a function
};
// Every name of `expr` in order of appearance (numbers and their exponents are skipped).
std::vector<NameUse> ScanNames(const wxString& expr);

// The series operations.
bool IsSeriesOperation(const wxString& name);

// The first call of a series operation in `expr`: its name, where it begins (the name) and ends
// (after its closing parenthesis), its argument and, for smooth, the width text after the last
// comma at the top level of the argument.
struct SeriesCall {
    wxString op;
    size_t begin = 0;
    size_t end = 0;
    wxString argument;
    wxString width;
};
// False without such a call; true with `error` set when the call is malformed (unbalanced
// parentheses, a missing or extra argument).
bool FindSeriesCall(const wxString& expr, SeriesCall& call, wxString& error);

// The unit of `expr`, given the unit of each name (`unitOf` answers false for a name without
// unit, such as a variable) and the abscissa's unit for deriv and integ. False when no unit
// follows (a name without unit, a sum of different units, a power that is not a whole number,
// a construct it does not follow).
bool InferUnit(const wxString& expr, const std::function<bool(const wxString&, wxString&)>& unitOf,
               const wxString& xUnit, wxString& unit);

}  // namespace vyrcalc

#endif

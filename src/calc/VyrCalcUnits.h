// Units of calculated quantities, written as a class writes them: a product with a middle dot
// (V·A), a quotient with a slash (m/s), a power with an exponent (m^2). No unit is simplified
// or converted: V·A stays V·A unless the caller names it W.
#ifndef VYRBASE_SRC_CALC_VYRCALCUNITS_H
#define VYRBASE_SRC_CALC_VYRCALCUNITS_H

#include <wx/string.h>

namespace vyrcalc {

// a·b; an empty unit (a pure number) drops out.
wxString UnitProduct(const wxString& a, const wxString& b);
// a/b; "1/b" for an empty a, a for an empty b.
wxString UnitQuotient(const wxString& a, const wxString& b);
// a^n for an integer n (a for 1, empty for 0 or an empty a).
wxString UnitPower(const wxString& a, long n);

}  // namespace vyrcalc

#endif

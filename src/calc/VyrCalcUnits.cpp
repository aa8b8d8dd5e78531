#include "calc/VyrCalcUnits.h"

namespace vyrcalc {

namespace {

const wchar_t kDot = L'\u00b7';

bool Has(const wxString& u, wchar_t c) {
    return u.find(c) != wxString::npos;
}

// A compound unit in parentheses where an operator next to it would bind the wrong way: a
// quotient beside a product or under a slash, a product under a slash, anything raised.
wxString Grouped(const wxString& u, bool underSlash, bool raised = false) {
    if (Has(u, L'/') || ((underSlash || raised) && Has(u, kDot)) || (raised && Has(u, L'^')))
        return "(" + u + ")";
    return u;
}

}  // namespace

wxString UnitProduct(const wxString& a, const wxString& b) {
    if (a.empty())
        return b;
    if (b.empty())
        return a;
    return Grouped(a, false) + kDot + Grouped(b, false);
}

wxString UnitQuotient(const wxString& a, const wxString& b) {
    if (b.empty())
        return a;
    return (a.empty() ? wxString("1") : a) + "/" + Grouped(b, true);
}

wxString UnitPower(const wxString& a, long n) {
    if (a.empty() || n == 0)
        return wxString();
    if (n == 1)
        return a;
    return Grouped(a, false, true) + wxString::Format("^%ld", n);
}

}  // namespace vyrcalc

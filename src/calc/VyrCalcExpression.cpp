#include "calc/VyrCalcExpression.h"

#include <cmath>
#include <cstdlib>

#include "calc/VyrCalcUnits.h"

namespace vyrcalc {

namespace {

bool IsNameStart(wxUniChar c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool IsNameChar(wxUniChar c) {
    return IsNameStart(c) || (c >= '0' && c <= '9');
}

bool IsDigit(wxUniChar c) {
    return c >= '0' && c <= '9';
}

// The end of the number beginning at i: digits, a point, an exponent with its sign.
size_t SkipNumber(const wxString& s, size_t i) {
    while (i < s.size() && (IsDigit(s[i]) || s[i] == '.'))
        ++i;
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        size_t j = i + 1;
        if (j < s.size() && (s[j] == '+' || s[j] == '-'))
            ++j;
        if (j < s.size() && IsDigit(s[j])) {
            i = j;
            while (i < s.size() && IsDigit(s[i]))
                ++i;
        }
    }
    return i;
}

size_t SkipBlanks(const wxString& s, size_t i) {
    while (i < s.size() && (s[i] == ' ' || s[i] == '\t'))
        ++i;
    return i;
}

}  // namespace

bool SplitAssignment(const wxString& text, wxString& name, wxString& expr) {
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '=')
            continue;
        const bool paired = (i + 1 < text.size() && text[i + 1] == '=') ||
                            (i > 0 && wxString("<>!=").Find(text[i - 1]) != wxNOT_FOUND);
        if (paired) {
            ++i;
            continue;
        }
        name = text.Left(i);
        expr = text.Mid(i + 1);
        name.Trim(true).Trim(false);
        expr.Trim(true).Trim(false);
        return !name.empty() && !expr.empty();
    }
    return false;
}

std::vector<NameUse> ScanNames(const wxString& expr) {
    std::vector<NameUse> names;
    size_t i = 0;
    while (i < expr.size()) {
        if (IsDigit(expr[i]) || expr[i] == '.') {
            i = SkipNumber(expr, i);
        } else if (IsNameStart(expr[i])) {
            size_t j = i;
            while (j < expr.size() && IsNameChar(expr[j]))
                ++j;
            const size_t k = SkipBlanks(expr, j);
            names.push_back({expr.Mid(i, j - i), k < expr.size() && expr[k] == '('});
            i = j;
        } else {
            ++i;
        }
    }
    return names;
}

bool IsSeriesOperation(const wxString& name) {
    return name == "deriv" || name == "integ" || name == "smooth";
}

bool FindSeriesCall(const wxString& expr, SeriesCall& call, wxString& error) {
    size_t i = 0;
    while (i < expr.size()) {
        if (IsDigit(expr[i]) || expr[i] == '.') {
            i = SkipNumber(expr, i);
            continue;
        }
        if (!IsNameStart(expr[i])) {
            ++i;
            continue;
        }
        size_t j = i;
        while (j < expr.size() && IsNameChar(expr[j]))
            ++j;
        const wxString name = expr.Mid(i, j - i);
        const size_t open = SkipBlanks(expr, j);
        if (!IsSeriesOperation(name) || open >= expr.size() || expr[open] != '(') {
            i = j;
            continue;
        }
        int depth = 0;
        size_t comma = wxString::npos, close = wxString::npos;
        for (size_t k = open; k < expr.size() && close == wxString::npos; ++k) {
            if (expr[k] == '(')
                ++depth;
            else if (expr[k] == ')' && --depth == 0)
                close = k;
            else if (expr[k] == ',' && depth == 1)
                comma = k;
        }
        call.op = name;
        call.begin = i;
        if (close == wxString::npos) {
            error = name + "( has no closing parenthesis";
            return true;
        }
        call.end = close + 1;
        const bool smooth = name == "smooth";
        if (smooth != (comma != wxString::npos)) {
            error = smooth ? wxString("smooth wants two arguments: smooth(S, n)")
                           : name + " wants one argument";
            return true;
        }
        const size_t argEnd = smooth ? comma : close;
        call.argument = expr.Mid(open + 1, argEnd - open - 1);
        call.argument.Trim(true).Trim(false);
        call.width = smooth ? expr.Mid(comma + 1, close - comma - 1) : wxString();
        call.width.Trim(true).Trim(false);
        if (call.argument.empty())
            error = name + " has an empty argument";
        return true;
    }
    return false;
}

namespace {

// A recursive reading of the expression that carries units instead of values. Any construct
// it does not follow (comparisons, conditions, a name without unit) makes the unit unknown.
class UnitReader {
public:
    UnitReader(const wxString& s, const std::function<bool(const wxString&, wxString&)>& unitOf,
               const wxString& xUnit)
        : m_s(s), m_unitOf(unitOf), m_xUnit(xUnit) {}

    bool Read(wxString& unit) {
        bool ok = Sum(unit);
        Blank();
        return ok && m_i == m_s.size();
    }

private:
    void Blank() { m_i = SkipBlanks(m_s, m_i); }
    bool At(wxUniChar c) {
        Blank();
        return m_i < m_s.size() && m_s[m_i] == c;
    }

    bool Sum(wxString& u) {
        // Deeper than any formula a person writes: the unit is then not followed, and the stack
        // stays small whatever the text.
        if (++m_depth > kMaxDepth)
            return false;
        const bool ok = SumAtDepth(u);
        --m_depth;
        return ok;
    }

    bool SumAtDepth(wxString& u) {
        if (!Product(u))
            return false;
        while (At('+') || At('-')) {
            ++m_i;
            wxString v;
            if (!Product(v) || v != u)
                return false;
        }
        return true;
    }

    bool Product(wxString& u) {
        if (!Unary(u))
            return false;
        while (At('*') || At('/')) {
            const bool times = m_s[m_i++] == '*';
            wxString v;
            if (!Unary(v))
                return false;
            u = times ? UnitProduct(u, v) : UnitQuotient(u, v);
        }
        return true;
    }

    // A sign binds looser than ^: -x^2 is -(x^2).
    bool Unary(wxString& u) {
        while (At('-') || At('+'))
            ++m_i;
        return Power(u);
    }

    bool Power(wxString& u) {
        if (!Primary(u))
            return false;
        if (!At('^'))
            return true;
        ++m_i;
        // A whole number, possibly signed, as exponent: its value is the power of the unit.
        const size_t exponent = m_i;
        Blank();
        bool negative = false;
        if (At('-') || At('+'))
            negative = m_s[m_i++] == '-';
        Blank();
        const size_t digits = m_i;
        if (m_i < m_s.size() && IsDigit(m_s[m_i]))
            m_i = SkipNumber(m_s, m_i);
        const double n =
            m_i == digits
                ? 0.5
                : std::strtod(m_s.Mid(digits, m_i - digits).ToStdString().c_str(), nullptr);
        if (n != std::floor(n) || n > 100 || At('^')) {
            // Any other exponent: a pure number raised to a pure number stays a pure number.
            m_i = exponent;
            wxString e;
            if (!u.empty() || !Unary(e) || !e.empty())
                return false;
            return true;
        }
        const long p = static_cast<long>(n);
        u = negative ? UnitQuotient(wxString(), UnitPower(u, p)) : UnitPower(u, p);
        return true;
    }

    bool Primary(wxString& u) {
        Blank();
        if (m_i >= m_s.size())
            return false;
        const wxUniChar c = m_s[m_i];
        if (IsDigit(c) || c == '.') {
            m_i = SkipNumber(m_s, m_i);
            u.clear();
            return true;
        }
        if (c == '(') {
            ++m_i;
            if (!Sum(u) || !At(')'))
                return false;
            ++m_i;
            return true;
        }
        if (!IsNameStart(c))
            return false;
        const size_t start = m_i;
        while (m_i < m_s.size() && IsNameChar(m_s[m_i]))
            ++m_i;
        const wxString name = m_s.Mid(start, m_i - start);
        if (!At('('))
            return name == "pi" ? (u.clear(), true) : m_unitOf(name, u);
        ++m_i;
        std::vector<wxString> args;
        do {
            wxString a;
            if (!Sum(a))
                return false;
            args.push_back(a);
        } while (At(',') && ++m_i);
        if (!At(')'))
            return false;
        ++m_i;
        if (name == "deriv" && args.size() == 1)
            u = UnitQuotient(args[0], m_xUnit);
        else if (name == "integ" && args.size() == 1)
            u = UnitProduct(args[0], m_xUnit);
        else if (name == "smooth" && args.size() == 2)
            u = args[0];
        else if (name == "abs" && args.size() == 1)
            u = args[0];
        else if (args.size() == 1 && args[0].empty())
            u.clear();  // sin, exp, ln... of a pure number
        else
            return false;
        return true;
    }

    const wxString& m_s;
    const std::function<bool(const wxString&, wxString&)>& m_unitOf;
    const wxString& m_xUnit;
    size_t m_i = 0;
    int m_depth = 0;
    static const int kMaxDepth = 200;
};

}  // namespace

bool InferUnit(const wxString& expr, const std::function<bool(const wxString&, wxString&)>& unitOf,
               const wxString& xUnit, wxString& unit) {
    wxString u;
    if (!UnitReader(expr, unitOf, xUnit).Read(u))
        return false;
    unit = u;
    return true;
}

}  // namespace vyrcalc

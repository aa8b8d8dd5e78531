#include "calc/VyrFormulaTape.h"

#include <algorithm>
#include <cmath>

namespace {

// Each function with its derivative, so that value and slope come from one table.
struct FunctionEntry {
    const char* name;
    double (*value)(double);
    double (*slope)(double);  // d/dv of value at v
};

double Sin(double v) {
    return std::sin(v);
}
double Cos(double v) {
    return std::cos(v);
}
double Tan(double v) {
    return std::tan(v);
}
double Asin(double v) {
    return std::asin(v);
}
double Acos(double v) {
    return std::acos(v);
}
double Atan(double v) {
    return std::atan(v);
}
double Exp(double v) {
    return std::exp(v);
}
double Ln(double v) {
    return std::log(v);
}
double Log10(double v) {
    return std::log10(v);
}
double Sqrt(double v) {
    return std::sqrt(v);
}
double Abs(double v) {
    return std::fabs(v);
}

double SinSlope(double v) {
    return std::cos(v);
}
double CosSlope(double v) {
    return -std::sin(v);
}
double TanSlope(double v) {
    const double c = std::cos(v);
    return 1.0 / (c * c);
}
double AsinSlope(double v) {
    return 1.0 / std::sqrt(1.0 - v * v);
}
double AcosSlope(double v) {
    return -1.0 / std::sqrt(1.0 - v * v);
}
double AtanSlope(double v) {
    return 1.0 / (1.0 + v * v);
}
double LnSlope(double v) {
    return 1.0 / v;
}
double Log10Slope(double v) {
    return 1.0 / (v * std::log(10.0));
}
double SqrtSlope(double v) {
    return 0.5 / std::sqrt(v);
}
double AbsSlope(double v) {
    return v > 0 ? 1.0 : (v < 0 ? -1.0 : 0.0);
}

const FunctionEntry kFunctions[kFunctionCount] = {
    {"sin", Sin, SinSlope},    {"cos", Cos, CosSlope},    {"tan", Tan, TanSlope},
    {"asin", Asin, AsinSlope}, {"acos", Acos, AcosSlope}, {"atan", Atan, AtanSlope},
    {"exp", Exp, Exp},         {"ln", Ln, LnSlope},       {"log10", Log10, Log10Slope},
    {"sqrt", Sqrt, SqrtSlope}, {"abs", Abs, AbsSlope},
};

// Operands each operation takes from the stack, and values it leaves.
int Pops(VyrTapeOp op) {
    switch (op) {
        case VyrTapeOp::kConst:
        case VyrTapeOp::kVar:
        case VyrTapeOp::kEndIf:
            return 0;
        case VyrTapeOp::kNeg:
        case VyrTapeOp::kFunc:
        case VyrTapeOp::kIf:
        case VyrTapeOp::kElse:
            return 1;
        default:
            return 2;
    }
}

int Pushes(VyrTapeOp op) {
    switch (op) {
        case VyrTapeOp::kIf:
        case VyrTapeOp::kElse:
        case VyrTapeOp::kEndIf:
            return 0;
        default:
            return 1;
    }
}

double Binary(VyrTapeOp op, double a, double b) {
    switch (op) {
        case VyrTapeOp::kAdd:
            return a + b;
        case VyrTapeOp::kSub:
            return a - b;
        case VyrTapeOp::kMul:
            return a * b;
        case VyrTapeOp::kDiv:
            return a / b;
        case VyrTapeOp::kPow:
            return std::pow(a, b);
        case VyrTapeOp::kLess:
            return a < b;
        case VyrTapeOp::kLessEqual:
            return a <= b;
        case VyrTapeOp::kGreater:
            return a > b;
        case VyrTapeOp::kGreaterEqual:
            return a >= b;
        case VyrTapeOp::kEqual:
            return a == b;
        case VyrTapeOp::kNotEqual:
            return a != b;
        case VyrTapeOp::kAnd:
            return a != 0 && b != 0;
        case VyrTapeOp::kOr:
            return a != 0 || b != 0;
        default:
            return 0.0;
    }
}

// A block of points is evaluated step by step over the whole block, so that each step is one
// tight loop the compiler vectorises; 256 points keep the stack of blocks in the first cache.
const size_t kBlock = 256;

}  // namespace

const char* VyrTapeFunctionName(int function) {
    return function >= 0 && function < kFunctionCount ? kFunctions[function].name : nullptr;
}

double VyrTapeFunctionValue(int function, double v) {
    return function >= 0 && function < kFunctionCount ? kFunctions[function].value(v) : NAN;
}

void VyrFormulaTape::Clear() {
    m_steps.clear();
    m_depth = 0;
    m_bConditional = false;
}

void VyrFormulaTape::Push(VyrTapeOp op, int arg, double value) {
    m_steps.push_back(VyrTapeStep{op, arg, value});
}

bool VyrFormulaTape::Finish() {
    // The stack's depth along the steps; a conditional's two branches each leave one value, so
    // its else-branch starts one value lower than the then-branch ended.
    long depth = 0;
    size_t deepest = 0;
    m_bConditional = false;
    for (size_t i = 0; i < m_steps.size(); ++i) {
        const VyrTapeStep& s = m_steps[i];
        if (depth < Pops(s.op))
            return false;
        if (s.op == VyrTapeOp::kIf || s.op == VyrTapeOp::kElse) {
            m_bConditional = true;
            if (s.arg < 0 || i + s.arg >= m_steps.size())
                return false;
        }
        if (s.op == VyrTapeOp::kFunc && (s.arg < 0 || s.arg >= kFunctionCount))
            return false;
        depth += Pushes(s.op) - Pops(s.op);
        deepest = std::max(deepest, size_t(depth));
    }
    if (depth != 1)
        return false;
    m_depth = deepest;
    return true;
}

double VyrFormulaTape::Evaluate(const double* values) const {
    double v = NAN;
    EvaluateGradient(values, nullptr, 0, &v, nullptr);
    return v;
}

void VyrFormulaTape::EvaluateArray(double* values, int varying, const double* in, double* out,
                                   size_t n) const {
    if (m_steps.empty())
        return;
    if (m_bConditional) {
        // Branches differ from point to point: one point at a time.
        const double kept = values[varying];
        for (size_t j = 0; j < n; ++j) {
            values[varying] = in[j];
            out[j] = Evaluate(values);
        }
        values[varying] = kept;
        return;
    }
    std::vector<double> stack(m_depth * kBlock);
    for (size_t start = 0; start < n; start += kBlock) {
        const size_t count = std::min(kBlock, n - start);
        EvaluateBlock(values, varying, in + start, out + start, count, stack.data());
    }
}

void VyrFormulaTape::EvaluateBlock(const double* values, int varying, const double* in, double* out,
                                   size_t n, double* stack) const {
    double* top = stack;  // the next free block
    for (const VyrTapeStep& s : m_steps) {
        switch (s.op) {
            case VyrTapeOp::kConst:
                std::fill(top, top + n, s.value);
                top += kBlock;
                break;
            case VyrTapeOp::kVar:
                if (s.arg == varying)
                    std::copy(in, in + n, top);
                else
                    std::fill(top, top + n, values[s.arg]);
                top += kBlock;
                break;
            case VyrTapeOp::kNeg: {
                double* a = top - kBlock;
                for (size_t j = 0; j < n; ++j)
                    a[j] = -a[j];
                break;
            }
            case VyrTapeOp::kFunc: {
                double* a = top - kBlock;
                double (*f)(double) = kFunctions[s.arg].value;
                for (size_t j = 0; j < n; ++j)
                    a[j] = f(a[j]);
                break;
            }
            case VyrTapeOp::kAdd: {
                double* a = top - 2 * kBlock;
                const double* b = top - kBlock;
                for (size_t j = 0; j < n; ++j)
                    a[j] += b[j];
                top -= kBlock;
                break;
            }
            case VyrTapeOp::kSub: {
                double* a = top - 2 * kBlock;
                const double* b = top - kBlock;
                for (size_t j = 0; j < n; ++j)
                    a[j] -= b[j];
                top -= kBlock;
                break;
            }
            case VyrTapeOp::kMul: {
                double* a = top - 2 * kBlock;
                const double* b = top - kBlock;
                for (size_t j = 0; j < n; ++j)
                    a[j] *= b[j];
                top -= kBlock;
                break;
            }
            case VyrTapeOp::kDiv: {
                double* a = top - 2 * kBlock;
                const double* b = top - kBlock;
                for (size_t j = 0; j < n; ++j)
                    a[j] /= b[j];
                top -= kBlock;
                break;
            }
            default: {
                double* a = top - 2 * kBlock;
                const double* b = top - kBlock;
                for (size_t j = 0; j < n; ++j)
                    a[j] = Binary(s.op, a[j], b[j]);
                top -= kBlock;
                break;
            }
        }
    }
    std::copy(stack, stack + n, out);
}

void VyrFormulaTape::EvaluateGradient(const double* values, const int* wrt, size_t count,
                                      double* value, double* gradient) const {
    if (m_steps.empty())
        return;
    std::vector<double> stack(m_depth * (count + 1));
    GradientAt(values, wrt, count, stack.data(), value, gradient);
}

void VyrFormulaTape::EvaluateGradientArray(double* values, int varying, const double* in, size_t n,
                                           const int* wrt, size_t count, double* out,
                                           double* jacobian) const {
    if (m_steps.empty())
        return;
    std::vector<double> stack(m_depth * (count + 1));
    std::vector<double> gradient(count);
    const double kept = values[varying];
    for (size_t j = 0; j < n; ++j) {
        values[varying] = in[j];
        GradientAt(values, wrt, count, stack.data(), &out[j], gradient.data());
        for (size_t k = 0; k < count; ++k)
            jacobian[k * n + j] = gradient[k];
    }
    values[varying] = kept;
}

void VyrFormulaTape::GradientAt(const double* values, const int* wrt, size_t count, double* stack,
                                double* value, double* gradient) const {
    // Each stack entry is a value followed by its `count` partial derivatives.
    const size_t width = count + 1;
    double* top = stack;
    for (size_t i = 0; i < m_steps.size(); ++i) {
        const VyrTapeStep& s = m_steps[i];
        switch (s.op) {
            case VyrTapeOp::kConst:
                top[0] = s.value;
                std::fill(top + 1, top + width, 0.0);
                top += width;
                break;
            case VyrTapeOp::kVar:
                top[0] = values[s.arg];
                for (size_t k = 0; k < count; ++k)
                    top[1 + k] = wrt[k] == s.arg ? 1.0 : 0.0;
                top += width;
                break;
            case VyrTapeOp::kNeg: {
                double* a = top - width;
                for (size_t k = 0; k < width; ++k)
                    a[k] = -a[k];
                break;
            }
            case VyrTapeOp::kFunc: {
                double* a = top - width;
                const FunctionEntry& f = kFunctions[s.arg];
                const double slope = count ? f.slope(a[0]) : 0.0;
                a[0] = f.value(a[0]);
                for (size_t k = 1; k < width; ++k)
                    if (a[k] != 0.0)
                        a[k] *= slope;
                break;
            }
            case VyrTapeOp::kIf:
                top -= width;
                if (top[0] == 0.0)
                    i += s.arg;
                break;
            case VyrTapeOp::kElse:
                i += s.arg;
                break;
            case VyrTapeOp::kEndIf:
                break;
            default: {
                double* a = top - 2 * width;
                const double* b = top - width;
                const double av = a[0], bv = b[0];
                switch (s.op) {
                    case VyrTapeOp::kAdd:
                        for (size_t k = 0; k < width; ++k)
                            a[k] += b[k];
                        break;
                    case VyrTapeOp::kSub:
                        for (size_t k = 0; k < width; ++k)
                            a[k] -= b[k];
                        break;
                    case VyrTapeOp::kMul:
                        a[0] = av * bv;
                        for (size_t k = 1; k < width; ++k)
                            a[k] = a[k] * bv + av * b[k];
                        break;
                    case VyrTapeOp::kDiv: {
                        const double q = av / bv;
                        a[0] = q;
                        for (size_t k = 1; k < width; ++k)
                            a[k] = (a[k] - q * b[k]) / bv;
                        break;
                    }
                    case VyrTapeOp::kPow: {
                        const double p = std::pow(av, bv);
                        // Terms whose derivative is zero are left out, so that a constant
                        // exponent of a negative base, or a zero base, gives no NaN.
                        for (size_t k = 1; k < width; ++k) {
                            double d = 0.0;
                            if (a[k] != 0.0)
                                d += bv * std::pow(av, bv - 1.0) * a[k];
                            if (b[k] != 0.0)
                                d += p * std::log(av) * b[k];
                            a[k] = d;
                        }
                        a[0] = p;
                        break;
                    }
                    default:
                        a[0] = Binary(s.op, av, bv);
                        std::fill(a + 1, a + width, 0.0);
                        break;
                }
                top -= width;
                break;
            }
        }
    }
    *value = stack[0];
    for (size_t k = 0; k < count; ++k)
        gradient[k] = stack[1 + k];
}

// The compiled form of a formula: its steps in postfix order, evaluated on a stack of values,
// of blocks of values, or of values with their derivatives. The parser (VyrFormulaParser)
// writes it; VyrFormula runs it.
#ifndef VYRBASE_SRC_CALC_VYRFORMULATAPE_H
#define VYRBASE_SRC_CALC_VYRFORMULATAPE_H

#include <cstddef>
#include <vector>

enum class VyrTapeOp : unsigned char {
    kConst,  // pushes value
    kVar,    // pushes variable `arg`
    kAdd,
    kSub,
    kMul,
    kDiv,
    kPow,
    kNeg,
    kFunc,  // applies function `arg` (VyrTapeFunction) to the top
    kLess,
    kLessEqual,
    kGreater,
    kGreaterEqual,
    kEqual,
    kNotEqual,
    kAnd,
    kOr,
    kIf,     // pops a condition; when it is 0, skips `arg` steps (to after the kElse)
    kElse,   // skips `arg` steps (to after the kEndIf)
    kEndIf,  // marks the end of a conditional
};

// The functions of one argument, in the order of the table in VyrFormulaTape.cpp.
enum VyrTapeFunction {
    kFunctionSin,
    kFunctionCos,
    kFunctionTan,
    kFunctionAsin,
    kFunctionAcos,
    kFunctionAtan,
    kFunctionExp,
    kFunctionLn,
    kFunctionLog10,
    kFunctionSqrt,
    kFunctionAbs,
    kFunctionCount
};

struct VyrTapeStep {
    VyrTapeOp op;
    int arg;       // variable index, function, or steps to skip
    double value;  // kConst
};

// The names of the functions, as the formulas write them, and their values.
const char* VyrTapeFunctionName(int function);
double VyrTapeFunctionValue(int function, double v);

class VyrFormulaTape {
public:
    void Clear();
    void Push(VyrTapeOp op, int arg = 0, double value = 0.0);
    bool IsEmpty() const { return m_steps.empty(); }
    // Checks that every step finds its operands and that one value is left; sets the depth.
    bool Finish();

    // values[i] is the value of variable i.
    double Evaluate(const double* values) const;
    // out[j] for the variable `varying` taking in[j]; the others from `values`, which is
    // used as scratch space and left as it was.
    void EvaluateArray(double* values, int varying, const double* in, double* out, size_t n) const;
    // The value and its derivatives with respect to the variables wrt[0..count).
    void EvaluateGradient(const double* values, const int* wrt, size_t count, double* value,
                          double* gradient) const;

    // The value and derivatives at every in[j] (jacobian column-major, n rows).
    void EvaluateGradientArray(double* values, int varying, const double* in, size_t n,
                               const int* wrt, size_t count, double* out, double* jacobian) const;

private:
    void GradientAt(const double* values, const int* wrt, size_t count, double* stack,
                    double* value, double* gradient) const;
    void EvaluateBlock(const double* values, int varying, const double* in, double* out, size_t n,
                       double* stack) const;

    std::vector<VyrTapeStep> m_steps;
    size_t m_depth = 0;
    bool m_bConditional = false;
};

#endif

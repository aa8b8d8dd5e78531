#include "calc/VyrFormulaParser.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <memory>

#if defined(_UNICODE)
#error "muParser is built with narrow strings: include no toolkit header here"
#endif
#include <muParserBase.h>

namespace {

// The functions are declared with their table index + 1 as user data (muParser refuses a null
// one), so that the postfix code says which function each call is; the signs are functions of
// this file, known by address.
int FunctionOf(void* data) {
    return int(reinterpret_cast<intptr_t>(data)) - 1;
}
double CallFunction(void* data, double v) {
    return VyrTapeFunctionValue(FunctionOf(data), v);
}
double Negate(double v) {
    return -v;
}
double Identity(double v) {
    return v;
}

const char kNameChars[] = "0123456789_abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";

// Numbers in the C locale whatever the process's locale: digits, an optional fraction and
// exponent. A sign is an operator, not part of the number.
int ReadNumber(const char* text, int* pos, double* value) {
    if (!(std::isdigit(static_cast<unsigned char>(text[0])) ||
          (text[0] == '.' && std::isdigit(static_cast<unsigned char>(text[1])))))
        return 0;
    const char* end = text + std::strlen(text);
    const std::from_chars_result r = std::from_chars(text, end, *value);
    if (r.ec != std::errc())
        return 0;
    *pos += int(r.ptr - text);
    return 1;
}

class Parser : public mu::ParserBase {
public:
    Parser() {
        AddValIdent(ReadNumber);
        InitCharSets();
        InitFun();
        InitConst();
        InitOprt();
        EnableOptimizer(false);  // plain postfix code, one step per operation
    }

protected:
    void InitCharSets() override {
        DefineNameChars(kNameChars);
        DefineOprtChars("+-*^/?<>=!%&|~'");
        DefineInfixOprtChars("+-");
    }
    void InitFun() override {
        for (int f = 0; f < kFunctionCount; ++f)
            DefineFunUserData(VyrTapeFunctionName(f), CallFunction,
                              reinterpret_cast<void*>(intptr_t(f + 1)));
    }
    void InitConst() override { DefineConst("pi", M_PI); }
    void InitOprt() override {
        DefineInfixOprt("-", Negate);
        DefineInfixOprt("+", Identity);
    }
};

bool Translate(const mu::ParserByteCode& code, const std::vector<double>& slots,
               VyrFormulaTape& tape, std::vector<bool>& used, std::string& error) {
    const mu::SToken* t = code.GetBase();
    for (size_t i = 0; i < code.GetSize() && t[i].Cmd != mu::cmEND; ++i) {
        const mu::SToken& s = t[i];
        switch (s.Cmd) {
            case mu::cmVAL:
                tape.Push(VyrTapeOp::kConst, 0, s.Val.data2);
                break;
            case mu::cmVAR: {
                const ptrdiff_t index = s.Val.ptr - slots.data();
                if (index < 0 || size_t(index) >= slots.size() || s.Val.data != 1.0 ||
                    s.Val.data2 != 0.0) {
                    error = "unsupported variable reference";
                    return false;
                }
                tape.Push(VyrTapeOp::kVar, int(index));
                used[index] = true;
                break;
            }
            case mu::cmFUNC: {
                const mu::generic_callable_type& cb = s.Fun.cb;
                if (s.Fun.argc != 1) {
                    error = "unsupported function";
                    return false;
                }
                if (cb._pRawFun == reinterpret_cast<mu::erased_fun_type>(CallFunction))
                    tape.Push(VyrTapeOp::kFunc, FunctionOf(cb._pUserData));
                else if (cb._pRawFun == reinterpret_cast<mu::erased_fun_type>(Negate))
                    tape.Push(VyrTapeOp::kNeg);
                else if (cb._pRawFun != reinterpret_cast<mu::erased_fun_type>(Identity)) {
                    error = "unsupported function";
                    return false;
                }
                break;
            }
            case mu::cmADD:
                tape.Push(VyrTapeOp::kAdd);
                break;
            case mu::cmSUB:
                tape.Push(VyrTapeOp::kSub);
                break;
            case mu::cmMUL:
                tape.Push(VyrTapeOp::kMul);
                break;
            case mu::cmDIV:
                tape.Push(VyrTapeOp::kDiv);
                break;
            case mu::cmPOW:
                tape.Push(VyrTapeOp::kPow);
                break;
            case mu::cmLT:
                tape.Push(VyrTapeOp::kLess);
                break;
            case mu::cmLE:
                tape.Push(VyrTapeOp::kLessEqual);
                break;
            case mu::cmGT:
                tape.Push(VyrTapeOp::kGreater);
                break;
            case mu::cmGE:
                tape.Push(VyrTapeOp::kGreaterEqual);
                break;
            case mu::cmEQ:
                tape.Push(VyrTapeOp::kEqual);
                break;
            case mu::cmNEQ:
                tape.Push(VyrTapeOp::kNotEqual);
                break;
            case mu::cmLAND:
                tape.Push(VyrTapeOp::kAnd);
                break;
            case mu::cmLOR:
                tape.Push(VyrTapeOp::kOr);
                break;
            case mu::cmIF:
                tape.Push(VyrTapeOp::kIf, s.Oprt.offset);
                break;
            case mu::cmELSE:
                tape.Push(VyrTapeOp::kElse, s.Oprt.offset);
                break;
            case mu::cmENDIF:
                tape.Push(VyrTapeOp::kEndIf);
                break;
            case mu::cmASSIGN:
                error = "assignment is not allowed in a formula";
                return false;
            default:
                error = "unsupported operation";
                return false;
        }
    }
    return true;
}

}  // namespace

bool VyrIsFormulaVariableName(const std::string& name) {
    if (name.empty() || std::isdigit(static_cast<unsigned char>(name[0])))
        return false;
    for (char c : name)
        if (!std::strchr(kNameChars, c) || c == '\0')
            return false;
    if (name == "pi")
        return false;
    for (int f = 0; f < kFunctionCount; ++f)
        if (name == VyrTapeFunctionName(f))
            return false;
    return true;
}

bool VyrCompileFormula(const std::string& text, const std::vector<std::string>& names,
                       VyrFormulaTape& tape, std::vector<bool>& used, std::string& error,
                       std::string* unknown) {
    tape.Clear();
    if (unknown)
        unknown->clear();
    used.assign(names.size(), false);
    error.clear();
    if (text.find_first_not_of(" \t\r\n") == std::string::npos) {
        error = "empty formula";
        return false;
    }
    // The parser sees one slot per variable; the slots' addresses tell the variables apart in
    // its postfix code.
    std::vector<double> slots(names.size(), 0.0);
    try {
        Parser parser;
        for (size_t i = 0; i < names.size(); ++i)
            parser.DefineVar(names[i], &slots[i]);
        parser.SetExpr(text);
        parser.Eval();  // compiles
        if (parser.GetNumResults() != 1) {
            error = "a formula has one value: \",\" is not allowed";
            return false;
        }
        if (!Translate(parser.GetByteCode(), slots, tape, used, error) || !tape.Finish()) {
            if (error.empty())
                error = "formula cannot be compiled";
            tape.Clear();
            used.assign(names.size(), false);
            return false;
        }
    } catch (const mu::ParserError& e) {
        tape.Clear();
        used.assign(names.size(), false);
        if (e.GetCode() == mu::ecUNASSIGNABLE_TOKEN) {
            error = "unknown name \"" + e.GetToken() + "\" at position " +
                    std::to_string(e.GetPos() + 1);
            if (unknown && VyrIsFormulaVariableName(e.GetToken()))
                *unknown = e.GetToken();
        } else
            error = e.GetMsg();
        return false;
    } catch (const std::exception& e) {
        tape.Clear();
        used.assign(names.size(), false);
        error = std::string("formula cannot be read: ") + e.what();
        return false;
    }
    return true;
}

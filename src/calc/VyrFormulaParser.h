// Compiles a formula's text into a tape: muParser reads it (syntax, precedence, names), then its
// postfix code is translated step by step into the tape's own operations.
#ifndef VYRBASE_SRC_CALC_VYRFORMULAPARSER_H
#define VYRBASE_SRC_CALC_VYRFORMULAPARSER_H

#include <string>
#include <vector>

#include "calc/VyrFormulaTape.h"

// Variables are known by `names` (their index in it is the tape's variable index). On success
// `used[i]` tells whether the formula uses variable i. On failure `error` says why in one line
// and the tape is empty; when the cause is a name that is not a variable but could be one,
// `unknown` (if given) receives it.
bool VyrCompileFormula(const std::string& text, const std::vector<std::string>& names,
                       VyrFormulaTape& tape, std::vector<bool>& used, std::string& error,
                       std::string* unknown = nullptr);

// Whether `name` may name a variable: letters, digits and "_", not beginning with a digit, and
// neither a function nor pi.
bool VyrIsFormulaVariableName(const std::string& name);

#endif

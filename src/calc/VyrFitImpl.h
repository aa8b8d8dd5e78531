// VyrFit's state, shared by its source files (the fit itself and its place in a document).
#ifndef VYRBASE_SRC_CALC_VYRFITIMPL_H
#define VYRBASE_SRC_CALC_VYRFITIMPL_H

#include <cmath>
#include <memory>
#include <utility>
#include <vector>

#include <wx/string.h>

#include "vyrbase/calc/VyrFit.h"
#include "vyrbase/calc/VyrFormula.h"

struct VyrFitModel;

struct VyrFitState {
    std::unique_ptr<VyrFormula> formula{new VyrFormula};
    const VyrFitModel* model = nullptr;
    std::vector<wxString> parameterNames;
    std::vector<int> parameterIndex;  // in the formula
    int xIndex = -1;
    std::vector<double> starts;
    std::vector<bool> startGiven;
    std::vector<std::pair<wxString, double*>> bound;
    bool ranged = false;
    double rangeMin = 0, rangeMax = 0;

    std::vector<double> values, uncertainties;
    double rss = NAN, r2 = NAN;
    size_t points = 0;
    bool converged = false;
    int evaluations = 0;
    double xmin = NAN, xmax = NAN;  // the fitted points' range
    wxString error;
};

struct VyrFit::Impl : VyrFitState {
    void Reset();
    void ClearResult();
    bool Compile(const wxString& text, bool declaring);
};

#endif

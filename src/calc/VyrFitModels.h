// The built-in models of VyrFit: each a formula with named parameters and the way it finds its
// starting values from the points.
#ifndef VYRBASE_SRC_CALC_VYRFITMODELS_H
#define VYRBASE_SRC_CALC_VYRFITMODELS_H

#include <cstddef>

struct VyrFitModel {
    const char* name;
    const char* formula;
    const char* parameters[7];  // in order, ended by a null
    // Starting values, in the order of `parameters`, from n points sorted by ascending x (n at
    // least the number of parameters).
    void (*start)(const double* x, const double* y, size_t n, double* p);
};

size_t VyrFitModelCount();
const VyrFitModel& VyrFitModelAt(size_t i);
const VyrFitModel* VyrFindFitModel(const char* name);
size_t VyrFitModelParameterCount(const VyrFitModel& model);

#endif

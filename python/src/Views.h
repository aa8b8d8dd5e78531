// numpy views of a vector's own storage: no copy, read-only, each holding its document.
#ifndef VYR_PYTHON_VIEWS_H
#define VYR_PYTHON_VIEWS_H

#include <pybind11/numpy.h>

#include "DocumentHandle.h"

class VyrVecteur;

// A read-only float64 array over the vector's values (its size, not its capacity). Its base
// object holds `doc` and counts as a view of `vector` until numpy lets go of it, which happens
// only when the last array derived from it (slices included) is gone.
pybind11::array VectorView(const DocumentRef& doc, VyrVecteur* vector);

// Throws BufferError when a view of `vector` is alive: its length must not change then.
void RequireNoView(const DocumentRef& doc, const VyrVecteur* vector, const char* action);

#endif

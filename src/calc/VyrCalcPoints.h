// What the calculator's operations share: the valid points of a curve, copied out in stored
// order, and the writing of a result into a curve of the document.
#ifndef VYRBASE_SRC_CALC_VYRCALCPOINTS_H
#define VYRBASE_SRC_CALC_VYRCALCPOINTS_H

#include <vector>

#include <wx/string.h>

class VyrBaseData;
class VyrCourbe;
class VyrExperience;
class VyrVecteur;

namespace vyrcalc {

// Points of a curve: abscissas, ordinates and, for results, whether each point is valid.
struct Points {
    std::vector<double> x;
    std::vector<double> y;
    std::vector<unsigned char> valid;
};

// Appends the points of `c` that lie within both vectors, are valid in X and in Y and whose X
// lies in [lo, hi] (NaN abscissas never do), in stored order; `valid` is left empty. Nothing
// for a curve without vectors. May throw std::bad_alloc.
void CollectValidPoints(const VyrCourbe* c, double lo, double hi, Points& out);

// Every point of `c` within both vectors, invalid ones included, with `valid` set where the
// point is valid in X and in Y. May throw std::bad_alloc.
void CollectAllPoints(const VyrCourbe* c, Points& out);

// The experiment holding `c` in its document, or null.
VyrExperience* ExperienceOf(const VyrCourbe* c);

// What a result curve is called and measured in.
struct ResultCurve {
    wxString name;  // curve name; the vectors are named after it ("VX", "VY")
    wxString grdX;
    wxString uniteX;
    wxString grdY;
    wxString uniteY;
    wxString text;  // the curve's free text, saved with it
};

// Creates (or reuses and empties, as CreateCourbe does for the same quantities and units) a
// curve of `e` holding `points` (a point is invalid where points.valid holds 0, all valid when
// points.valid is empty), styled like `like` when given, its standard ranges set to the valid
// values. Sends code 11 (CreateCourbe), then code 1 with the curve. Null when memory runs
// out (a curve then created is left empty).
VyrCourbe* StoreCurve(VyrBaseData& doc, VyrExperience* e, const ResultCurve& want,
                      const Points& points, const VyrCourbe* like);

// out[i] = whether point i of `v` is valid, for i < n (false at and beyond the vector's size),
// read a byte of the mask at a time.
void ReadValidity(const VyrVecteur& v, int n, unsigned char* out);
// Marks points 0..n-1 of `v` valid where valid[i] is not 0 (all of them for a null `valid`),
// a byte of the mask at a time; the marks beyond n are kept.
void WriteValidity(VyrVecteur& v, const unsigned char* valid, int n);

// The curve of `e` that storing `want` would empty and reuse (the same quantities and units)
// when it is not one the calculator made: its text does not begin with `ownPrefix`. Null when
// the result may be stored. A measured curve is never overwritten by a calculation.
VyrCourbe* FindBlockingCurve(VyrExperience* e, const ResultCurve& want, const wxString& ownPrefix);

// Whether the abscissas never decrease.
bool IsAscending(const std::vector<double>& x);

}  // namespace vyrcalc

#endif

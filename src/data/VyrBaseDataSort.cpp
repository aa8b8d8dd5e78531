// Sorting a curve's points by ascending X.
#include <utility>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {
// Quicksort of X with Y carried along. The pivot itself moves between p and q, the shorter side
// is sorted recursively and the longer one by the loop, so the stack stays logarithmic.
// Validity marks are not touched: after sorting a mark belongs to the position, not to the
// point (kept as the acquisition side expects).
class PairSorter {
public:
    PairSorter(double* x, double* y) : m_x(x), m_y(y) {}

    void Sort(int lo, int hi) {
        while (lo < hi) {
            int p = lo;
            int q = hi;
            Swap((lo + hi) / 2, p);
            const double pivot = m_x[p];
            for (;;) {
                while (q > p && !(pivot > m_x[q]))
                    --q;
                if (q == p)
                    break;
                Swap(p, q);  // the pivot moves to q
                while (p < q && !(m_x[p] > pivot))
                    ++p;
                if (p == q)
                    break;
                Swap(p, q);  // the pivot moves back to p
            }
            if (p == lo) {
                lo = lo + 1;
            } else if (p == hi) {
                hi = p - 1;
            } else if (p - 1 - lo < hi - (p + 1)) {
                Sort(lo, p - 1);
                lo = p + 1;
            } else {
                Sort(p + 1, hi);
                hi = p - 1;
            }
        }
    }

private:
    void Swap(int i, int j) {
        std::swap(m_x[i], m_x[j]);
        std::swap(m_y[i], m_y[j]);
    }

    double* m_x;
    double* m_y;
};
}  // namespace

void VyrBaseData::SortCurve(VyrCourbe* c, bool removeDuplicates) {
    if (!c || !c->GetVx() || !c->GetVy())
        return;
    VyrVecteur* vx = c->GetVx();
    VyrVecteur* vy = c->GetVy();
    const int n = vx->GetSize();
    // Points are sorted as (X, Y) pairs: a Y shorter than X has nothing to pair with.
    if (n < 2 || vy->GetSize() < n || !vx->GetArea() || !vy->GetArea())
        return;
    double* x = vx->GetArea();
    double* y = vy->GetArea();
    PairSorter(x, y).Sort(0, n - 1);
    if (!removeDuplicates) {
        vx->ValuesChanged();
        vy->ValuesChanged();
        return;
    }
    // Of several points with the same X the last one in sorted order survives, its Y included.
    int w = 0;
    for (int i = 1; i < n; ++i) {
        if (x[w] != x[i])
            ++w;
        x[w] = x[i];
        y[w] = y[i];
    }
    vx->ValuesChanged();
    vy->ValuesChanged();
    vx->Resize(w + 1);
    vy->Resize(w + 1);
}
